// The library's lists of drivers.
#pragma once

#include <jxdialog.h>

namespace jx::assist {

// Brings the rows of all open lists of drivers up to date with the file.
void refreshDriverLists();

// The list of drivers in that dialog: its id; 0 when there is none.
unsigned short driverList(HWND dialog);

}  // namespace jx::assist
