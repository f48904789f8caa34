// The functions that add the verbs, each in the file of its name.
#pragma once

#include "odbcadmin/cli/session.h"

namespace CLI {
class App;
}

namespace jx::cli {

void addDsnReadCommands(CLI::App& app, Session& session);      // dsn list, show, get
void addDsnChangeCommands(CLI::App& app, Session& session);    // dsn add, ensure, set, unset, remove
void addDsnMoveCommands(CLI::App& app, Session& session);      // dsn rename, default
void addDsnTransferCommands(CLI::App& app, Session& session);  // dsn copy, move
void addDsnConnstr(CLI::App& app, Session& session);
void addDsnTest(CLI::App& app, Session& session);
void addRegisteredReadCommands(CLI::App& app, Session& session);    // driver list, show; translator list
void addRegisteredChangeCommands(CLI::App& app, Session& session);  // add, ensure and remove of drivers and translators
void addRegisteredKeysCommands(CLI::App& app, Session& session);    // set, unset and rename of drivers and translators
void addDriverTransferCommands(CLI::App& app, Session& session);    // driver copy, move
void addDriverCheck(CLI::App& app, Session& session);
void addDriverScan(CLI::App& app, Session& session);
void addTraceCommands(CLI::App& app, Session& session);
void addInstallCommand(CLI::App& app, Session& session);
void addConfigCommands(CLI::App& app, Session& session);
void addEditCommand(CLI::App& app, Session& session);
void addExchangeCommands(CLI::App& app, Session& session);
void addPaths(CLI::App& app, Session& session);
void addExplain(CLI::App& app, Session& session);
void addDoctorCommands(CLI::App& app, Session& session);
void addRunCommand(CLI::App& app, Session& session);
void addCompleteCommand(CLI::App& app, Session& session);

}  // namespace jx::cli
