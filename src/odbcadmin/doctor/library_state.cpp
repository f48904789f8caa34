// The state of a library, from its file alone.
#include "odbcadmin/doctor/library_state.h"

#include "odbcadmin/doctor/loader_places.h"

namespace jx::doctor {

namespace {

// Read once: a list of many drivers asks for many libraries.
const LoaderPlaces& places() {
    static const LoaderPlaces read = loaderPlaces();
    return read;
}

}  // namespace

const char* libraryState(const std::string& path) {
    if (path.empty())
        return "missing";
    const LookUp found = lookUp(path, nullptr, places());
    if (found.file.state == LibraryFile::State::library)
        return "ok";
    if (!found.otherSystem.empty() && !found.file.isThere())
        return "wrong architecture";
    return found.file.state == LibraryFile::State::absent ? "missing" : "broken";
}

}  // namespace jx::doctor
