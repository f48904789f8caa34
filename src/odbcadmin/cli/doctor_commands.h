// The verbs that look for faults, each in the file of its name.
#pragma once

#include "odbcadmin/cli/session.h"

namespace CLI {
class App;
}

namespace jx::admin {

void addDoctor(CLI::App& app, Session& session);
void addLint(CLI::App& app, Session& session);
void addExplain(CLI::App& app, Session& session);
void addPaths(CLI::App& app, Session& session);
void addDriverCheck(CLI::App& app, Session& session);
void addDriverScan(CLI::App& app, Session& session);
void addDsnTest(CLI::App& app, Session& session);

}  // namespace jx::admin
