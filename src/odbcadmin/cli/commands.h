// The functions that add the verbs, each in the file of its name.
#pragma once

#include "odbcadmin/cli/session.h"

namespace CLI {
class App;
}

namespace jx::admin {

void addDsnReadCommands(CLI::App& app, Session& session);     // dsn list, show, get
void addDsnChangeCommands(CLI::App& app, Session& session);   // dsn add, ensure, set, unset, remove
void addDsnMoveCommands(CLI::App& app, Session& session);     // dsn rename, copy, default
void addDriverReadCommands(CLI::App& app, Session& session);  // driver list, show
void addDriverChangeCommands(CLI::App& app, Session& session);
void addTranslatorCommands(CLI::App& app, Session& session);
void addTraceCommands(CLI::App& app, Session& session);
void addInstallCommand(CLI::App& app, Session& session);
void addConfigCommands(CLI::App& app, Session& session);
void addApplyCommand(CLI::App& app, Session& session);
void addExportCommand(CLI::App& app, Session& session);
void addCompleteCommand(CLI::App& app, Session& session);
void addDoctorCommands(CLI::App& app,
                       Session& session);  // dsn test, driver check, driver scan, paths, explain, lint, doctor

}  // namespace jx::admin
