// The way to a library: every directory and link of its path.
#pragma once

#include <string>

#include "odbcadmin/doctor/finding.h"

namespace jx::doctor {

// Walks along path and tells at which step it breaks: a directory that is not there or may not be entered, a link that
// leads nowhere, a file that is missing. No finding when path leads to something, of whatever kind.
Findings checkLibraryPath(const std::string& subject, const std::string& path);

// "Beside it: libfoo.so.2, libfo.so", from what is in directory and resembles name; "" when nothing does.
std::string besideText(const std::string& directory, const std::string& name);

}  // namespace jx::doctor
