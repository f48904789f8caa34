// Whether a driver's own setup library can do the work, and having it do it.
#pragma once

#include <odbcinst.h>

#include <string>

#include "odbcadmin/cli/configuration.h"
#include "odbcadmin/cli/outcome.h"
#include "odbcadmin/cli/session.h"

namespace jx::admin {

// SetupRoute: usable means through SQLConfigDataSource; otherwise reason says why the files are written directly.
struct SetupRoute {
    bool usable = false;
    std::string reason;
};

// Looks at the driver's "Setup" library and loads it once to see whether it has its entry. direct: the user asked not
// to use it. With --dry-run and --check it is never used, and not loaded either.
SetupRoute findRoute(const Session& session, const Registered& driver, bool direct);

// Calls SQLConfigDataSource. request is one of its codes, doing the words for the message, such as "add data source
// Sales". Tells when the library refuses (1) or the request does not fit the call (5).
ExitCode configureThroughSetup(const Session& session, const Registered& driver, WORD request, const std::string& name,
                               const Pairs& attributes, const std::string& doing, Outcome& outcome);

}  // namespace jx::admin
