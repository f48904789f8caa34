// The state of a library, from its file and from all that the doctor finds.
#include "odbcadmin/doctor/library_state.h"

#include <algorithm>
#include <map>
#include <utility>

#include "odbcadmin/doctor/checks.h"
#include "odbcadmin/doctor/loader_places.h"

namespace jx::doctor {

namespace {

// Read once: a list of many drivers asks for many libraries.
const LoaderPlaces& places() {
    static const LoaderPlaces read = loaderPlaces();
    return read;
}

bool holds(const Findings& findings, const Check& check) {
    return std::any_of(findings.begin(), findings.end(), [&](const Finding& each) { return each.id == check.id; });
}

const char* stateOf(const Findings& findings) {
    for (const Check& each : {check::kLibraryMissing, check::kDirectoryMissing, check::kLibraryDanglingLink})
        if (holds(findings, each))
            return "missing";
    for (const Check& each : {check::kWrongClass, check::kWrongMachine})
        if (holds(findings, each))
            return "wrong architecture";
    const auto isError = [](const Finding& each) { return each.severity == Severity::error; };
    if (std::any_of(findings.begin(), findings.end(), isError))
        return "broken";
    return holds(findings, check::kLoadWithheld) || holds(findings, check::kLoadNotTried) ? "not tried" : "ok";
}

}  // namespace

const char* libraryState(const std::string& path, LibraryRole role, const std::vector<std::string>& namedBy) {
    static std::map<std::pair<std::string, LibraryRole>, const char*> known;
    if (path.empty())
        return "missing";
    const auto [place, isNew] = known.try_emplace({path, role}, nullptr);
    if (isNew) {
        LibraryOptions options;
        options.places = places();
        options.namedBy = namedBy;
        place->second = stateOf(checkLibrary("", path, role, options));
    }
    return place->second;
}

const char* libraryFileState(const std::string& path) {
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
