// The dialog that changes the keys of a data source of the system, for which the library's setup dialogs cannot be
// used: they write the user's file.
#pragma once

#include <jxdialog.h>

#include <string>

namespace jx::assist {

// Shows the keys and values on the thread's screen, secrets as stars, and stores what the user makes of them, all in
// one change, with OK. The dialog stays open, and shows the reason, while that does not succeed. A driver's setup
// library has no part in it.
void editSystemSource(HWND owner, const std::string& dataSource);

}  // namespace jx::assist
