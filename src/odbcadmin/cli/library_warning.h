// A warning about a library that was registered and cannot be used.
#pragma once

#include <string>

#include "odbcadmin/cli/session.h"

namespace jx::cli {

// Warns when the file is missing, broken or for another processor. what: "library", "setup library". Says nothing about
// a name without a slash, which the loader looks up, nor with -q.
void warnOfLibrary(const Session& session, const std::string& what, const std::string& path);

}  // namespace jx::cli
