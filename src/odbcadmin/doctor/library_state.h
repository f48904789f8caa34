// The state of a library in a word.
#pragma once

#include <string>
#include <vector>

#include "odbcadmin/doctor/library_checks.h"

namespace jx::doctor {

// Judged by its file alone: nothing is loaded and no library code runs.
// missing             there is no such file
// broken              it cannot be read, is not an ELF shared library, or is cut short
// wrong architecture  it is one, for other processors or of the other word size
// ok                  everything else: whether it really loads, only a load shows
// A path without a slash is looked for where the loader looks. An empty path is missing. Any thread.
const char* libraryFileState(const std::string& path);

// By what checkLibrary finds, which loads it, so that all who ask say the same; asked once for each library of a run.
// missing, wrong architecture  as above
// broken                       anything else that checkLibrary calls an error
// not tried                    it was not loaded, since this is root and it is another user's
// ok                           it loads and has the functions of its role
// namedBy: the files in which the path stands. One thread.
const char* libraryState(const std::string& path, LibraryRole role, const std::vector<std::string>& namedBy);

}  // namespace jx::doctor
