// The setup library that works for any driver, offered where a driver brings none.
#pragma once

#include <jxdialog.h>

#include <string>

namespace jx::assist {

// For a driver that is registered without a setup library: asks whether to enter the general one for it, and enters it.
// False when the user says no, or when it could not be entered, which is shown: the command that needs it is then not
// carried out. True for any other driver.
bool hasSetupLibrary(HWND dialog, const std::string& driver);

}  // namespace jx::assist
