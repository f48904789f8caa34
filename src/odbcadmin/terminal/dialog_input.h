// What the user does, turned into actions on the dialog in front.
#pragma once

#include <jxscreen.h>

#include <functional>
#include <string>

#include "odbcadmin/assist/list_search.h"
#include "odbcadmin/terminal/layout.h"
#include "odbcadmin/terminal/terminal.h"
#include "odbcadmin/terminal/view.h"

namespace jx::terminal {

// DialogInput: takes one input after another. Nothing of a dialog is kept here from one to the next but what is typed
// ahead.
class DialogInput {
public:
    // working is called before something that may take its time, with the caption of the button.
    DialogInput(const Abilities& abilities, std::function<void(const std::string&)> working)
        : abilities_(abilities), working_(std::move(working)) {}

    // Carries out an input in a dialog that is shown in area. Gives a line to tell the user, mostly an empty one.
    std::string take(HWND dialog, const Input& input, const Rect& area, DialogView& view);

    // Whether the last input was the user's own cancelling of a dialog.
    bool cancelled() const { return cancelled_; }

private:
    // Where the user is when a key arrives.
    struct Focus {
        HWND dialog;
        int index;               // of the control; -1: none has the focus
        JxwControlInfo control;  // all zero then
        DialogView& view;
        DialogPlace place;
    };

    // Where the mouse is.
    struct Spot {
        HWND dialog;
        int index;               // of the control there
        JxwControlInfo control;  // that one
        Rect part;               // its cells
        Point inside;            // in the dialog, like these
        DialogView& view;
    };

    std::string key(const Focus& focus, const Input& input);
    std::string character(const Focus& focus, const Input& input);
    std::string accessKey(HWND dialog, int letter);
    std::string space(const Focus& focus);
    bool listKey(const Focus& focus, Key key);
    bool groupKey(const Focus& focus, Key key);
    bool fieldKey(const Focus& focus, const Input& input);
    void undo(const Focus& focus, EditView& edit);
    std::string paste(const Focus& focus, const Input& input);
    bool searchKey(const Focus& focus, Key key, std::string& said);
    void scrollKey(const Focus& focus, Key key);
    std::string mouse(HWND dialog, const Input& input, const Rect& area, DialogView& view);
    std::string pressAt(const Spot& spot, const Input& input);
    void pressInList(const Spot& spot, bool isDouble);
    void pressInField(const Spot& spot);
    void command(HWND dialog, const JxwControlInfo& button);
    void enter(const Focus& focus);

    const Abilities& abilities_;
    std::function<void(const std::string&)> working_;
    assist::ListSearch search_;
    bool cancelled_ = false;
};

}  // namespace jx::terminal
