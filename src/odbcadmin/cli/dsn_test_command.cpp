// dsn test: connecting, and showing what happens.
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/progress.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/doctor/connection_words.h"
#include "odbcadmin/doctor/installer_search.h"
#include "odbcadmin/doctor/path_mistakes.h"
#include "odbcadmin/model/text.h"
#include "odbcadmin/trial/connection.h"
#include "odbcadmin/trial/installer_library.h"
#include "odbcadmin/trial/sql_state.h"

namespace jx::cli {

namespace {

using trial::ConnectReport;
using trial::Diagnostic;

constexpr std::chrono::seconds kConnectLimit{20};

Json reportJson(const std::string& name, const std::string& library, const ConnectReport& report,
                const std::string& end) {
    Json object;
    object["name"] = name;
    object["lib"] = library;
    object["connected"] = report.end == ConnectReport::End::connected;
    object["result"] = end;
    object["user"] = report.user;
    object["driver"] = report.driver;
    object["database"] = report.database;
    object["diagnostics"] = Json::array();
    for (const Diagnostic& each : report.diagnostics) {
        const trial::StateMeaning meaning = trial::meaningOf(each.state, doctor::outcomeOf(report));
        object["diagnostics"].push_back({{"state", each.state},
                                         {"native", each.native},
                                         {"message", each.message},
                                         {"meaning", meaning.meaning},
                                         {"advice", meaning.advice}});
    }
    return object;
}

// What to look at next, also where the driver gave no reason.
std::string adviceOn(const ConnectReport& report, const std::string& name) {
    const std::string word = model::shellWord(name);
    const bool isSilent = report.end == ConnectReport::End::refused && report.diagnostics.empty();
    return "See odbcadmin doctor " + word +
           (isSilent ? "; the driver gave no reason, but this shows what it looks for: strace -f -e trace=file,network "
                       "odbcadmin dsn test " +
                           word
                     : "");
}

ExitCode show(const Session& session, const std::string& name, const std::string& library, const ConnectReport& report,
              std::chrono::milliseconds limit) {
    const bool connected = report.end == ConnectReport::End::connected;
    const ExitCode code = connected ? ExitCode::done : ExitCode::cannotConnect;
    const std::string end = doctor::endOf(report, limit);
    if (session.json) {
        session.printJson(reportJson(name, library, report, end));
        return code;
    }
    for (const Diagnostic& each : report.diagnostics)
        session.print(doctor::describe(each, doctor::outcomeOf(report)));
    if (!report.user.empty())
        session.warn("the driver had the rights of " + report.user + ", not those of root");
    const doctor::LibraryFile file = doctor::readLibraryFile(library);
    if (doctor::lacksInstaller(file, doctor::loaderPlaces()))
        session.warn(std::string("the loader finds no ") + trial::kDriversInstaller +
                     ", so the driver was given this product's; odbcadmin run -- PROGRAM does the same");
    if (!connected)
        return session.fail(code, "Cannot connect to " + name + ": " + end, adviceOn(report, name));
    session.say(name + ": connected" + (report.driver.empty() ? "" : ", driver " + report.driver) +
                (report.database.empty() ? "" : ", database " + report.database));
    return code;
}

// The driver looks up its keys by itself, and a section of the user's would answer it in place of the system's.
void hideUsersDataSources() {
    setenv("ODBCINI", "/proc/self/odbc.ini", 1);  // never there
}

ExitCode runTest(const Session& session, const model::Configuration& configuration, const Line& line) {
    const std::string name = line.text("NAME");
    const auto limit = timeLimit(session, line, kConnectLimit);
    if (!limit)
        return ExitCode::wrongUse;
    const auto source = configuration.dataSource(name);
    if (!source)
        return session.fail(configuration.trouble(model::FileKind::dataSources)
                                ? configuration.trouble(model::FileKind::dataSources)
                                : model::noDataSource(configuration, name));
    // The stored keys stand there: a connection without it would be one to the driver's own defaults.
    if (!source->header && !source->isDefault)
        return session.fail(
            ExitCode::cannotConnect,
            "The data source " + source->name + " has no section [" + source->name + "] in " + source->file->path,
            "See odbcadmin explain " + model::shellWord(source->name));
    const std::string library = doctor::meantLibrary(*source, configuration, doctor::loaderPlaces());
    if (const auto mistake = doctor::mistakeIn(library))
        return session.fail(ExitCode::cannotConnect,
                            "Cannot connect to " + source->name + ": the value of Driver " + mistake->fact,
                            mistake->advice("Driver"));
    if (library.empty() && configuration.trouble())
        return session.fail(configuration.trouble());
    if (library.empty())
        return session.fail(ExitCode::cannotConnect, "The data source " + source->name + " leads to no library",
                            "See odbcadmin explain " + model::shellWord(source->name));
    if (session.system)
        hideUsersDataSources();
    ConnectReport report;
    {
        Progress progress(session.quiet);
        progress.begin("Connecting to " + source->name);
        report = trial::tryConnecting({library, source->name, configuration.paths(), *limit}, [&] { progress.tick(); });
    }
    if (!session.showSecrets)
        doctor::hideSecrets(*source, report);
    return show(session, source->name, library, report, *limit);
}

}  // namespace

void addDsnTest(CLI::App& app, Session& session) {
    onTrial(addVerb(app, session, "dsn test", "Connect to a data source and show what happens",
                    "odbcadmin dsn test Sales\nodbcadmin dsn test Sales --timeout 5")
                .operand("NAME", "Data source", kOne, Complete::dsn),
            "Seconds until the driver is given up (20)", runTest);
}

}  // namespace jx::cli
