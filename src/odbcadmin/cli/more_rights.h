// What to advise a user who may not change the system's files.
#pragma once

#include <string>

#include "odbcadmin/cli/session.h"

namespace jx::cli {

// The advice of the reason; where a right on one of the system's files is missing, the same command with sudo, ready to
// paste. Secrets in it are masked: it stands on the screen.
std::string adviceOn(const model::Reason& reason, const Session& session);

}  // namespace jx::cli
