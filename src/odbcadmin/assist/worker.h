// Whose code a command runs.
#pragma once

#include <jxscreen.h>

#include <string>

namespace jx::assist {

// The setup library that a command in this dialog will call for the selected row, as in "The setup
// library /opt/s.so of driver Sample"; empty when the dialog calls none.
std::string workerOf(HWND dialog);

}  // namespace jx::assist
