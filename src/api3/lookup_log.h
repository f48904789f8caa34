// The look-up log: a line for each look-up, for whoever wonders what a program reads and what it gets.
//
//     if (environment.log != nullptr)
//         appendToLog(environment.log, logLine(lookUp, sources, answer));
#pragma once

#include <string>

#include "api3/profile_lookup.h"
#include "api3/text_output.h"

namespace jx::api3 {

// LookUpCall: what a program asked for.
struct LookUpCall {
    const char* file;
    Question question;
    Fallback fallback;
};

// The line, with its line break: time, process, file asked for, section, key, answer, value, with tabs between. Control
// characters are \xNN, secrets are stars. A null section or key, which asks for a list, is "*". It looks at the files
// again: the answer's text is not valid afterwards. std::bad_alloc may be thrown.
std::string logLine(const LookUpCall& call, const Sources& sources, const Answer& answer);

}  // namespace jx::api3
