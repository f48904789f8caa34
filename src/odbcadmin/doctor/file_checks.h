// Whether the configuration files can be found, read and written, and by whom.
#pragma once

#include "odbcadmin/doctor/finding.h"
#include "odbcadmin/model/config_places.h"
#include "odbcadmin/model/configuration.h"

namespace jx::doctor {

// Findings about the files as such, not about what stands in them; whether a password is among it is looked at, though.
Findings checkFiles(const std::vector<model::ConfigPlace>& places);

// The same where the files of a configuration have been read already: they are not read again.
Findings checkFiles(const std::vector<model::ConfigPlace>& places, const model::Configuration& read);

// Those about one file that has no variable and no rivals.
Findings checkFile(const std::string& path);

}  // namespace jx::doctor
