// Building the command line, reading it, running what it asks for.
#include "odbcadmin/cli/command_line.h"

#include <sys/stat.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <map>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/model/near_matches.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

namespace {

// CLI11 takes operands such as "[a,b]" and "{}" apart, and gives what follows "--" to the whole command once a verb has
// all the operands it needs. So such words, and what begins with the mark itself, get a mark in front while CLI11 holds
// them, and "--" never reaches it.
constexpr char kMark = '\x01';

bool needsMark(const std::string& word, bool onlyOperands) {
    return !word.empty() && (word[0] == '[' || word[0] == '{' || word[0] == kMark || (onlyOperands && word[0] == '-'));
}

std::vector<std::string> marked(const std::vector<std::string>& words) {
    std::vector<std::string> all;
    bool onlyOperands = false;
    for (const std::string& word : words) {
        if (!onlyOperands && word == "--")
            onlyOperands = true;
        else
            all.push_back(needsMark(word, onlyOperands) ? kMark + word : word);
    }
    return all;
}

std::string unmarked(const std::string& text) {
    return !text.empty() && text[0] == kMark ? text.substr(1) : text;
}

std::string nounDescription(const std::string& name) {
    static const std::map<std::string, std::string> kDescriptions{
        {"dsn", "Data sources"},
        {"driver", "Drivers"},
        {"translator", "Translators"},
        {"trace", "Call tracing of the driver manager"},
        {"config", "Any section and key of any INI file"},
    };
    const auto found = kDescriptions.find(name);
    return found == kDescriptions.end() ? "" : found->second;
}

std::string withExamples(const std::string& examples) {
    std::string text = "Examples:";
    for (const std::string& line : CLI::detail::split(examples, '\n'))
        text.append("\n  ").append(line);
    return text;
}

constexpr const char* kExamples = R"(odbcadmin driver add SQLite3 --lib /usr/lib/odbc/libsqlite3odbc.so
odbcadmin dsn add Sales --driver SQLite3 Database=/srv/sales.db
odbcadmin dsn list --json
odbcadmin dsn set Sales Timeout=30 --dry-run)";

constexpr const char* kExitCodes =
    R"(Exit codes: 0 done or nothing to do, 1 failed, 2 wrong use, 3 not found, 4 exists, 5 invalid name or value,
  6 input of apply is not valid, 7 file cannot be read or written, 8 file locked by another program,
  9 --check would change, 10 doctor, lint or check found errors, 11 dsn test could not connect.)";

void addGlobalOptions(CLI::App& app, Session& session) {
    app.add_flag("--json", session.json, "Results as JSON");
    app.add_flag("-n,--dry-run", session.dryRun, "Change nothing; print a unified diff of what would change");
    app.add_flag("--check", session.check, "Change nothing; exit 9 when something would change");
    app.add_flag("-q,--quiet", session.quiet, "Say nothing about what was done; lists as bare names");
    app.add_flag("--show-secrets", session.showSecrets, "Show passwords and the like instead of ********");
    app.add_flag("--no-color", session.noColor, "No colors");
    app.add_option("--home", session.home, "Work on the files of this home directory")
        ->type_name(Complete::directories);
    app.set_version_flag("--version", "odbcadmin " JX_VERSION);
}

ExitCode enterHome(const Session& session) {
    if (session.home.empty())
        return ExitCode::done;
    const std::string home = model::absolutePath(unmarked(session.home));
    struct stat state {};
    const int error = stat(home.c_str(), &state) != 0 ? errno : S_ISDIR(state.st_mode) ? 0 : ENOTDIR;
    if (error != 0)
        return session.fail(ExitCode::fileTrouble, "Cannot use " + home + " as home: " + std::strerror(error),
                            "Give --home a directory that exists.");
    setenv("HOME", home.c_str(), 1);
    unsetenv("ODBCINI");
    unsetenv("ODBCINSTINI");
    return ExitCode::done;
}

std::vector<std::string> verbsOf(const CLI::App& place) {
    std::vector<std::string> names;
    for (const CLI::App* verb : place.get_subcommands([](const CLI::App* each) { return !each->get_group().empty(); }))
        names.push_back(verb->get_name());
    return names;
}

