// The state of a library, from its header alone.
#include "odbcadmin/doctor/library_state.h"

#include "odbcadmin/doctor/elf_header.h"
#include "odbcadmin/doctor/loader_places.h"

namespace jx::doctor {

namespace {

// Read once: a list of many drivers asks for many libraries.
const LoaderPlaces& places() {
    static const LoaderPlaces read = loaderPlaces();
    return read;
}

std::string pathOf(const std::string& name) {
    if (name.empty() || name.find('/') != std::string::npos)
        return name;
    const LookUp found = lookUp(name, nullptr, places());
    return found.path.empty() && !found.otherSystem.empty() ? found.otherSystem.front() : found.path;
}

}  // namespace

LibraryState libraryState(const std::string& path) {
    const ElfHeader header = readElfHeader(pathOf(path));
    if (header.state == HeaderState::absent)
        return LibraryState::missing;
    if (header.system.machine != 0 && !(header.system == thisSystem()))
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
