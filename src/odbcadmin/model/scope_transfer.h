// Copying and moving data sources and drivers between the user's files and the system's.
//
//     const ChangeResult result = transferDataSource({"Sales", "Sales", Scope::system, Old::remove}, way);
#pragma once

#include <string>

#include "odbcadmin/model/configuration.h"
#include "odbcadmin/model/data_source_change.h"
#include "odbcadmin/model/file_change.h"

namespace jx::model {

struct Transfer {
    std::string name;
    std::string newName;  // there
    Scope to = Scope::user;
    Old old = Old::keep;
};

// The list entry and the whole section with all its keys, to the other scope's file; comments stay behind. A copy locks
// the file it goes to, a move both, the user's first: nothing that another program writes meanwhile is lost. A move
// writes the copy before it removes the old one, so at the worst there are two. The scope of the way plays no part.
// Failure  there is none of that name where it comes from, or one where it goes to; a name that is refused there;
//          secrets for a file that everybody may read; both scopes have the same file.
ChangeResult transferDataSource(const Transfer& transfer, const ChangeWay& way);
ChangeResult transferRegistered(const RegisteredKind& kind, const Transfer& transfer, const ChangeWay& way);

}  // namespace jx::model
