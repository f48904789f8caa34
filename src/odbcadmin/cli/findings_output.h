// Finding out and showing findings, and what they mean for the exit code.
#pragma once

#include <chrono>
#include <functional>

#include "odbcadmin/cli/session.h"
#include "odbcadmin/doctor/examination.h"
#include "odbcadmin/doctor/finding.h"

namespace jx::cli {

// Calls examine with the options of an examination in which each library may take so long; a line on the terminal shows
// what is being loaded.
doctor::Findings findWith(const Session& session, std::chrono::milliseconds limit,
                          const std::function<doctor::Findings(doctor::ExaminationOptions&)>& examine);

// Prints findings as paragraphs, as JSON, or with -q as one line each; then how many there are of each severity. more
// is merged into the JSON object. foundErrors when there is an error, else done.
ExitCode showFindings(const Session& session, const doctor::Findings& findings);
ExitCode showFindings(const Session& session, const doctor::Findings& findings, const Json& more);

// foundErrors when there is an error, else done.
ExitCode codeOf(const doctor::Findings& findings);

}  // namespace jx::cli
