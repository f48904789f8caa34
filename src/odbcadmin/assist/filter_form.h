// The dialog that asks which rows of a list are to be seen.
#pragma once

#include <jxdialog.h>

namespace jx::assist {

// Asks for a text and shows only the rows of the dialog's list that contain it; where the system has data sources, asks
// for the scope as well.
void askForFilter(HWND dialog);

}  // namespace jx::assist
