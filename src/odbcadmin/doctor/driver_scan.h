// Finding ODBC drivers on the disk.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "odbcadmin/doctor/loader_places.h"

namespace jx::doctor {

struct FoundDriver {
    std::string name;  // made of the file's name
    std::string path;
    std::string setup;  // its own path, or a setup library beside it; empty when there is none
};

// Where drivers usually lie: the loader's directories, those called "odbc" in them, local ones and those of products
// below /opt. Only directories that are there.
std::vector<std::string> usualDriverDirectories(const LoaderPlaces& places);

// Which libraries are looked into. A directory of the loader holds a thousand and more: those whose name says that they
// could be a driver take a tenth of the time.
enum class Candidates { all, likely };

// The drivers among the shared libraries of the directories, not of those below them, for this system; sorted by path.
// A library with several names is found once. Nothing is loaded. progress is told before each directory is read, and
// waiting called before each file.
std::vector<FoundDriver> scanForDrivers(
    const std::vector<std::string>& directories,
    const std::function<void(const std::string&)>& progress = [](const std::string&) {},
    const std::function<void()>& waiting = [] {}, Candidates candidates = Candidates::all);

}  // namespace jx::doctor
