// odbcadmin doctor: everything that can be wrong, in order.
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/doctor_commands.h"
#include "odbcadmin/cli/findings_output.h"
#include "odbcadmin/cli/near_matches.h"
#include "odbcadmin/cli/progress.h"
#include "odbcadmin/doctor/bug_report.h"
#include "odbcadmin/doctor/examination.h"

namespace jx::admin {

namespace {

constexpr std::chrono::seconds kDoctorLimit{10};

// The first of names that is neither a data source nor a driver.
const std::string* unknownOf(const std::vector<std::string>& names, const doctor::Records& records) {
    for (const std::string& name : names)
        if (records.dataSource(name) == nullptr && records.driver(name) == nullptr)
            return &name;
    return nullptr;
}

ExitCode failUnknown(const Session& session, const std::string& name, const doctor::Records& records) {
    std::vector<std::string> candidates = namesOf(records.dataSources);
    const std::vector<std::string> drivers = namesOf(records.drivers);
    candidates.insert(candidates.end(), drivers.begin(), drivers.end());
    return session.fail(
        ExitCode::notFound,
        "There is no data source or driver " + name + " in " + records.odbcPath + " and " + records.odbcinstPath,
        adviceFor(name, candidates, "See odbcadmin dsn list and odbcadmin driver list."));
}

bool hasErrors(const doctor::Findings& findings) {
    for (const doctor::Finding& each : findings)
        if (each.severity == doctor::Severity::error)
            return true;
    return false;
}

ExitCode showReport(const Session& session, const doctor::Findings& findings) {
    const std::string report = doctor::bugReport(JX_VERSION, doctor::configPlaces(), findings);
    if (session.json)
        return showFindings(session, findings, {{"report", report}});
    session.print(report.substr(0, report.size() - 1));
    return hasErrors(findings) ? ExitCode::foundErrors : ExitCode::done;
}

ExitCode runDoctor(const Session& session, const std::vector<std::string>& names, const std::string& timeout,
                   bool report) {
    const auto limit = timeLimit(timeout, kDoctorLimit);
    if (!limit)
        return session.fail(ExitCode::wrongUse, "--timeout is no number of seconds: " + timeout, "Try --timeout 5");
    const doctor::Records records = doctor::readRecords();
    if (const std::string* unknown = unknownOf(names, records))
        return failUnknown(session, *unknown, records);
    doctor::Findings findings;
    {
        Progress progress(session.quiet);
        doctor::ExaminationOptions options;
        options.names = names;
        options.library.places = doctor::loaderPlaces();
        options.library.limit = *limit;
        options.library.waiting = [&] { progress.tick(); };
        options.progress = [&](const std::string& what) { progress.begin(what); };
        findings = doctor::examine(records, options);
    }
    return report ? showReport(session, findings) : showFindings(session, findings);
}

}  // namespace

void addDoctor(CLI::App& app, Session& session) {
    CLI::App& verb = addVerb(app, "doctor", "Look for everything that can be wrong with files, names and libraries",
                             "odbcadmin doctor\nodbcadmin doctor Sales\nodbcadmin doctor --report > report.txt");
    const auto names = addOperands(verb, "NAME", "Data sources and drivers; all of them without any",
                                   {.least = 0, .most = -1, .complete = Complete::dsnOrDriver});
    const auto timeout = addTimeout(verb, "Seconds that a library may take to load (10)");
    const auto report = addSwitch(verb, "--report", "Print a text for a bug report, without secrets");
    onRun(verb, session, [names, timeout, report](Session& run) {
        return runDoctor(run, operands(names), operand(timeout, 0), isGiven(report));
    });
}

}  // namespace jx::admin
