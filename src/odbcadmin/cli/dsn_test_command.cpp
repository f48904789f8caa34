// odbcadmin dsn test: connecting, and telling what happens.
#include <cstring>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/doctor_commands.h"
#include "odbcadmin/cli/findings_output.h"
#include "odbcadmin/cli/near_matches.h"
#include "odbcadmin/cli/progress.h"
#include "odbcadmin/cli/text.h"
#include "odbcadmin/doctor/connection.h"
#include "odbcadmin/doctor/records.h"
#include "odbcadmin/doctor/sql_state.h"
#include "rules/secrets.h"

namespace jx::admin {

namespace {

using doctor::ConnectionTrial;
using doctor::Diagnostic;
using doctor::Records;

constexpr std::chrono::seconds kConnectLimit{20};

// What the data source's section says, or else its driver's.
std::string libraryOf(const doctor::DataSourceRecord& source, const Records& records) {
    if (source.library)
        return source.library->text;
    const doctor::DriverRecord* driver = source.listed ? records.driver(source.listed->text) : nullptr;
    return driver != nullptr && driver->library ? driver->library->text : "";
}

// The end of a trial in a few words.
std::string endText(const ConnectionTrial& trial, const std::string& limit) {
    using End = ConnectionTrial::End;
    const std::string during = trial.function.empty() ? "while the driver was loaded" : "in " + trial.function;
    switch (trial.end) {
        case End::connected:
            return "connected";
        case End::refused:
            return trial.function + " failed with result " + std::to_string(trial.code);
        case End::notLoaded:
            return "the loader says: " + trial.sentence;
        case End::noFunction:
            return "the driver has no " + trial.function;
        case End::crashed:
            return "the driver crashed " + during + ", with " + doctor::signalText(trial.code);
        case End::exited:
            return "the driver ended the program " + during + ", with exit code " + std::to_string(trial.code);
        case End::timedOut:
            return "no answer within " + limit + ", " + during;
        case End::notStarted:
            break;
    }
    return std::string("no process could be started: ") + std::strerror(trial.code);
}

// A driver may repeat in its message what it was to connect with.
std::string shownMessage(const Session& session, const Diagnostic& diagnostic) {
    return session.showSecrets ? diagnostic.message : rules::masked({}, diagnostic.message);
}

Json trialJson(const Session& session, const std::string& name, const std::string& library,
               const ConnectionTrial& trial, const std::string& end) {
    Json object;
    object["name"] = name;
    object["lib"] = library;
    object["connected"] = trial.end == ConnectionTrial::End::connected;
    object["result"] = end;
    object["driver"] = trial.driver;
    object["database"] = trial.database;
    object["diagnostics"] = Json::array();
    for (const Diagnostic& each : trial.diagnostics) {
        const doctor::StateMeaning meaning = doctor::meaningOf(each.state);
        object["diagnostics"].push_back({{"state", each.state},
                                         {"native", each.native},
                                         {"message", shownMessage(session, each)},
                                         {"meaning", meaning.meaning},
                                         {"advice", meaning.advice}});
    }
    return object;
}

void print(const Session& session, const Diagnostic& diagnostic) {
    const doctor::StateMeaning meaning = doctor::meaningOf(diagnostic.state);
    session.print(printable(diagnostic.state) + " (native " + std::to_string(diagnostic.native) + ") " +
                  printable(shownMessage(session, diagnostic)));
    session.print(std::string("  means: ") + meaning.meaning + ". " + meaning.advice);
}

ExitCode show(const Session& session, const std::string& name, const std::string& library, const ConnectionTrial& trial,
              const std::string& limit) {
    const bool connected = trial.end == ConnectionTrial::End::connected;
    const ExitCode code = connected ? ExitCode::done : ExitCode::cannotConnect;
    const std::string end = endText(trial, limit);
    if (session.json) {
        session.printJson(trialJson(session, name, library, trial, end));
        return code;
    }
    for (const Diagnostic& each : trial.diagnostics)
        print(session, each);
    if (!connected)
        return session.fail(code, "Cannot connect to " + name + ": " + end, "See odbcadmin doctor " + name);
    session.say(name + ": connected" + (trial.driver.empty() ? "" : ", driver " + trial.driver) +
                (trial.database.empty() ? "" : ", database " + trial.database));
    return code;
}

ExitCode runTest(const Session& session, const std::string& name, const std::string& timeout) {
    const auto limit = timeLimit(timeout, kConnectLimit);
    if (!limit)
        return session.fail(ExitCode::wrongUse, "--timeout is no number of seconds: " + timeout, "Try --timeout 5");
    const Records records = doctor::readRecords();
    const doctor::DataSourceRecord* source = records.dataSource(name);
    if (source == nullptr)
        return session.fail(ExitCode::notFound, "There is no data source " + name + " in " + records.odbcPath,
                            adviceFor(name, namesOf(records.dataSources), "See odbcadmin dsn list."));
    const std::string library = libraryOf(*source, records);
    if (library.empty())
        return session.fail(ExitCode::cannotConnect, "The data source " + source->name + " leads to no library",
                            "See odbcadmin explain " + source->name);
    ConnectionTrial trial;
    {
        Progress progress(session.quiet);
        progress.begin("Connecting to " + source->name);
        trial = doctor::tryConnecting(library, source->name, *limit, [&] { progress.tick(); });
    }
    return show(session, source->name, library, trial, timeout.empty() ? "20 s" : timeout + " s");
}

}  // namespace

void addDsnTest(CLI::App& app, Session& session) {
    CLI::App& verb = addVerb(noun(app, "dsn"), "test", "Connect to a data source and tell what happens",
                             "odbcadmin dsn test Sales\nodbcadmin dsn test Sales --timeout 5");
    const auto name = addOperands(verb, "NAME", "Data source", {.least = 1, .most = 1, .complete = Complete::dsn});
    const auto timeout = addTimeout(verb, "Seconds until the driver is given up (20)");
    onRun(verb, session, [name, timeout](Session& run) { return runTest(run, operand(name, 0), operand(timeout, 0)); });
}

}  // namespace jx::admin
