// The library's lists of drivers.
#pragma once

#include <jxdialog.h>

namespace jx::assist {

// Adds the system's drivers to the list of the dialog, which the library has just filled with the user's.
void completeDrivers(HWND dialog);

// Brings the rows of all open lists of drivers up to date with the files.
void refreshDriverLists();

// The list of drivers in that dialog: its id; 0 when there is none.
unsigned short driverList(HWND dialog);

}  // namespace jx::assist
