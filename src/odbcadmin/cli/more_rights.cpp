// Repeating the command line of the session.
#include "odbcadmin/cli/more_rights.h"

#include "odbcadmin/model/more_rights.h"

namespace jx::cli {

std::string adviceOn(const model::Reason& reason, const Session& session) {
    return model::adviceOn(reason, {{session.words, !session.root.empty(), !session.system && session.home.empty()}});
}

}  // namespace jx::cli
