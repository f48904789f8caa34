// Removing a driver that is registered for all users.
#pragma once

#include <jxdialog.h>

#include <string>

namespace jx::assist {

// Asks, naming the data sources that need it, and then removes its entries from the system's file; a driver of the
// user's, of the same name, stays, and so do all libraries. What goes wrong is shown.
void unregisterSystemDriver(HWND dialog, const std::string& driver);

}  // namespace jx::assist
