// What lint --fix and doctor --fix do.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "odbcadmin/cli/session.h"
#include "odbcadmin/doctor/finding.h"
#include "odbcadmin/model/configuration.h"

namespace jx::cli {

// The files of the configuration that are there, as FileChange names them.
std::vector<std::string> filesToFix(const model::Configuration& configuration);

// Mends each of the files in one change, says what was mended, and shows what lookAgain finds then: its errors make the
// exit code. With --dry-run or --check nothing is written and nothing looked at again.
ExitCode fixAndLookAgain(const Session& session, const model::Configuration& configuration,
                         const std::vector<std::string>& files, const std::function<doctor::Findings()>& lookAgain);

}  // namespace jx::cli
