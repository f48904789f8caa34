// The dialog that makes a data source of a driver that the system has, which the library's dialogs cannot do: they know
// the user's drivers only.
#pragma once

#include <jxdialog.h>

#include <string>

namespace jx::assist {

// Asks on the thread's screen for its name, its keys and whose it is to be: the user's alone or the system's, for all
// users. What is known of the driver stands in the list of keys; those without a value are not stored. The dialog stays
// open, and shows the reason, while the data source cannot be made. True when it was made.
bool makeSource(HWND owner, const std::string& driver);

}  // namespace jx::assist
