// Everything that can be wrong with one library.
#pragma once

#include <chrono>
#include <set>
#include <string>
#include <vector>

#include "odbcadmin/doctor/finding.h"
#include "odbcadmin/doctor/loader_places.h"
#include "odbcadmin/trial/helper_run.h"

namespace jx::doctor {

// What a library is there for, which tells the functions that it must have.
enum class LibraryRole { driver, setup, translator, translatorSetup };

struct LibraryOptions {
    LoaderPlaces places;
    std::chrono::milliseconds limit{10000};  // of the trial load
    trial::Waiting waiting;                  // called while it lasts
    std::vector<std::string> namedBy;        // the files in which the library's path may stand
};

// Checks a library from the outside in: its path, what kind of file it is, the system it is for, what it needs, then
// has the helper program load it and asks for the functions of its role. The findings come in that order, all about
// subject. A path without a slash is looked for where the loader looks.
Findings checkLibrary(const std::string& subject, const std::string& path, LibraryRole role,
                      const LibraryOptions& options);

// "SQLDriverConnect or SQLConnect": the first group of functions of which a library that has these ones lacks all; ""
// when it can do what the role asks for.
std::string missingFunctions(LibraryRole role, const std::set<std::string>& functions);

// What a library is there for, by its functions; a driver when they say nothing.
LibraryRole roleOf(const LibraryFile& library);

}  // namespace jx::doctor
