// Completing a path that is being typed.
#pragma once

#include <jxdialog.h>

#include <string>

namespace jx::assist {

// The path with the home directory for a "~" at its begin.
std::string expandedPath(const std::string& path);

// The path as far as the files that begin with it agree: a directory that stands alone gets its slash. The same path
// when there is nothing to add. "~" is kept as it was typed.
std::string completedPath(const std::string& path);

// For the key Tab: completes the path in a field of our own dialogs that takes one. False when the field with the focus
// is another one or there is nothing to add, so that the key moves on as ever.
bool completePath(HWND dialog);

}  // namespace jx::assist
