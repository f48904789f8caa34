// Values of a data source that hold what belongs elsewhere: quotes, braces, comments.
#pragma once

#include "odbcadmin/doctor/checks.h"
#include "odbcadmin/model/configuration.h"

namespace jx::doctor {

// Looks at every key but those that name libraries and the description. A secret's value is never shown.
void checkValues(const model::DataSource& source, const Subject& subject);

}  // namespace jx::doctor
