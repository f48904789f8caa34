// Where the dynamic loader looks for libraries.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "odbcadmin/doctor/library_file.h"

namespace jx::doctor {

// The loader's own table of libraries: paths by name.
using LoaderCache = std::map<std::string, std::vector<std::string>>;

// Takes the bytes of a cache file apart, of the format that has been in use since 1999. Empty for other bytes; entries
// that point outside are left out.
LoaderCache parseLoaderCache(std::string_view bytes);

// What all look-ups have in common. Tests make their own.
struct LoaderPlaces {
    std::vector<std::string> environment;  // LD_LIBRARY_PATH; an empty element is the current directory
    LoaderCache cache;
    std::vector<std::string> defaults;
    std::string root = {};  // of an image, below which all that is found lies; its own paths do not show it
};

// Those of this process, now.
LoaderPlaces loaderPlaces();

// Those of the system whose root directory this is: its default directories, since only its own loader reads the rest.
LoaderPlaces imagePlaces(const std::string& root);

// A library and the chain of libraries that asked for it, down to the one that a program opened.
struct Requester {
    const LibraryFile* file = nullptr;
    const Requester* askedBy = nullptr;
};

struct LookUp {
    LibraryFile file;                      // what was found, of whatever kind; not found: absent or unreadable
    std::vector<LibraryFile> otherSystem;  // libraries of that name that the loader passes over
    std::vector<std::string> directories;  // those that were looked into, in order
};

// Finds a needed library by the loader's rules: a name with a slash is a path; else RPATH of the chain (where there is
// no RUNPATH), LD_LIBRARY_PATH, RUNPATH, the cache, the default directories. $ORIGIN, $LIB and $PLATFORM are known.
// requester may be null for a library that a program opens.
LookUp lookUp(const std::string& name, const Requester* requester, const LoaderPlaces& places);

// Libraries whose names differ from name in the version only, in the directories given and in the cache; the
// newest last.
std::vector<std::string> otherVersions(const std::string& name, const std::vector<std::string>& directories,
                                       const LoaderCache& cache);

}  // namespace jx::doctor
