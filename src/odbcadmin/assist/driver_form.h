// The administrator's own dialog: registering a driver by hand.
#pragma once

#include <jxdialog.h>

#include <string>
#include <vector>

#include "odbcadmin/assist/forms.h"

namespace jx::assist {

// Shows the dialog on the thread's screen; owner may be 0. The user gives a name, a library and a setup library, or
// chooses one of the drivers found in the usual places; the general setup library is proposed. OK loads both in a child
// process and says what the loader said against them; what cannot be loaded is entered only when the user insists. True
// when a driver was entered.
bool registerDriver(HWND owner);

// Looks for drivers in these directories of the calling thread instead of the usual places. For tests.
void lookForDriversIn(const std::vector<std::string>& directories);

}  // namespace jx::assist
