// dsn test: connecting, and showing what happens.
#include <algorithm>
#include <cctype>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/progress.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/doctor/path_mistakes.h"
#include "odbcadmin/model/text.h"
#include "odbcadmin/trial/connection.h"
#include "odbcadmin/trial/sql_state.h"
#include "rules/names.h"
#include "rules/secrets.h"

namespace jx::cli {

namespace {

using model::printable;
using trial::ConnectReport;
using trial::Diagnostic;

constexpr std::chrono::seconds kConnectLimit{20};

// How a trial ended, in a few words.
std::string endText(const ConnectReport& report, std::chrono::milliseconds limit) {
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
            return "no answer within " + secondsText(limit) + ", " + during;
        case End::withheld:
            return "its driver is not loaded with the rights of root: " + report.why;
        case End::notStarted:
            break;
    }
    return "the program that connects could not be started: " + report.why;
}

trial::Outcome outcomeOf(const ConnectReport& report) {
    return report.end == ConnectReport::End::connected ? trial::Outcome::connected : trial::Outcome::refused;
}

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
        const trial::StateMeaning meaning = trial::meaningOf(each.state, outcomeOf(report));
        object["diagnostics"].push_back({{"state", each.state},
                                         {"native", each.native},
                                         {"message", each.message},
                                         {"meaning", meaning.meaning},
                                         {"advice", meaning.advice}});
    }
    return object;
}

// The lines of a driver's message, each further one indented; other control characters are shown as "?".
std::string linesOf(const std::string& message) {
    std::string lines;
    for (std::size_t at = 0; at < message.size();) {
        const std::size_t end = std::min(message.find_first_of("\r\n", at), message.size());
        std::string line = message.substr(at, end - at);
        std::replace(line.begin(), line.end(), '\t', ' ');
        const std::string_view trimmed = rules::trimmed(line);
        if (!trimmed.empty())
            lines.append(lines.empty() ? "" : "\n  ").append(printable(trimmed));
        at = end + 1;
    }
    return lines;
}

void print(const Session& session, const Diagnostic& diagnostic, trial::Outcome outcome) {
    const trial::StateMeaning meaning = trial::meaningOf(diagnostic.state, outcome);
    session.print(printable(diagnostic.state) + " (native " + std::to_string(diagnostic.native) + ") " +
                  linesOf(diagnostic.message));
    session.print(std::string("  means: ") + meaning.meaning + ". " + meaning.advice);
}

// Every place where the word stands by itself; a long one anywhere, since nothing else looks like it.
void hideWord(std::string& text, const std::string& word) {
    constexpr std::size_t kLong = 8;
    const auto isPartOfWord = [&](std::size_t at) {
        return at < text.size() && std::isalnum(static_cast<unsigned char>(text[at])) != 0;
    };
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at)) {
        const bool isPart = (at > 0 && isPartOfWord(at - 1)) || isPartOfWord(at + word.size());
        if (!isPart || word.size() >= kLong)
            text.replace(at, word.size(), rules::kMask);
        at += !isPart || word.size() >= kLong ? rules::kMask.size() : word.size();
    }
}

// A driver may repeat the password that it was refused with.
void hideSecrets(const Session& session, const model::DataSource& source, ConnectReport& report) {
    const auto hide = [&](std::string& text) {
        text = session.shown({}, text);
        for (const model::IniEntry& entry : source.section->entries) {
            if (session.showSecrets || !rules::isSecretKey(entry.key) || entry.value.empty())
                continue;
            hideWord(text, std::string(entry.value));
        }
    };
    if (source.section == nullptr)
        return;
    hide(report.output);
    for (Diagnostic& each : report.diagnostics)
        hide(each.message);
}

ExitCode show(const Session& session, const std::string& name, const std::string& library, const ConnectReport& report,
              std::chrono::milliseconds limit) {
    const bool connected = report.end == ConnectReport::End::connected;
    const ExitCode code = connected ? ExitCode::done : ExitCode::cannotConnect;
    const std::string end = endText(report, limit);
    if (session.json) {
        session.printJson(reportJson(name, library, report, end));
        return code;
    }
    for (const Diagnostic& each : report.diagnostics)
        print(session, each, outcomeOf(report));
    if (!report.user.empty())
        session.warn("the driver had the rights of " + report.user + ", not those of root");
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
        return session.fail(configuration.trouble(model::FileKind::dataSources)
                                ? configuration.trouble(model::FileKind::dataSources)
                                : model::noDataSource(configuration, name));
    const std::string library = doctor::meantLibrary(*source, configuration, doctor::loaderPlaces());
    if (const auto mistake = doctor::mistakeIn(library))
        return session.fail(ExitCode::cannotConnect,
                            "Cannot connect to " + source->name + ": the value of Driver " + mistake->fact,
                            "Write the line as: Driver=" + mistake->meant);
    if (library.empty() && configuration.trouble())
        return session.fail(configuration.trouble());
    if (library.empty())
        return session.fail(ExitCode::cannotConnect, "The data source " + source->name + " leads to no library",
                            "See odbcadmin explain " + source->name);
    ConnectReport report;
    {
        Progress progress(session.quiet);
        progress.begin("Connecting to " + source->name);
        report = trial::tryConnecting({library, source->name, configuration.paths(), *limit}, [&] { progress.tick(); });
    }
    hideSecrets(session, *source, report);
    return show(session, source->name, library, report, *limit);
}

}  // namespace

void addDsnTest(CLI::App& app, Session& session) {
    addVerb(app, session, "dsn test", "Connect to a data source and show what happens",
            "odbcadmin dsn test Sales\nodbcadmin dsn test Sales --timeout 5")
        .operand("NAME", "Data source", kOne, Complete::dsn)
        .timeout("Seconds until the driver is given up (20)")
        .thisSystemOnly()
        .onRead(Needs::nothing, runTest);
}

}  // namespace jx::cli
