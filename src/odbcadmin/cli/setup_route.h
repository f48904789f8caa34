// Whether a driver's own setup library can do the work, and having it do it.
#pragma once

#include <optional>
#include <string>

#include "odbcadmin/cli/session.h"
#include "odbcadmin/model/configuration.h"
#include "odbcadmin/model/file_change.h"
#include "odbcadmin/trial/setup_call.h"

namespace jx::cli {

// SetupRoute: usable means through the setup library; otherwise reason says why the files are written directly.
struct SetupRoute {
    bool usable = false;
    std::string reason;

    // "written directly: REASON"; empty when there is nothing to say.
    std::string remark() const { return reason.empty() ? reason : "written directly: " + reason; }
};

// Looks at the "Setup" library of a driver, which may be nothing, and loads it once to see whether it has its routine.
// isDirect: the user asked not to use it. With --dry-run and --check it is never used, and not loaded either.
SetupRoute findRoute(const Session& session, const std::optional<model::Registered>& driver, bool isDirect);

// Has the setup library do it. doing: the words for the message, such as "add data source Sales".
model::ChangeResult goThroughSetup(const Session& session, const model::Registered& driver,
                                   const trial::SetupRequest& request, const std::string& doing);

}  // namespace jx::cli
