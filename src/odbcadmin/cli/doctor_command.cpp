// doctor and lint: everything that can be wrong, in order.
#include <filesystem>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/doctor_elsewhere.h"
#include "odbcadmin/cli/findings_output.h"
#include "odbcadmin/cli/fixing.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/doctor/bug_report.h"
#include "odbcadmin/doctor/file_checks.h"
#include "odbcadmin/doctor/syntax_checks.h"
#include "odbcadmin/doctor/unknown_name.h"
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

// A name that is not there: what is wrong with the files as such may be the reason, and is shown before it.
ExitCode showUnknown(const Session& session, const Configuration& configuration, const std::string& name) {
    doctor::Findings findings = doctor::checkTexts(configuration);
    std::erase_if(findings, [](const auto& each) { return each.severity == doctor::Severity::note; });
    if (!findings.empty())
        showFindings(session, findings);
    return session.fail(doctor::whyUnknown(configuration, name));
}

ExitCode runDoctor(const Session& session, const Configuration& configuration, const Line& line) {
    const std::vector<std::string> names = line.texts("NAME");
    const auto limit = timeLimit(session, line, kDoctorLimit);
    if (!limit)
        return ExitCode::wrongUse;
    if (isDoctorElsewhere(line))
        return runDoctorElsewhere(session, line);
    for (const std::string& name : names)
        if (!configuration.dataSource(name) && !configuration.driver(name))
            return showUnknown(session, configuration, name);
    const auto examine = [&](const Configuration& now) {
        return findWith(session, *limit, [&](doctor::ExaminationOptions& options) {
            options.names = names;
            options.library.namedBy = now.paths();
            return doctor::examine(now, options);
        });
    };
    if (line.has("--fix"))
        return fixAndLookAgain(session, configuration, filesToFix(configuration),
                               [&] { return examine(Configuration::read(session.scopes())); });
    const doctor::Findings findings = examine(configuration);
    return line.has("--report") ? showReport(session, findings) : showFindings(session, findings);
}

doctor::Findings lintFiles(const std::vector<std::string>& paths) {
    doctor::Findings findings;
    for (const std::string& path : paths)
        for (const doctor::Findings& each : {doctor::checkFile(path), doctor::checkSyntax(path)})
            findings.insert(findings.end(), each.begin(), each.end());
    return findings;
}

// With --system the user's files are not looked at, and in an image only those count whose directories it has.
doctor::LintPlaces lintPlaces(const Session& session) {
    doctor::LintPlaces places;
    places.files = model::configPlaces(session.imageRoot());
    if (!session.root.empty())
        places.variables = doctor::LintPlaces::Variables::ignored;
    std::erase_if(places.files, [&](const model::ConfigPlace& each) {
        std::error_code ignored;
        const std::filesystem::path directory = std::filesystem::path(each.path).parent_path();
        return (session.system && each.scope == model::Scope::user) ||
               (!session.root.empty() && !std::filesystem::is_directory(directory, ignored));
    });
    return places;
}

ExitCode runLint(const Session& session, const Configuration& configuration, const Line& line) {
    std::vector<std::string> paths;
    for (const std::string& file : line.texts("FILE")) {
        paths.push_back(model::absolutePath(file));
        std::error_code error;
        if (std::filesystem::symlink_status(paths.back(), error).type() == std::filesystem::file_type::not_found)
            return session.fail(ExitCode::fileTrouble, "There is no file " + paths.back(), "Give files that exist.");
    }
    const auto look = [&](const Configuration& now) {
        return paths.empty() ? doctor::lint(now, lintPlaces(session)) : lintFiles(paths);
    };
    if (line.has("--fix"))
        return fixAndLookAgain(session, configuration, paths.empty() ? filesToFix(configuration) : paths,
                               [&] { return look(Configuration::read(session.scopes())); });
    return showFindings(session, look(configuration));
}

constexpr const char* kFix =
    "Mend quotes around libraries' paths, carriage returns, byte order marks, and paths of libraries that moved";

}  // namespace

void addDoctorCommands(CLI::App& app, Session& session) {
    addVerb(app, session, "lint", "Look for mistakes in the files: rights, lines and names",
            "odbcadmin lint\nodbcadmin lint servers.ini\nodbcadmin lint --root /srv/image --system\nodbcadmin lint "
            "--fix --dry-run")
        .operand("FILE", "Files to look at; the two configuration files without any", kAny, Complete::files)
        .flag("--fix", kFix)
        .onRead(Needs::nothing, runLint);
    addVerb(app, session, "doctor", "Look for everything that can be wrong with files, names and libraries",
            "odbcadmin doctor\nodbcadmin doctor Sales\nodbcadmin doctor --as-user www-data Sales\n"
            "odbcadmin doctor --report > report.txt")
        .operand("NAME", "Data sources and drivers; all of them without any", kAny, Complete::dsnOrDriver)
        .timeout("Seconds that a library may take to load (10)")
        .flag("--report", "Print a text for a bug report, without secrets")
        .option("--as-user", "Look as this user would after a login: home directory, variables and rights",
                Complete::users)
        .option("--pid", "Look as this process does: its variables, rights and files", "NUMBER")
        .flag("--fix", kFix)
        .notBoth("--as-user", "--pid")
        .notBoth("--fix", "--report")
        .notBoth("--fix", "--as-user")
        .notBoth("--fix", "--pid")
        .notBoth("--fix", "NAME")
        .thisSystemOnly()
        .onRead(Needs::nothing, runDoctor);
}

}  // namespace jx::cli
