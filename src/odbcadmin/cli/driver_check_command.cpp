// driver check: whether the libraries of drivers work.
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/findings_output.h"
#include "odbcadmin/cli/verb.h"

namespace jx::cli {

namespace {

constexpr std::chrono::seconds kLoadLimit{10};

// What was asked for: the drivers first, then paths, as given.
struct Wanted {
    std::vector<model::Registered> drivers;
    std::vector<std::string> paths;

    std::vector<std::string> names() const {
        std::vector<std::string> all = namesOf(drivers);
        all.insert(all.end(), paths.begin(), paths.end());
        return all;
    }
};

model::Reason sort(const model::Configuration& configuration, const std::vector<std::string>& names, Wanted& wanted) {
    if (names.empty())
        wanted.drivers = configuration.drivers();
    for (const std::string& name : names) {
        if (const auto& driver = configuration.driver(name))
            wanted.drivers.push_back(*driver);
        else if (name.find('/') != std::string::npos)
            wanted.paths.push_back(name);
        else
            return model::noneRegistered(configuration, model::kDriverKind, name);
    }
    return {};
}

doctor::Findings check(const Wanted& wanted, doctor::ExaminationOptions& options,
                       const model::Configuration& configuration) {
    options.library.namedBy = configuration.paths();
    doctor::Findings findings = doctor::examineDrivers(wanted.drivers, options);
    // The others are named by the caller.
    options.library.namedBy.clear();
    for (const std::string& path : wanted.paths) {
        options.progress("Loading " + path);
        const doctor::LibraryRole role = doctor::roleOf(doctor::readLibraryFile(path));
        const doctor::Findings more = doctor::checkLibrary(path, path, role, options.library);
        findings.insert(findings.end(), more.begin(), more.end());
    }
    return findings;
}

ExitCode runCheck(const Session& session, const model::Configuration& configuration, const Line& line) {
    const auto limit = timeLimit(session, line, kLoadLimit);
    if (!limit)
        return ExitCode::wrongUse;
    Wanted wanted;
    if (const model::Reason reason = sort(configuration, line.texts("DRIVER|PATH"), wanted))
        return session.fail(reason);
    const doctor::Findings findings = findWith(
        session, *limit, [&](doctor::ExaminationOptions& options) { return check(wanted, options, configuration); });
    const std::vector<std::string> checked = wanted.names();
    if (!findings.empty() || session.json || checked.empty())
        return showFindings(session, findings, {{"checked", checked}});
    for (const std::string& each : checked)
        session.say(each + ": ok");
    return ExitCode::done;
}

}  // namespace

void addDriverCheck(CLI::App& app, Session& session) {
    onTrial(
        addVerb(app, session, "driver check", "Check that the libraries of drivers load and are what they should be",
                "odbcadmin driver check\nodbcadmin driver check SQLite3\n"
                "odbcadmin driver check /opt/acme/lib/libacmeodbc.so")
            .operand("DRIVER|PATH", "Drivers, or libraries by their paths; all drivers without any", kAny,
                     Complete::driver),
        "Seconds that a library may take to load (10)", runCheck);
}

}  // namespace jx::cli
