// The selection of a list, kept while the library fills it anew.
#pragma once

#include <jxscreen.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace jx::assist {

// Selection: what a dialog of the library showed before an action. The library reads its lists again after an action
// and leaves them with another row selected or none, so that the next key would act on something else.
//
//     const Selection before(dialog);
//     ...                                  // the action
//     before.restore(Selection::Why::command);
class Selection {
public:
    explicit Selection(HWND dialog);

    // Why the list may be another one.
    enum class Why {
        command,   // of the user: a row that was added is the one to go on with, and the list gets the focus
        readAgain  // the user stays where he is
    };

    // If the list has other rows or another selection than before, selects the row of before, or that of the same entry
    // of the same scope; else the only one that is new, which it was renamed to; else the one that took its place. A
    // dialog already closed is ignored.
    void restore(Why why) const;

private:
    int rowIn(const std::vector<std::string>& now, Why why) const;
    int sameEntry(const std::vector<std::string>& now) const;

    HWND dialog_;
    int index_ = -1;  // of the list; -1: the dialog has none that is kept
    int row_ = -1;
    std::vector<std::string> rows_;
};

// SelectionKeeper: keeps selections around the commands of a screen, one inside another as dialogs open dialogs.
class SelectionKeeper {
public:
    // Carries out what the user does. If that begins a command, the selection is restored behind it.
    void around(const std::function<void()>& action);

    // A command begins in that dialog; only inside of around.
    void begin(HWND dialog) { innermost_->emplace(dialog); }

    // Whether the innermost action has begun a command.
    bool isInCommand() const { return innermost_ != nullptr && innermost_->has_value(); }

private:
    std::optional<Selection>* innermost_ = nullptr;
};

}  // namespace jx::assist
