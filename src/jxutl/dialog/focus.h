// Where the focus is inside a dialog and where it goes next.
#pragma once

#include "jxutl/dialog/dialog.h"

namespace jx::dialog {

enum class Direction { forward, backward };

// The next control in tab order that can take the focus, from the one at index on (-1: from the beginning) and around;
// -1 when there is none. A radio group is one stop: its checked button, or its first.
int nextStop(const Dialog& dialog, int index, Direction direction);

// Gives the focus inside the dialog to the control at index and tells the screen.
void moveFocus(Dialog& dialog, int index);

}  // namespace jx::dialog
