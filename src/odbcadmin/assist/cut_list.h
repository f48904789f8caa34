// A list of the library that is too short for all there is.
#pragma once

#include <jxscreen.h>

#include <string>

namespace jx::assist {

// The library keeps the names of its main list in a buffer of fixed size and leaves out those that do not fit. Call
// this after a list of data sources or of drivers was filled, to compare it with the files; other dialogs are left
// alone.
void noteCutList(HWND dialog);

// "146 of 1,998 shown; F9 shows all.", or the same about a filter, and why nothing of the system's is shown if its file
// cannot be read, as it was when noteCutList was called; empty if all are shown.
std::string cutNotice(HWND dialog);

// Whether the library has left some out.
bool isCut(HWND dialog);

}  // namespace jx::assist
