// Walking over what a program is linked with.
#include "odbcadmin/doctor/installer_search.h"

#include <deque>
#include <filesystem>
#include <set>

#include "odbcadmin/trial/installer_library.h"

namespace jx::doctor {

namespace fs = std::filesystem;

namespace {

struct Part {
    LibraryFile file;
    Requester requester;
};

// A driver that is loaded later has no search path of its own here; the program's RPATH holds for it, too.
std::string foundForDriver(const LibraryFile& program, const LoaderPlaces& places) {
    const LibraryFile driver;
    const Requester owner{&program, nullptr};
    const Requester requester{&driver, &owner};
    const LookUp found = lookUp(trial::kDriversInstaller, &requester, places);
    return found.file.isThere() ? found.file.path : "";
}

}  // namespace

InstallerSearch searchInstaller(const LibraryFile& program, const LoaderPlaces& places) {
    InstallerSearch search;
    // A deque leaves its elements where they are while it grows.
    std::deque<Part> parts;
    parts.push_back({program, {}});
    parts.back().requester = {&parts.back().file, nullptr};
    std::set<std::string> known;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        for (const std::string& name : parts[i].file.needed) {
            const bool isInstaller = name == trial::kDriversInstaller;
            if (isInstaller)
                search.neededBy.push_back(parts[i].file.path);
            if (!known.insert(name).second)
                continue;
            const LookUp found = lookUp(name, &parts[i].requester, places);
            if (!found.file.isThere())
                continue;
            if (isInstaller)
                search.path = found.file.path;
            parts.push_back({found.file, {}});
            parts.back().requester = {&parts.back().file, &parts[i].requester};
        }
    }
    if (search.neededBy.empty())
        search.path = foundForDriver(program, places);
    return search;
}

bool lacksInstaller(const LibraryFile& library, const LoaderPlaces& places) {
    const InstallerSearch search = searchInstaller(library, places);
    return !search.neededBy.empty() && search.path.empty();
}

LoaderPlaces withOwnInstaller(LoaderPlaces places) {
    const std::string own = trial::driversInstallerPath();
    if (!own.empty())
        places.environment.insert(places.environment.begin(), fs::path(own).parent_path().string());
    return places;
}

bool isSameFile(const std::string& left, const std::string& right) {
    std::error_code error;
    return left == right || fs::equivalent(left, right, error);
}

}  // namespace jx::doctor
