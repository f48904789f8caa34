// Reading and changing one scope.
#include "odbcadmin/assist/scoped_files.h"

#include "odbcadmin/model/system_files.h"

namespace jx::assist {

model::Configuration configurationOf(model::Scope scope) {
    const model::Seen seen = scope == model::Scope::user ? model::Seen::user : model::Seen::system;
    return model::Configuration::read({seen, seen});
}

model::ChangeWay changeWayOf(model::Scope scope) {
    model::ChangeWay way;
    way.scope = scope;
    return way;
}

model::Reason systemTrouble(model::FileKind kind) {
    return model::isOneFile(kind) ? model::Reason() : model::readConfigFile(kind, model::Scope::system).trouble;
}

}  // namespace jx::assist
