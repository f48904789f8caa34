// How a trial connection is described to people.
#pragma once

#include <chrono>
#include <string>

#include "odbcadmin/model/configuration.h"
#include "odbcadmin/trial/connection.h"
#include "odbcadmin/trial/sql_state.h"

namespace jx::doctor {

// How it ended, in a few words: "connected", "no answer within 20 s, in SQLDriverConnect".
std::string endOf(const trial::ConnectReport& report, std::chrono::milliseconds limit);

trial::Outcome outcomeOf(const trial::ConnectReport& report);

// "08001 (native 7) cannot connect", then what that means and what to do, on a line of its own. A message's own further
// lines are indented; control characters are shown as "?".
std::string describe(const trial::Diagnostic& diagnostic, trial::Outcome outcome);

// A driver may repeat the password that it was refused with: the secrets of the data source, and whatever looks like
// one, become stars in all texts of the report.
void hideSecrets(const model::DataSource& source, trial::ConnectReport& report);

}  // namespace jx::doctor
