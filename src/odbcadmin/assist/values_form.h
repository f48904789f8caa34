// The dialog that shows the values of a data source.
#pragma once

#include <jxdialog.h>

#include "odbcadmin/assist/chosen_source.h"

namespace jx::assist {

// Shows its keys and values on the thread's screen until the user closes it. Secrets are stars, control characters "?".
// No setup library has a part in it.
void showValues(HWND owner, const ChosenSource& source);

}  // namespace jx::assist
