// Whether the configuration files can be found, read and written, and by whom.
#pragma once

#include "odbcadmin/doctor/finding.h"
#include "odbcadmin/model/config_places.h"

namespace jx::doctor {

// Findings about the files as such, not about what stands in them; whether a password is among it is looked at, though.
Findings checkFiles(const std::vector<model::ConfigPlace>& places);

// Those about one file that has no variable and no rivals.
Findings checkFile(const std::string& path);

}  // namespace jx::doctor
