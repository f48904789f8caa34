// Which installer library of today's generation a program gets, and whose it is.
//
//     const InstallerSearch without = searchInstaller(program.file, places);
//     const InstallerSearch with = searchInstaller(program.file, withOwnInstaller(places));
#pragma once

#include <string>
#include <vector>

#include "odbcadmin/doctor/library_file.h"
#include "odbcadmin/doctor/loader_places.h"

namespace jx::doctor {

struct InstallerSearch {
    std::string path;                   // what the loader finds; empty when it finds none
    std::vector<std::string> neededBy;  // the program itself, and libraries that it is linked with
};

// Follows the libraries that the program is linked with. When none of them needs an installer library, path is the one
// that a driver would get which the program loads later.
InstallerSearch searchInstaller(const LibraryFile& program, const LoaderPlaces& places);

// Whether the library needs an installer library where the loader finds none.
bool lacksInstaller(const LibraryFile& library, const LoaderPlaces& places);

// The same places with the folder of this product's library in front of all others but RPATH.
LoaderPlaces withOwnInstaller(LoaderPlaces places);

// Whether two paths are one file.
bool isSameFile(const std::string& left, const std::string& right);

}  // namespace jx::doctor
