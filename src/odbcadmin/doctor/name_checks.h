// Whether the names in the files lead where they should.
#pragma once

#include "odbcadmin/doctor/finding.h"
#include "odbcadmin/doctor/records.h"

namespace jx::doctor {

// One data source: its list entry, its section, its driver, its library's path. Nothing on the disk is looked at.
Findings checkDataSourceNames(const DataSourceRecord& record, const Records& records);

// One driver or translator.
enum class DriverKind { driver, translator };
Findings checkDriverNames(const DriverRecord& record, DriverKind kind, const Records& records);

}  // namespace jx::doctor