// "odbcadmin dsn add"
std::string pathTo(const CLI::App& place) {
    const std::string& name = place.get_name();
    return place.get_parent() == nullptr ? name : pathTo(*place.get_parent()) + " " + name;
}

// What CLI11 reports as a missing subcommand may be one that is misspelled.
ExitCode noCommand(const CLI::App& app, const CLI::App& place, const Session& session) {
    const std::vector<std::string> verbs = verbsOf(place);
    const std::vector<std::string> others = app.remaining(/*recurse=*/true);
    if (others.empty())
        return session.fail(ExitCode::wrongUse, pathTo(place) + " needs one of " + model::joined(verbs),
                            "See " + pathTo(place) + " --help");
    const std::string given = unmarked(others.front());
    if (given.starts_with('-'))
        return session.fail(ExitCode::wrongUse, pathTo(place) + " has no option " + given,
                            "See " + pathTo(place) + " --help");
    return session.fail(ExitCode::wrongUse, pathTo(place) + " has no command " + given,
                        model::adviceFor(given, verbs, "See " + pathTo(place) + " --help"));
}

ExitCode wrongUse(const CLI::App& app, const CLI::ParseError& error, const Session& session) {
    const CLI::App* place = &app;
    while (!place->get_subcommands().empty())
        place = place->get_subcommands().front();
    if (dynamic_cast<const CLI::RequiredError*>(&error) != nullptr && !verbsOf(*place).empty())
        return noCommand(app, *place, session);
    std::string fact = error.what();
    std::erase(fact, kMark);
    return session.fail(ExitCode::wrongUse, fact, "See " + pathTo(*place) + " --help");
}

// Whether nothing was given but where the dialogs' files lie and how the dialogs look.
bool asksForDialogs(const CLI::App& app, const Session& session) {
    return app.get_subcommands().empty() && app.remaining(/*recurse=*/true).empty() && !session.json &&
           !session.writesNothing() && !session.quiet && !session.showSecrets;
}

ExitCode runDialogs(const Session& session, ShowDialogs showDialogs) {
    const ExitCode home = enterHome(session);
    if (home != ExitCode::done)
        return home;
    if (session.noColor)
        setenv("NO_COLOR", "1", 1);
    return showDialogs();
}

ExitCode runAction(Session& session) {
    const ExitCode home = enterHome(session);
    if (home != ExitCode::done || !session.action)
        return home;
    return session.action(session);
}

}  // namespace

CLI::App& noun(CLI::App& app, const std::string& name) {
    const auto present = app.get_subcommands([&](const CLI::App* each) { return each->get_name() == name; });
    if (!present.empty())
        return *present.front();
    CLI::App& made = *app.add_subcommand(name, nounDescription(name));
    made.require_subcommand(1);
    made.footer("Examples, and more with odbcadmin " + name + " VERB --help:");
    return made;
}

CLI::App& addVerb(CLI::App& parent, const std::string& name, const std::string& description,
                  const std::string& examples) {
    CLI::App& verb = *parent.add_subcommand(name, description);
    verb.footer(withExamples(examples) + "\n\nodbcadmin --help shows the options that every command takes.");
    if (parent.get_parent() != nullptr)
        parent.footer(parent.get_footer() + "\n  " + examples.substr(0, examples.find('\n')));
    return verb;
}

CLI::Option* addOperands(CLI::App& verb, const std::string& name, const std::string& description, OperandRule rule) {
    CLI::Option* option = verb.add_option(name, description)->expected(rule.least, rule.most);
    // CLI11 hands an operand more texts than the least number only when extra ones are allowed. Help does not show the
    // group, which is what completion offers.
    option->allow_extra_args(rule.most != rule.least);
    option->type_name("")->required(rule.least > 0)->group(rule.complete);
    return option;
}

CLI::Option* addValueOption(CLI::App& verb, const std::string& names, const std::string& description,
                            const char* complete) {
    return verb.add_option(names, description)->type_name(complete)->expected(1)->allow_extra_args(false);
}

CLI::Option* addTimeout(CLI::App& verb, const std::string& description) {
    CLI::Option* option = addValueOption(verb, "--timeout", description);
    option->type_name("SECONDS");
    return option;
}

