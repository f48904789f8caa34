// Whether a library could be loaded, in a word, judged by its file alone.
#pragma once

#include <string>

namespace jx::doctor {

// "ok", "missing", "broken" or "wrong architecture". Nothing is loaded and no library code runs.
// missing             there is no such file
// broken              it cannot be read, is not an ELF shared library, or is cut short
// wrong architecture  it is one, for other processors or of the other word size
// ok                  everything else: whether it really loads, only a load shows
// A path without a slash is looked for where the loader looks. An empty path is missing. Any thread.
const char* libraryState(const std::string& path);

}  // namespace jx::doctor
