// odbcadmin driver check: whether the libraries of drivers work.
#include <nlohmann/json.hpp>
#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/doctor_commands.h"

#include "odbcadmin/cli/findings_output.h"
#include "odbcadmin/cli/near_matches.h"
#include "odbcadmin/cli/progress.h"
#include "odbcadmin/doctor/examination.h"

namespace jx::admin {

namespace {

constexpr std::chrono::seconds kLoadLimit{10};

// A library given by its path is taken for what its functions say; for a driver, when they say nothing.
doctor::LibraryRole roleOf(const std::string& path) {
    const std::optional<doctor::ElfFile> file = doctor::readElfFile(path);
    const doctor::Offers offers = [&](const char* name) { return file && file->defined.contains(name); };
    const bool isDriver = doctor::missingFunctions(doctor::LibraryRole::driver, offers).empty();
    for (const doctor::LibraryRole role :
         {doctor::LibraryRole::setup, doctor::LibraryRole::translator, doctor::LibraryRole::translatorSetup})
        if (!isDriver && doctor::missingFunctions(role, offers).empty())
            return role;
    return doctor::LibraryRole::driver;
}

// What was asked for: the drivers first, then paths, as given.
struct Wanted {
    std::vector<doctor::DriverRecord> drivers;
    std::vector<std::string> paths;
};

ExitCode sort(const Session& session, const std::vector<std::string>& names, Wanted& wanted) {
    const doctor::Records records = doctor::readRecords();
    if (names.empty())
        wanted.drivers = records.drivers;
    for (const std::string& name : names) {
        const doctor::DriverRecord* driver = records.driver(name);
        if (driver != nullptr)
            wanted.drivers.push_back(*driver);
        else if (name.find('/') != std::string::npos)
            wanted.paths.push_back(name);
        else
            return session.fail(ExitCode::notFound, "There is no driver " + name + " in " + records.odbcinstPath,
                                adviceFor(name, namesOf(records.drivers), "See odbcadmin driver list."));
    }
    return ExitCode::done;
}

doctor::Findings check(const Wanted& wanted, const doctor::ExaminationOptions& options) {
    doctor::Findings findings = doctor::examineDrivers(wanted.drivers, options);
    for (const std::string& path : wanted.paths) {
        options.progress("Loading " + path);
        const doctor::Findings more = doctor::checkLibrary(path, path, roleOf(path), options.library);
        findings.insert(findings.end(), more.begin(), more.end());
    }
    return findings;
}

ExitCode runCheck(const Session& session, const std::vector<std::string>& names, const std::string& timeout) {
    const auto limit = timeLimit(timeout, kLoadLimit);
    if (!limit)
        return session.fail(ExitCode::wrongUse, "--timeout is no number of seconds: " + timeout, "Try --timeout 5");
    Wanted wanted;
    const ExitCode code = sort(session, names, wanted);
    if (code != ExitCode::done)
        return code;
    doctor::Findings findings;
    {
        Progress progress(session.quiet);
        doctor::ExaminationOptions options;
        options.library.places = doctor::loaderPlaces();
        options.library.limit = *limit;
        options.library.waiting = [&] { progress.tick(); };
        options.progress = [&](const std::string& what) { progress.begin(what); };
        findings = check(wanted, options);
    }
    Json checked = Json::array();
    for (const doctor::DriverRecord& each : wanted.drivers)
        checked.push_back(each.name);
    for (const std::string& path : wanted.paths)
        checked.push_back(path);
    if (findings.empty() && !session.json && !checked.empty()) {
        for (const Json& each : checked)
            session.say(each.get<std::string>() + ": ok");
        return ExitCode::done;
    }
    return showFindings(session, findings, {{"checked", checked}});
}

}  // namespace

void addDriverCheck(CLI::App& app, Session& session) {
    CLI::App& verb =
        addVerb(noun(app, "driver"), "check", "Check that the libraries of drivers load and are what they should be",
                "odbcadmin driver check\nodbcadmin driver check SQLite3\n"
                "odbcadmin driver check /opt/acme/lib/libacmeodbc.so");
    const auto names = addOperands(verb, "DRIVER|PATH", "Drivers, or libraries by their paths; all drivers without any",
                                   {.least = 0, .most = -1, .complete = Complete::driver});
    const auto timeout = addTimeout(verb, "Seconds that a library may take to load (10)");
    onRun(verb, session,
          [names, timeout](Session& run) { return runCheck(run, operands(names), operand(timeout, 0)); });
}

}  // namespace jx::admin
