// Printing findings.
#include "odbcadmin/cli/findings_output.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/progress.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

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
    const std::string head =
        colored(session, finding.severity) + " " + finding.id + " " + model::printable(finding.subject);
    session.print(head);
    if (session.quiet)
        return;
    session.print("  " + model::printable(finding.fact));
    session.print("  " + model::printable(finding.advice));
}

Json findingJson(const Finding& finding) {
    Json object;
    object["id"] = finding.id;
    object["severity"] = doctor::severityWord(finding.severity);
    object["subject"] = finding.subject;
    object["fact"] = finding.fact;
    object["advice"] = finding.advice;
    return object;
}

}  // namespace

doctor::Findings findWith(const Session& session, std::chrono::milliseconds limit,
                          const std::function<doctor::Findings(doctor::ExaminationOptions&)>& examine) {
    Progress progress(session.quiet);
    doctor::ExaminationOptions options;
    options.library.places = doctor::loaderPlaces();
    options.library.limit = limit;
    options.library.waiting = [&] { progress.tick(); };
    options.progress = [&](const std::string& what) { progress.begin(what); };
    return examine(options);
}

ExitCode codeOf(const doctor::Findings& findings) {
    return countOf(findings, Severity::error) > 0 ? ExitCode::foundErrors : ExitCode::done;
}

ExitCode showFindings(const Session& session, const doctor::Findings& findings) {
    return showFindings(session, findings, Json::object());
}

ExitCode showFindings(const Session& session, const doctor::Findings& findings, const Json& more) {
    const ExitCode code = codeOf(findings);
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
        session.say("No problems were found.");
    else
        session.say(model::counted(countOf(findings, Severity::error), "error") + ", " +
                    model::counted(countOf(findings, Severity::warning), "warning") + ", " +
                    model::counted(countOf(findings, Severity::note), "note") + ".");
    return code;
}

}  // namespace jx::cli
