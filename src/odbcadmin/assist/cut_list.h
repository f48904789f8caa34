// A list of the library that is too short for all there is.
#pragma once

#include <jxscreen.h>

#include <string>

namespace jx::assist {

// The library keeps the names of its main list in a buffer of fixed size, so that the list can end inside a name. Such
// a row would act on another data source, or on none: it is taken out. Call this after the list was filled; other
// dialogs are left alone.
void mendCutList(HWND dialog);

// "146 of 1,998 shown; odbcadmin dsn list shows all." as it was when mendCutList was called; empty if all are shown.
std::string cutNotice(HWND dialog);

}  // namespace jx::assist
