// What comes of having files of the user and of the system: what hides what, and who sees which.
#pragma once

#include "odbcadmin/doctor/finding.h"
#include "odbcadmin/model/configuration.h"

namespace jx::doctor {

// The variables of this process that move files, and those of other products that change what drivers do.
Findings checkVariables();

// One data source or driver that stands in both scopes, or needs something of the other one.
Findings checkScopes(const model::DataSource& source, const model::Configuration& configuration);
Findings checkScopes(const model::Registered& driver);

}  // namespace jx::doctor