std::optional<std::chrono::milliseconds> timeLimit(const Session& session, const CLI::Option* timeout,
                                                   std::chrono::milliseconds otherwise) {
    constexpr double kDay = 86400;
    constexpr double kMilliseconds = 1000;
    const std::string text = operand(timeout, 0);
    if (text.empty())
        return otherwise;
    char* end = nullptr;
    const double seconds = std::strtod(text.c_str(), &end);
    if (*end == '\0' && seconds > 0 && seconds <= kDay)
        return std::chrono::milliseconds(static_cast<long>(std::ceil(seconds * kMilliseconds)));
    session.fail(ExitCode::wrongUse, "--timeout is not a number of seconds: " + text, "Try --timeout 5");
    return std::nullopt;
}

CLI::Option* addSwitch(CLI::App& verb, const std::string& names, const std::string& description) {
    return verb.add_flag(names)->description(description);
}

void require(CLI::Option* option) {
    option->required();
}

void excludeEachOther(CLI::Option* one, CLI::Option* other) {
    one->excludes(other);
}

bool isGiven(const CLI::Option* option) {
    return option != nullptr && option->count() > 0;
}

std::vector<std::string> operands(const CLI::Option* option) {
    std::vector<std::string> texts = option->results();
    for (std::string& text : texts)
        text = unmarked(text);
    return texts;
}

std::string operand(const CLI::Option* option, std::size_t index) {
    return index < option->results().size() ? unmarked(option->results()[index]) : std::string();
}

void onRun(CLI::App& verb, Session& session, std::function<ExitCode(Session&)> action) {
    verb.callback([&session, action = std::move(action)] { session.action = action; });
}

void onRead(CLI::App& verb, Session& session, Needs needs,
            std::function<ExitCode(Session&, const model::Configuration&)> action) {
    onRun(verb, session, [needs, action = std::move(action)](Session& run) {
        const model::Configuration configuration = model::Configuration::read();
        const bool needsSources = needs == Needs::dataSources || needs == Needs::bothFiles;
        const bool needsDrivers = needs == Needs::drivers || needs == Needs::bothFiles;
        if (needsSources && configuration.trouble(model::FileKind::dataSources))
            return run.fail(configuration.trouble(model::FileKind::dataSources));
        if (needsDrivers && configuration.trouble(model::FileKind::drivers))
            return run.fail(configuration.trouble(model::FileKind::drivers));
        return action(run, configuration);
    });
}

void buildCommandLine(CLI::App& app, Session& session) {
    app.name("odbcadmin");
    app.fallthrough();
    app.require_subcommand(1);
    app.footer("Without a command it shows its dialogs in the terminal, with --home those of another home.\n\n" +
               withExamples(kExamples) + "\n\n" + kExitCodes);
    addGlobalOptions(app, session);
    addDsnReadCommands(app, session);
    addDsnChangeCommands(app, session);
    addDsnMoveCommands(app, session);
    addDsnTest(app, session);
    addRegisteredReadCommands(app, session);
    addRegisteredChangeCommands(app, session);
    addDriverCheck(app, session);
    addDriverScan(app, session);
    addTraceCommands(app, session);
    addInstallCommand(app, session);
    addConfigCommands(app, session);
    addExchangeCommands(app, session);
    addPaths(app, session);
    addExplain(app, session);
    addDoctorCommands(app, session);
    addCompleteCommand(app, session);
}

ExitCode runCommandLine(std::vector<std::string> arguments, ShowDialogs showDialogs) {
    CLI::App app("Manages ODBC data sources and drivers of this user.");
    Session session;
    buildCommandLine(app, session);
    arguments = marked(arguments);
    std::reverse(arguments.begin(), arguments.end());
    try {
        app.parse(arguments);
    } catch (const CLI::Success& help) {
        app.exit(help);
        return ExitCode::done;
    } catch (const CLI::RequiredError& error) {
        if (showDialogs != nullptr && asksForDialogs(app, session))
            return runDialogs(session, showDialogs);
        return wrongUse(app, error, session);
    } catch (const CLI::ParseError& error) {
        return wrongUse(app, error, session);
    }
    return runAction(session);
}

}  // namespace jx::cli
