// A list of the library that is too short for all there is.
#pragma once

#include <jxscreen.h>

#include <string>

namespace jx::assist {

// The library keeps the names of its main list in a buffer of fixed size and leaves out those that do not fit. Call
// this after the list was filled, to compare it with the file; other dialogs are left alone.
void noteCutList(HWND dialog);

// "146 of 1,998 shown; odbcadmin dsn list shows all." as it was when noteCutList was called; empty if all are shown.
std::string cutNotice(HWND dialog);

}  // namespace jx::assist
