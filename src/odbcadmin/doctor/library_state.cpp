// The state of a library, from its header alone.
#include "odbcadmin/doctor/library_state.h"

#include "odbcadmin/doctor/elf_header.h"

namespace jx::doctor {

LibraryState libraryState(const std::string& path) {
    const ElfHeader header = readElfHeader(path);
    if (header.state == HeaderState::absent || path.empty())
        return LibraryState::missing;
    const bool isElf = header.system.machine != 0;
    if (isElf && header.system.elfClass != 0 && !(header.system == thisSystem()))
        return LibraryState::wrongArchitecture;
    return header.state == HeaderState::readable ? LibraryState::ok : LibraryState::broken;
}

const char* libraryStateWord(LibraryState state) {
    switch (state) {
        case LibraryState::ok:
            return "ok";
        case LibraryState::missing:
            return "missing";
        case LibraryState::wrongArchitecture:
            return "wrong architecture";
        case LibraryState::broken:
            break;
    }
    return "broken";
}

}  // namespace jx::doctor
