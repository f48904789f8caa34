// Having a key's value come from elsewhere: KEY@file, KEY@env or KEY@credential instead of KEY.
#pragma once

#include <string>

#include "odbcadmin/model/configuration.h"
#include "odbcadmin/model/file_change.h"
#include "rules/references.h"

namespace jx::model {

// Stores the reference and removes the key itself, which would win over it, and its other references. Refused: a key
// that is never taken from elsewhere, a path that is not absolute, a name that cannot be one.
ChangeResult referTo(const Configuration& configuration, const std::string& source, const std::string& key,
                     rules::Reference kind, const std::string& target, const ChangeWay& way);

// Why the target of a reference can never be followed, as the end of a sentence that begins with it; empty when it can.
std::string whyNeverFollowed(rules::Reference kind, std::string_view target);

}  // namespace jx::model
