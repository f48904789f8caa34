// The dialog in which a file is chosen: the same in a terminal and in a window.
#pragma once

#include <jxdialog.h>

#include <string>

namespace jx::assist {

// Shows the directory that a path lies in, or the one where drivers are when there is no such directory; the user goes
// from one to another and chooses a file. Gives its path; empty when the user cancels.
std::string chooseFile(HWND owner, const std::string& path);

}  // namespace jx::assist
