// Moving the focus inside a dialog.
#pragma once

#include "jxutl/dialog/dialog.h"

namespace jx::dialog {

enum class Direction { forward, backward };

// The next control in tab order that can take the focus, after the one at index (-1: from the beginning) and around; -1
// without one. A radio group is one stop: its checked button, or its first.
int nextStop(const Dialog& dialog, int index, Direction direction);

// Gives the dialog's focus to the control at index and notifies the screen.
void moveFocus(Dialog& dialog, int index);

}  // namespace jx::dialog
