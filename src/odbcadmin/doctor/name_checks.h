// Whether the names in the files lead where they should.
#pragma once

#include "odbcadmin/doctor/finding.h"
#include "odbcadmin/model/configuration.h"

namespace jx::doctor {

// One data source: its list entry, its section, its driver, its library's path. Nothing on the disk is looked at.
Findings checkDataSourceNames(const model::DataSource& source, const model::Configuration& configuration);

// One driver or translator.
Findings checkRegisteredNames(const model::Registered& entry, const model::RegisteredKind& kind,
                              const model::Configuration& configuration);

}  // namespace jx::doctor
