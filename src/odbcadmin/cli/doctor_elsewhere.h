// doctor --as-user and --pid: the examination as an account or a process would see it.
#pragma once

#include "odbcadmin/cli/verb.h"

namespace jx::cli {

// Whether the line asks for it.
bool isDoctorElsewhere(const Line& line);

// Examines there and shows the findings here. The exit code is that of the examination.
ExitCode runDoctorElsewhere(const Session& session, const Line& line);

}  // namespace jx::cli
