// Following the libraries that a library needs, as the loader would.
#pragma once

#include <string>
#include <vector>

#include "odbcadmin/doctor/loader_places.h"

namespace jx::doctor {

// Something on which loading would fail, or fail elsewhere.
struct NeededProblem {
    enum class Kind {
        missing,         // name is nowhere
        otherSystem,     // name was found, but for another system only: at
        damaged,         // what was found as name is no shared library: at
        versionMissing,  // requester wants version of name, and the one found, at, offers other versions
        fromProgram,     // name is nowhere, and loaded in this program only
    };
    Kind kind = Kind::missing;
    std::string name;
    std::string requester;  // path of the library that asks
    std::string chain;      // "libdriver.so -> libclient.so -> libssl.so.1.1"
    std::string at;
    std::string version;
    std::vector<std::string> similar;  // missing: other versions that are there; versionMissing: versions offered
    std::vector<std::string> directories;

    bool operator==(const NeededProblem&) const = default;
};

// Walks through all libraries that the one at path needs, breadth first as the loader does; each library once. A path
// that is no readable library has no problems here.
std::vector<NeededProblem> examineNeeded(const std::string& path, const LoaderPlaces& places);

}  // namespace jx::doctor
