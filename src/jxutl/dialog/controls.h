// What user actions and messages change in a control.
#pragma once

#include "jxutl/dialog/window.h"

namespace jx::dialog {

// Checks or clears one check box or radio button and no other, and notifies the screen.
void setChecked(const Window& box, bool checked);

}  // namespace jx::dialog
