// The dialog that changes the keys of a data source that the library cannot set up, since it knows the user's files
// only: one of the system's, or one of the user's that has a driver of the system's.
#pragma once

#include <jxdialog.h>

#include "odbcadmin/assist/chosen_source.h"

namespace jx::assist {

// Shows the keys and values on the thread's screen, secrets as stars, and stores what the user makes of them, all in
// one change, with OK. The dialog stays open, and shows the reason, while that does not succeed. A driver's setup
// library has no part in it.
void editSource(HWND owner, const ChosenSource& source);

}  // namespace jx::assist
