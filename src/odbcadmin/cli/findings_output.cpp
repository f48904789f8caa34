// Printing findings.
#include "odbcadmin/cli/findings_output.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/text.h"

namespace jx::admin {

namespace {

using doctor::Finding;
using doctor::Severity;

std::size_t countOf(const doctor::Findings& findings, Severity severity) {
    return static_cast<std::size_t>(std::count_if(findings.begin(), findings.end(),
                                                  [=](const Finding& each) { return each.severity == severity; }));
}

std::string colored(const Session& session, Severity severity) {
    std::string word = doctor::severityWord(severity);
    if (!session.colors() || severity == Severity::note)
        return word;
    return (severity == Severity::error ? "\x1b[31m" : "\x1b[33m") + word + "\x1b[0m";
}

void print(const Session& session, const Finding& finding) {
    const std::string head = colored(session, finding.severity) + " " + finding.id + " " + printable(finding.subject);
    session.print(head);
    if (session.quiet)
        return;
    session.print("  " + printable(finding.fact));
    session.print("  " + printable(finding.advice));
}

}  // namespace

Json findingJson(const Finding& finding) {
    Json object;
    object["id"] = finding.id;
    object["severity"] = doctor::severityWord(finding.severity);
    object["subject"] = finding.subject;
    object["fact"] = finding.fact;
    object["advice"] = finding.advice;
    return object;
}

ExitCode showFindings(const Session& session, const doctor::Findings& findings) {
    return showFindings(session, findings, Json::object());
}

ExitCode showFindings(const Session& session, const doctor::Findings& findings, const Json& more) {
    const std::size_t errors = countOf(findings, Severity::error);
    const ExitCode code = errors > 0 ? ExitCode::foundErrors : ExitCode::done;
    if (session.json) {
        Json object = more;
        object["findings"] = Json::array();
        for (const Finding& each : findings)
            object["findings"].push_back(findingJson(each));
        session.printJson(object);
        return code;
    }
    for (const Finding& each : findings)
        print(session, each);
    if (findings.empty())
        session.say("Nothing was found.");
    else
        session.say(counted(errors, "error") + ", " + counted(countOf(findings, Severity::warning), "warning") + ", " +
                    counted(countOf(findings, Severity::note), "note") + ".");
    return code;
}

std::optional<std::chrono::milliseconds> timeLimit(const std::string& text, std::chrono::milliseconds otherwise) {
    if (text.empty())
        return otherwise;
    constexpr double kDay = 86400;
    constexpr double kMilliseconds = 1000;
    char* end = nullptr;
    const double seconds = std::strtod(text.c_str(), &end);
    if (*end != '\0' || !(seconds > 0) || seconds > kDay)
        return std::nullopt;
    return std::chrono::milliseconds(static_cast<long>(std::ceil(seconds * kMilliseconds)));
}

}  // namespace jx::admin
