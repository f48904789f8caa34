// Everything that can be wrong with one library.
#pragma once

#include <chrono>
#include <string>

#include "odbcadmin/doctor/child.h"
#include "odbcadmin/doctor/finding.h"
#include "odbcadmin/doctor/loader_places.h"

namespace jx::doctor {

// What a library is there for, which tells the functions that it must have.
enum class LibraryRole { driver, setup, translator, translatorSetup };

struct LibraryOptions {
    LoaderPlaces places;
    std::chrono::milliseconds limit{10000};  // of the trial load
    Waiting waiting;                         // called while it lasts
};

// Checks a library from the outside in: its path, what kind of file it is, the system it is for, what it needs, then
// loads it in a child process and asks for the functions of its role. The findings come in that order, all about
// subject. A path without a slash is looked for where the loader looks.
Findings checkLibrary(const std::string& subject, const std::string& path, LibraryRole role,
                      const LibraryOptions& options);

// Whether a library that offers these names can do what the role asks for; see also missingFunctions.
using Offers = std::function<bool(const char*)>;

// "SQLDriverConnect or SQLConnect": the first group of functions of which a library has none; "" when it has all.
std::string missingFunctions(LibraryRole role, const Offers& offers);

}  // namespace jx::doctor
