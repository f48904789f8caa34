// The function keys of dialogs with a list.
#pragma once

#include <jxscreen.h>

#include <vector>

#include "odbcadmin/assist/function_key.h"

namespace jx::assist {

// F3 to F9 as far as they mean something in that dialog: what can be done with the chosen data source, and with the
// list itself.
std::vector<FunctionKey> listKeys(HWND dialog);

}  // namespace jx::assist
