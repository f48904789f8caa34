// driver add, ensure and remove.
#include <odbcinst.h>

#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/data_source_change.h"
#include "odbcadmin/cli/registration.h"
#include "odbcadmin/cli/text.h"
#include "odbcadmin/doctor/library_state.h"

namespace jx::admin {

namespace {

// What is given by options and thus not as KEY=VALUE.
const std::vector<std::string_view> kDriverKeysGivenOtherwise{"Driver", "Setup"};

void warnOfLibrary(const Session& session, const std::string& what, const std::string& path) {
    if (path.empty() || path.find('/') == std::string::npos || session.quiet)
        return;
    switch (doctor::libraryState(path)) {
        case doctor::LibraryState::ok:
            return;
        case doctor::LibraryState::missing:
            return session.warn("the " + what + " " + path + " is not there");
        case doctor::LibraryState::broken:
            return session.warn("the " + what + " " + path + " cannot be used; odbcadmin driver check tells why");
        case doctor::LibraryState::wrongArchitecture:
            return session.warn("the " + what + " " + path + " is for another kind of processor");
    }
}

ExitCode driverExists(const Session& session, const std::string& name) {
    return session.fail(ExitCode::exists, "There is a driver " + name + " in " + pathOf(INS_ODBCINST_FILENAME),
                        "Use odbcadmin driver ensure to change it.");
}

bool isThere(const IniView& file, const std::string& name) {
    return file.section(name) != nullptr || file.find(INS_ODBCINI_DRIVERS, name) != nullptr;
}

ExitCode register_(const Session& session, const RegistrationWish& wish, bool adds) {
    if (const ExitCode code = checkRegisteredName(session, driverKind(), wish.name); code != ExitCode::done)
        return code;
    FileChange change(session, INS_ODBCINST_FILENAME);
    if (!change.isOpen())
        return change.trouble();
    const bool present = isThere(change.before(), wish.name);
    if (adds && present)
        return driverExists(session, wish.name);
    if (wish.library.empty() && change.before().value(wish.name, INS_ODBCINI_DRIVER).empty())
        return session.fail(ExitCode::wrongUse, "Driver " + wish.name + " has no library yet", "Give it with --lib.");
    if (!composeRegistration(change, driverKind(), wish))
        return change.trouble();
    Outcome outcome;
    if (const ExitCode code = outcome.finish(change); code != ExitCode::done)
        return code;
    warnOfLibrary(session, "library", wish.library);
    warnOfLibrary(session, "setup library", wish.setup);
    return outcome.tell(session, (present ? "Changed driver " : "Added driver ") + wish.name);
}

// The data sources go first: one without its driver is of no use, a driver without data sources is.
ExitCode removeDriver(const Session& session, const std::string& name, bool withDataSources) {
    ExitCode code = checkRegisteredName(session, driverKind(), name);
    if (code != ExitCode::done)
        return code;
    const std::optional<Configuration> configuration = Configuration::read(session, code);
    if (!configuration)
        return code;
    if (!configuration->driver(name))
        return noDriver(session, *configuration, name);
    const std::vector<std::string> users = configuration->dataSourcesOf(name);
    Outcome outcome;
    if (withDataSources && !users.empty())
        if (code = removeDataSources(session, users, outcome); code != ExitCode::done)
            return code;
    FileChange change(session, INS_ODBCINST_FILENAME);
    if (!change.isOpen() || !composeUnregistration(change, driverKind(), name))
        return change.trouble();
    if (code = outcome.finish(change); code != ExitCode::done)
        return code;
    if (!users.empty() && !withDataSources)
        outcome.noteRemark("these data sources use it still: " + joined(users) + " (--with-dsns removes them too)");
    return outcome.tell(session, "Removed driver " + name +
                                     (users.empty() || !withDataSources ? "" : " and data source " + joined(users)));
}

void addRegistration(CLI::App& driver, Session& session, bool adds) {
    CLI::App& verb =
        adds ? addVerb(driver, "add", "Register a driver",
                       "odbcadmin driver add SQLite3 --lib /usr/lib/odbc/libsqlite3odbc.so\n"
                       "odbcadmin driver add SQLite3 --lib libsqlite3odbc.so --setup libjxsetup.so FileUsage=1")
             : addVerb(driver, "ensure", "See that a driver is registered so; do nothing when it is",
                       "odbcadmin driver ensure SQLite3 --lib /usr/lib/odbc/libsqlite3odbc.so --check");
    const CLI::Option* name = addOperands(verb, "NAME", "Driver", {1, 1, adds ? Complete::nothing : Complete::driver});
    const CLI::Option* pairs = addOperands(verb, "KEY=VALUE", "Further keys of its section", {0, -1});
    CLI::Option* library = addValueOption(verb, "--lib", "The driver's library", Complete::files);
    const CLI::Option* setup = addValueOption(verb, "--setup", "Its setup library", Complete::files);
    if (adds)
        require(library);
    onRun(verb, session, [=](Session& run) {
        RegistrationWish wish{
            operand(name, 0), absoluteLibrary(operand(library, 0)), absoluteLibrary(operand(setup, 0)), {}};
        const ExitCode code = takePairs(run, operands(pairs), wish.keys, kDriverKeysGivenOtherwise);
        return code != ExitCode::done ? code : register_(run, wish, adds);
    });
}

}  // namespace

void addDriverChangeCommands(CLI::App& app, Session& session) {
    CLI::App& driver = noun(app, "driver");
    addRegistration(driver, session, /*adds=*/true);
    addRegistration(driver, session, /*adds=*/false);
    CLI::App& verb = addVerb(driver, "remove", "Unregister a driver; its library file stays",
                             "odbcadmin driver remove SQLite3\nodbcadmin driver remove SQLite3 --with-dsns --dry-run");
    const CLI::Option* name = addOperands(verb, "NAME", "Driver", {1, 1, Complete::driver});
    const CLI::Option* withDataSources = addSwitch(verb, "--with-dsns", "Remove the data sources that use it, too");
    onRun(verb, session, [=](Session& run) { return removeDriver(run, operand(name, 0), isGiven(withDataSources)); });
}

}  // namespace jx::admin
