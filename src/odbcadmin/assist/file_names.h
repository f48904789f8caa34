// What the user's two files are called where a person reads it.
#pragma once

#include <string>

namespace jx::assist {

// The path that ".odbc.ini" or ".odbcinst.ini" stands for at this moment, with "~" for the home directory; the name
// itself when there is no such path.
std::string shownPath(const char* file);

}  // namespace jx::assist
