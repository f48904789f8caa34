// The verbs that look for faults.
#include "odbcadmin/cli/doctor_commands.h"

#include "odbcadmin/cli/commands.h"

namespace jx::admin {

void addDoctorCommands(CLI::App& app, Session& session) {
    addDsnTest(app, session);
    addDriverCheck(app, session);
    addDriverScan(app, session);
    addPaths(app, session);
    addExplain(app, session);
    addLint(app, session);
    addDoctor(app, session);
}

}  // namespace jx::admin
