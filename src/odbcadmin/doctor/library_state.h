// Whether a library could be loaded, told from its first bytes.
#pragma once

#include <string>

namespace jx::doctor {

enum class LibraryState { ok, missing, broken, wrongArchitecture };

// Looks at the file and at its header; nothing is loaded and no library code runs.
// missing            there is no such file, or it cannot be reached
// broken             it cannot be read, is no ELF shared library, or is cut short
// wrongArchitecture  it is one, for other processors or of the other word size
// ok                 everything else: whether it really loads, only a load shows
// A path without a slash is looked for where the loader looks. An empty path is missing. Any thread.
LibraryState libraryState(const std::string& path);

// "ok", "missing", "broken", "wrong architecture".
const char* libraryStateWord(LibraryState state);

}  // namespace jx::doctor
