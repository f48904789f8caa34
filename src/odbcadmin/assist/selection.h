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
//     before.restore();
class Selection {
public:
    explicit Selection(HWND dialog);

    // If the list has other rows or another selection than before, selects the row that is new, else the row of the
    // same name, else the one that took its place; and returns the focus to the list. A dialog already closed is
    // ignored.
    void restore() const;

private:
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
