// doctor and lint: everything that can be wrong, in order.
#include <filesystem>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/findings_output.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/doctor/bug_report.h"
#include "odbcadmin/doctor/file_checks.h"
#include "odbcadmin/doctor/syntax_checks.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

namespace {

using model::Configuration;

constexpr std::chrono::seconds kDoctorLimit{10};

ExitCode showReport(const Session& session, const doctor::Findings& findings) {
    const std::string report = doctor::bugReport(JX_VERSION, model::configPlaces(), findings);
    if (session.json)
        return showFindings(session, findings, {{"report", report}});
    session.print(report.substr(0, report.size() - 1));
    return codeOf(findings);
}

ExitCode runDoctor(const Session& session, const Configuration& configuration, const Line& line) {
    const std::vector<std::string> names = line.texts("NAME");
    const auto limit = timeLimit(session, line, kDoctorLimit);
    if (!limit)
        return ExitCode::wrongUse;
    for (const std::string& name : names)
        if (!configuration.dataSource(name) && !configuration.driver(name))
            return session.fail(configuration.trouble() ? configuration.trouble()
                                                        : model::noDataSourceOrDriver(configuration, name));
    const doctor::Findings findings = findWith(session, *limit, [&](doctor::ExaminationOptions& options) {
        options.names = names;
        options.library.namedBy = configuration.paths();
        return doctor::examine(configuration, options);
    });
    return line.has("--report") ? showReport(session, findings) : showFindings(session, findings);
}

ExitCode runLint(const Session& session, const Configuration& configuration, const Line& line) {
    const std::vector<std::string> files = line.texts("FILE");
    if (files.empty())
        return showFindings(session, doctor::lint(configuration));
    doctor::Findings findings;
    for (const std::string& file : files) {
        const std::string path = model::absolutePath(file);
        std::error_code error;
        if (std::filesystem::symlink_status(path, error).type() == std::filesystem::file_type::not_found)
            return session.fail(ExitCode::fileTrouble, "There is no file " + path, "Give files that exist.");
        for (const doctor::Findings& each : {doctor::checkFile(path), doctor::checkSyntax(path)})
            findings.insert(findings.end(), each.begin(), each.end());
    }
    return showFindings(session, findings);
}

}  // namespace

void addDoctorCommands(CLI::App& app, Session& session) {
    addVerb(app, session, "lint", "Look for mistakes in the files: rights, lines and names",
            "odbcadmin lint\nodbcadmin lint servers.ini")
        .operand("FILE", "Files to look at; the two configuration files without any", kAny, Complete::files)
        .onRead(Needs::nothing, runLint);
    addVerb(app, session, "doctor", "Look for everything that can be wrong with files, names and libraries",
            "odbcadmin doctor\nodbcadmin doctor Sales\nodbcadmin doctor --report > report.txt")
        .operand("NAME", "Data sources and drivers; all of them without any", kAny, Complete::dsnOrDriver)
        .timeout("Seconds that a library may take to load (10)")
        .flag("--report", "Print a text for a bug report, without secrets")
        .thisSystemOnly()
        .onRead(Needs::nothing, runDoctor);
}

}  // namespace jx::cli
