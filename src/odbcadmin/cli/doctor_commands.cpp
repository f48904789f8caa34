// The verbs that look for faults.
#include "odbcadmin/cli/commands.h"

namespace jx::admin {

void addDoctorCommands(CLI::App& /*app*/, Session& /*session*/) {}

}  // namespace jx::admin
