// dsn test: connecting, and showing what happens.
#include <cstring>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/progress.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/model/text.h"
#include "odbcadmin/trial/connection.h"
#include "odbcadmin/trial/sql_state.h"

namespace jx::cli {

namespace {

using model::printable;
using trial::ConnectReport;
using trial::Diagnostic;

constexpr std::chrono::seconds kConnectLimit{20};

// What the data source's section says, or else its driver's.
std::string libraryOf(const model::DataSource& source, const model::Configuration& configuration) {
    if (source.library || !source.listed)
        return source.library.text;
    const auto driver = configuration.driver(source.driver);
    return driver ? driver->library.text : "";
}

// How a trial ended, in a few words.
std::string endText(const ConnectReport& report, const std::string& limit) {
    using End = ConnectReport::End;
    const std::string during = report.function.empty() ? "while the driver was loaded" : "in " + report.function;
    switch (report.end) {
        case End::connected:
            return "connected";
        case End::refused:
            return report.function + " failed with result " + std::to_string(report.code);
        case End::notLoaded:
            return "the loader says: " + report.sentence;
        case End::noFunction:
            return "the driver has no " + report.function;
        case End::crashed:
            return "the driver crashed " + during + ", with " + trial::signalText(report.code);
        case End::exited:
            return "the driver ended the program " + during + ", with exit code " + std::to_string(report.code);
        case End::timedOut:
            return "no answer within " + limit + ", " + during;
        case End::notStarted:
            break;
    }
    return std::string("no process could be started: ") + std::strerror(report.code);
}

Json reportJson(const Session& session, const std::string& name, const std::string& library,
                const ConnectReport& report, const std::string& end) {
    Json object;
    object["name"] = name;
    object["lib"] = library;
    object["connected"] = report.end == ConnectReport::End::connected;
    object["result"] = end;
    object["driver"] = report.driver;
    object["database"] = report.database;
    object["diagnostics"] = Json::array();
    for (const Diagnostic& each : report.diagnostics) {
        const trial::StateMeaning meaning = trial::meaningOf(each.state);
        object["diagnostics"].push_back({{"state", each.state},
                                         {"native", each.native},
                                         {"message", session.shown({}, each.message)},
                                         {"meaning", meaning.meaning},
                                         {"advice", meaning.advice}});
    }
    return object;
}

void print(const Session& session, const Diagnostic& diagnostic) {
    const trial::StateMeaning meaning = trial::meaningOf(diagnostic.state);
    session.print(printable(diagnostic.state) + " (native " + std::to_string(diagnostic.native) + ") " +
                  printable(session.shown({}, diagnostic.message)));
    session.print(std::string("  means: ") + meaning.meaning + ". " + meaning.advice);
}

ExitCode show(const Session& session, const std::string& name, const std::string& library, const ConnectReport& report,
              const std::string& limit) {
    const bool connected = report.end == ConnectReport::End::connected;
    const ExitCode code = connected ? ExitCode::done : ExitCode::cannotConnect;
    const std::string end = endText(report, limit);
    if (session.json) {
        session.printJson(reportJson(session, name, library, report, end));
        return code;
    }
    for (const Diagnostic& each : report.diagnostics)
        print(session, each);
    if (!connected)
        return session.fail(code, "Cannot connect to " + name + ": " + end, "See odbcadmin doctor " + name);
    session.say(name + ": connected" + (report.driver.empty() ? "" : ", driver " + report.driver) +
                (report.database.empty() ? "" : ", database " + report.database));
    return code;
}

ExitCode runTest(const Session& session, const model::Configuration& configuration, const Line& line) {
    const std::string name = line.text("NAME");
    const auto limit = timeLimit(session, line, kConnectLimit);
    if (!limit)
        return ExitCode::wrongUse;
    const auto source = configuration.dataSource(name);
    if (!source)
        return session.fail(model::noDataSource(configuration, name));
    const std::string library = libraryOf(*source, configuration);
    if (library.empty())
        return session.fail(ExitCode::cannotConnect, "The data source " + source->name + " leads to no library",
                            "See odbcadmin explain " + source->name);
    ConnectReport report;
    {
        Progress progress(session.quiet);
        progress.begin("Connecting to " + source->name);
        report = trial::tryConnecting({library, source->name, *limit}, [&] { progress.tick(); });
    }
    return show(session, source->name, library, report, line.has("--timeout") ? line.text("--timeout") + " s" : "20 s");
}

}  // namespace

void addDsnTest(CLI::App& app, Session& session) {
    addVerb(app, session, "dsn test", "Connect to a data source and show what happens",
            "odbcadmin dsn test Sales\nodbcadmin dsn test Sales --timeout 5")
        .operand("NAME", "Data source", kOne, Complete::dsn)
        .timeout("Seconds until the driver is given up (20)")
        .onRead(Needs::nothing, runTest);
}

}  // namespace jx::cli
