// One thing that a check found, and how bad it is.
#pragma once

#include <cstddef>
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
};

using Findings = std::vector<Finding>;

inline const char* severityWord(Severity severity) {
    constexpr const char* kWords[] = {"error", "warning", "note"};
    return kWords[static_cast<std::size_t>(severity)];
}

}  // namespace jx::doctor
