// Finding a row of a list by typing.
#pragma once

#include <jxscreen.h>

#include <string>

namespace jx::assist {

// Whether a row contains a text, in upper or lower case.
bool holdsText(const std::string& row, const std::string& text);

// ListSearch: what was typed so far into one list.
//
//     search.type(dialog, index, list, "p", now)     // the next row that begins with p
//     search.type(dialog, index, list, "/", now)     // from here on: rows that hold what is typed, until close()
//
// Letters typed soon after each other belong together; the same letter again goes on to the next row. Upper and lower
// case are the same in every alphabet the locale knows. Nothing but the selection changes, whatever is typed.
class ListSearch {
public:
    // Takes a character that was typed at a time, in milliseconds, into a list with rows, and selects the row that it
    // leads to. Returns a line for the user: what is sought, or that nothing was found; empty when there is nothing to
    // say.
    std::string type(HWND dialog, int index, const JxwControlInfo& list, const std::string& text, long time);

    // Takes back the last character of a search that "/" began. Returns a line for the user.
    std::string takeBack(HWND dialog, int index, const JxwControlInfo& list);

    // Whether "/" began a search in this list that was not closed. Enter and Escape then only close it.
    bool isOpen(const JxwControlInfo& list) const { return isOpen_ && list.control == list_; }
    void close();

    // Whether a blank is part of what is typed.
    bool hasText() const { return isOpen_ || !typed_.empty(); }

private:
    std::string openSearch(HWND dialog, int index, const JxwControlInfo& list);

    HWND list_ = 0;
    std::string typed_;
    bool isOpen_ = false;
    long typedAt_ = 0;
};

}  // namespace jx::assist
