// Where the user is when a key arrives.
#pragma once

#include "odbcadmin/terminal/user.h"

namespace jx::terminal {

struct User::Focus {
    HWND dialog;
    int index;               // of the control; -1: none has the focus
    JxwControlInfo control;  // all zero then
    DialogView& view;
    DialogPlace place;
};

}  // namespace jx::terminal
