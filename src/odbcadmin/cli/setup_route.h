// Whether a driver's own setup library is to do the work, having it do it, and looking whether it did.
#pragma once

#include <optional>
#include <string>
#include <vector>

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

// Looks at what a driver, which may be nothing, says under "Setup"; loads nothing. isDirect: the user asked not to use
// it. With --dry-run and --check it is never used.
SetupRoute findRoute(const Session& session, const std::optional<model::Registered>& driver, bool isDirect);

// What a setup library is to do.
struct SetupWork {
    trial::SetupRequest::Action action;
    std::string dataSource;
    model::Pairs attributes;
    std::string doing;  // the words for the message: "add data source Sales"
    std::chrono::milliseconds limit;
};

// Has the driver's setup library do it, and then looks: is the data source there, or gone, with the keys given?
// Whatever the library said or did instead is a reason that names it. Nothing when it cannot be loaded or has no
// routine: it is then written directly, and a remark says why.
std::optional<model::ChangeResult> goThroughSetup(const Session& session, const model::Registered& driver,
                                                  const SetupWork& work, std::vector<std::string>& remarks);

}  // namespace jx::cli
