// The files of one scope, for what is done with one entry of theirs.
#pragma once

#include "odbcadmin/model/configuration.h"
#include "odbcadmin/model/file_change.h"

namespace jx::assist {

// The two files of that scope and no others, so that one of the same name in the other scope plays no part.
model::Configuration configurationOf(model::Scope scope);

// Changes go to the files of that scope.
model::ChangeWay changeWayOf(model::Scope scope);

// Why the system's file of that kind cannot be read; of kind none when it can, is not there, or is the user's as well.
model::Reason systemTrouble(model::FileKind kind);

}  // namespace jx::assist
