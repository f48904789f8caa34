// What is wrong with the libraries that a library needs.
#pragma once

#include <string>

#include "odbcadmin/doctor/checks.h"
#include "odbcadmin/doctor/loader_places.h"

namespace jx::doctor {

// Walks through all libraries that this one needs, breadth first as the loader does, each library once; adds a finding
// for every needed library or symbol version that the loader would not find.
void checkNeeded(const LibraryFile& library, const LoaderPlaces& places, const Subject& subject);

}  // namespace jx::doctor
