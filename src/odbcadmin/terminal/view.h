// What a screen remembers about each dialog besides what the dialog layer keeps: how far things are scrolled.
#pragma once

#include <jxscreen.h>

#include <map>
#include <string>
#include <string_view>

#include "odbcadmin/terminal/edit_history.h"
#include "odbcadmin/terminal/geometry.h"
#include "odbcadmin/terminal/glyphs.h"

namespace jx::terminal {

// ListView: which rows of a list box are seen.
struct ListView {
    int firstRow = 0;
    int shownSelection = -2;  // the selection that was last brought into view
    int shownRows = 0;        // and in how many rows

    // Brings the selection into view when it or the number of rows seen changed, and keeps within the list.
    void follow(const JxwControlInfo& list, int rowsSeen);
    void scroll(const JxwControlInfo& list, int rowsSeen, int rows);
};

// ListThumb: the part of a list's scroll bar that stands for the rows seen, in lines of the list. A bar has an arrow on
// the first and on the last line; a list that is seen whole, or has no line between the arrows, has no thumb.
struct ListThumb {
    int line = 0;
    int lines = 0;
};
ListThumb thumbOf(const JxwControlInfo& list, int rowsSeen, int firstRow);

// EditView: where the caret of an edit field stands, in bytes of its text, and what was there before.
struct EditView {
    std::size_t caret = 0;
    std::size_t firstByte = 0;  // where the visible part begins
    std::string shownText;      // what the caret belongs to: another text puts it to the end
    EditHistory history;

    // Keeps the caret in view of a field of columns, one glyph before it and behind it as well: on a field's edge
    // stands a mark where the text goes on.
    void follow(std::string_view text, int columns, Charset charset);

private:
    void fill(std::string_view text, int columns, Charset charset);
};

struct DialogView {
    Point scrolled;
    Rect shownArea;       // where the dialog was last shown
    int shownFocus = -2;  // the focus that was last brought into view
    int shownRow = -2;    // and the row
    int freshField = -1;  // the edit field the user came to and did not touch yet: what is typed replaces its text
    std::map<int, ListView> lists;  // by index of the control
    std::map<int, EditView> edits;
};

using Views = std::map<HWND, DialogView>;

// The rows that a list box of this place shows: all but its frame, which lists of less than three lines go without.
inline int rowsSeen(const Rect& place) {
    return place.lines >= 3 ? place.lines - 2 : place.lines;
}
inline Rect rowsOf(const Rect& place) {
    return place.lines >= 3 ? Rect{place.column + 1, place.line + 1, std::max(0, place.columns - 2), place.lines - 2}
                            : place;
}

}  // namespace jx::terminal
