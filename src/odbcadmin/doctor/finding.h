// One thing that a check found, and how bad it is.
#pragma once

#include <string>
#include <vector>

namespace jx::doctor {

// error    something does not work: a data source does not open, a line has no effect
// warning  it works here and now, and may not elsewhere or later
// note     worth knowing
enum class Severity { error, warning, note };

// Finding: what a check found.
struct Finding {
    std::string id;  // "syntax.duplicate-key": stable, listed in docs/doctor.md
    Severity severity = Severity::error;
    std::string subject;  // what it is about: a path, a path with a line, "data source Sales"
    std::string fact;     // one sentence without advice
    std::string advice;   // one sentence: what to do

    bool operator==(const Finding&) const = default;
};

using Findings = std::vector<Finding>;

inline const char* severityWord(Severity severity) {
    switch (severity) {
        case Severity::error:
            return "error";
        case Severity::warning:
            return "warning";
        case Severity::note:
            break;
    }
    return "note";
}

}  // namespace jx::doctor
