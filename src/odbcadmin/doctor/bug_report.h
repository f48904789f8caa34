// A text for a bug report: the system, the files and the findings, without secrets.
#pragma once

#include <string>

#include "odbcadmin/doctor/finding.h"
#include "odbcadmin/model/config_places.h"

namespace jx::doctor {

// The block, lines ended with line feeds. Passwords and the like are masked, whatever the options of the command are,
// and control characters shown as "?".
std::string bugReport(const std::string& version, const std::vector<model::ConfigPlace>& places,
                      const Findings& findings);

}  // namespace jx::doctor
