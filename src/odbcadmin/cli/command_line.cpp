// Building the command line, reading it, running what it asks for.
#include "odbcadmin/cli/command_line.h"

#include <jxini.h>
#include <unistd.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/model/home_folder.h"
#include "odbcadmin/model/near_matches.h"
#include "odbcadmin/model/new_file_owner.h"
#include "odbcadmin/model/root_directory.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

namespace {

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
    app.add_flag("-q,--quiet", session.quiet, "Do not report what was done; print lists as bare names");
    app.add_flag("--show-secrets", session.showSecrets, "Show passwords and the like instead of ********");
    app.add_flag("--no-color", session.noColor, "No colors");
    app.add_option("--home", session.home, "Work on the files of this home directory")
        ->type_name(Complete::directories)
        ->check([](const std::string& home) { return home.empty() ? "it names no directory" : std::string(); });
    app.add_option("--owner", session.owner,
                   "The owner of files that root makes; without it the owner of their directory")
        ->type_name(Complete::users);
    CLI::Option* user = app.add_flag("--user", session.user, "Look at the user's files only");
    app.add_flag("--system", session.system, "Look at the system's files only, and change those")->excludes(user);
    app.add_option("--root", session.root, "Work on the files of a system image below this directory")
        ->type_name(Complete::directories)
        ->check([](const std::string& root) { return root.empty() ? "it names no directory" : std::string(); });
    app.add_flag("--open-secrets", session.openSecrets,
                 "Store passwords in the system's files although everybody may read them");
    app.add_option("--lock-timeout", session.lockTimeout,
                   "How long to wait for a file that another program has locked (10); 0: not at all")
        ->type_name("SECONDS")
        ->check([](const std::string& wait) { return wait.empty() ? "it is not a number" : std::string(); });
    app.set_version_flag("--version", "odbcadmin " JX_VERSION);
}

void moveHome(const std::string& home) {
    setenv("HOME", home.c_str(), 1);
    unsetenv("ODBCINI");
    unsetenv("ODBCINSTINI");
}

// With --root the home directory is one of the image.
ExitCode enterHome(const Session& session) {
    const std::string home = session.home.empty() ? "" : model::absolutePath(unmarked(session.home));
    if (!session.root.empty()) {
        if (!home.empty())
            moveHome(home);
        const model::Reason reason = model::enterRoot(unmarked(session.root));
        return reason ? session.fail(reason) : ExitCode::done;
    }
    if (home.empty())
        return ExitCode::done;
    const std::string trouble = model::enterHome(home);
    if (!trouble.empty())
        return session.fail(ExitCode::fileTrouble, trouble, "Give --home a directory that exists.");
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
           !session.writesNothing() && !session.quiet && !session.showSecrets && !session.user && !session.system;
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
    const auto lockWait = secondsFrom(session.lockTimeout.empty() ? "10" : unmarked(session.lockTimeout));
    if (!lockWait)
        return session.fail(ExitCode::wrongUse, "--lock-timeout is not a number of seconds: " + session.lockTimeout,
                            "Try --lock-timeout 2");
    jxIniSetLockWait(lockWait->count());
    std::optional<model::Account> owner;
    if (!session.owner.empty()) {
        owner = model::accountOf(unmarked(session.owner));
        if (!owner)
            return session.fail(ExitCode::wrongUse, "There is no user " + unmarked(session.owner),
                                "Give --owner the name of an account.");
        if (::geteuid() != 0)
            return session.fail(ExitCode::wrongUse, "Only root can make files of another user",
                                "Leave --owner out; new files are yours.");
    }
    const model::NewFileOwner newFiles(owner);
    const ExitCode code = session.action(session);
    if (const model::Reason reason = newFiles.settle())
        return session.fail(reason);
    return code;
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
    addDsnTransferCommands(app, session);
    addDsnConnstr(app, session);
    addDsnTest(app, session);
    addRegisteredReadCommands(app, session);
    addRegisteredChangeCommands(app, session);
    addRegisteredKeysCommands(app, session);
    addDriverTransferCommands(app, session);
    addDriverCheck(app, session);
    addDriverScan(app, session);
    addTraceCommands(app, session);
    addInstallCommand(app, session);
    addConfigCommands(app, session);
    addEditCommand(app, session);
    addExchangeCommands(app, session);
    addPaths(app, session);
    addExplain(app, session);
    addDoctorCommands(app, session);
    addRunCommand(app, session);
    addCompleteCommand(app, session);
}

// The place of the first word from there on that is no global option and no value of one.
std::size_t wordFrom(const CLI::App& app, const std::vector<std::string>& words, std::size_t at) {
    while (at < words.size() && words[at].starts_with('-')) {
        const CLI::Option* option = app.get_option_no_throw(words[at]);
        at += option != nullptr && option->get_items_expected_max() > 0 ? 2 : 1;
    }
    return std::min(at, words.size());
}

const CLI::App* commandCalled(const CLI::App& place, const std::string& name) {
    const auto found = place.get_subcommands([&](const CLI::App* each) { return each->get_name() == name; });
    return found.empty() ? nullptr : found.front();
}

void askForHelp(std::vector<std::string>& words, std::size_t at) {
    words.erase(words.begin() + static_cast<std::ptrdiff_t>(at));
    words.emplace_back("--help");
}

// What many type from habit: "dsn ls", "driver rm", "help dsn add", "dsn help add".
void takeAliases(const CLI::App& app, std::vector<std::string>& words) {
    constexpr std::pair<const char*, const char*> kAliases[] = {{"ls", "list"}, {"rm", "remove"}};
    std::size_t at = wordFrom(app, words, 0);
    if (at < words.size() && words[at] == "help")
        askForHelp(words, at);
    const CLI::App* noun = at < words.size() ? commandCalled(app, words[at]) : nullptr;
    if (noun == nullptr || verbsOf(*noun).empty())
        return;
    at = wordFrom(app, words, at + 1);
    if (at < words.size() && words[at] == "help")
        askForHelp(words, at);
    for (const auto& [alias, verb] : kAliases)
        if (at < words.size() && words[at] == alias && commandCalled(*noun, verb) != nullptr)
            words[at] = verb;
}

}  // namespace

ExitCode runCommandLine(std::vector<std::string> arguments, ShowDialogs showDialogs) {
    CLI::App app("Manages the ODBC data sources and drivers of this user and of the system.");
    Session session;
    buildCommandLine(app, session);
    takeAliases(app, arguments);
    session.words = arguments;
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
