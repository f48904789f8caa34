// The way to a library: every directory and link of its path.
#pragma once

#include <string>

#include "odbcadmin/doctor/checks.h"

namespace jx::doctor {

// Walks along path and tells at which step it breaks: a directory that is not there or may not be entered, a link that
// leads nowhere, a file that is missing. No finding when path leads to something, of whatever kind.
void checkLibraryPath(const std::string& path, const Subject& subject);

}  // namespace jx::doctor
