// driver add -f: registering the drivers of a template.
#pragma once

#include "odbcadmin/cli/verb.h"

namespace jx::cli {

// Registers the drivers of the template that -f names, or the one that NAME names, in one change of the file.
ExitCode addFromTemplate(const Session& session, const model::Configuration& configuration, const Line& line);

}  // namespace jx::cli
