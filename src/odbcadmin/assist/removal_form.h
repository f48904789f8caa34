// The dialog that asks how a driver is to be removed.
#pragma once

#include <jxdialog.h>

#include <string>

namespace jx::assist {

enum class Removal {
    none,          // the user has changed his mind, or it could not be done, which is shown
    unregistered,  // the entries are gone; the files and the data sources stay
    withFiles,     // nothing is done yet: the library's own command deletes files and data sources
};

// Asks on the thread's screen, and unregisters the driver if that is wished.
Removal askForRemoval(HWND owner, const std::string& driver);

}  // namespace jx::assist
