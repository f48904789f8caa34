// What is wrong with the libraries that a library needs, in sentences.
#pragma once

#include <string>

#include "odbcadmin/doctor/finding.h"
#include "odbcadmin/doctor/loader_places.h"

namespace jx::doctor {

// Appends a finding for every needed library or symbol version that the loader would not find.
void addNeededFindings(const std::string& subject, const std::string& path, const LoaderPlaces& places,
                       Findings& findings);

}  // namespace jx::doctor
