// Whether the names in the files lead where they should.
#pragma once

#include <string>

#include "odbcadmin/doctor/finding.h"
#include "odbcadmin/model/configuration.h"

namespace jx::doctor {

// One data source: its list entry, its section, its driver, its library's path. No library is looked at. A driver that
// is not there is looked for in systemFolder's odbcinst.ini.
Findings checkDataSourceNames(const model::DataSource& source, const model::Configuration& configuration,
                              const std::string& systemFolder);

// One driver or translator.
Findings checkRegisteredNames(const model::Registered& entry, const model::RegisteredKind& kind,
                              const model::Configuration& configuration);

// The part of it that is about the keys which name libraries; nothing about an entry without a section.
Findings checkLibraryKeys(const model::Registered& entry, const model::RegisteredKind& kind);

}  // namespace jx::doctor
