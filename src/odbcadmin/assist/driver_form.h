// The administrator's own dialog: registering a driver by hand.
#pragma once

#include <jxdialog.h>

#include <string>

namespace jx::assist {

inline constexpr const char* kFormModule = "odbcadmin";
inline constexpr unsigned short kFormDialog = 1;
inline constexpr unsigned short kFormName = 11;
inline constexpr unsigned short kFormLibrary = 12;
inline constexpr unsigned short kFormSetup = 13;

// Shows the dialog on the thread's screen; owner may be 0. The user gives a name, a library and a setup library, with
// this product's own proposed. OK loads both in a child process and says what the loader said against them; what cannot
// be loaded is entered only when the user insists. True when a driver was entered.
bool registerDriver(HWND owner);

// The setup library that works for any driver, beside the installer library; empty when it is not there.
std::string proposedSetup();

}  // namespace jx::assist
