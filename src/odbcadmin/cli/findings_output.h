// Showing findings, and what they mean for the exit code.
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "odbcadmin/cli/session.h"
#include "odbcadmin/doctor/finding.h"

namespace jx::admin {

// Prints findings as paragraphs, as JSON, or with -q as one line each; then how many there are of each severity. more
// is merged into the JSON object. foundErrors when there is an error, else done.
ExitCode showFindings(const Session& session, const doctor::Findings& findings);
ExitCode showFindings(const Session& session, const doctor::Findings& findings, const Json& more);

// {"id", "severity", "subject", "fact", "advice"}
Json findingJson(const doctor::Finding& finding);

// The option --timeout in milliseconds: a number of seconds, also with a fraction. Nothing when it is none or above a
// day.
std::optional<std::chrono::milliseconds> timeLimit(const std::string& text, std::chrono::milliseconds otherwise);

}  // namespace jx::admin
