// driver add, ensure and remove; translator add and remove.
#include "odbcadmin/model/registration.h"

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/doctor/library_state.h"
#include "odbcadmin/model/data_source_change.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

namespace {

using model::ChangeResult;
using model::Configuration;
using model::RegisteredKind;
using model::WhenPresent;

// What is given by options and thus not as KEY=VALUE.
const std::vector<std::string_view> kKeysGivenOtherwise{"Driver", "Setup"};

void warnOfLibrary(const Session& session, const std::string& what, const std::string& path) {
    if (path.find('/') == std::string::npos || session.quiet)
        return;
    const std::string root = session.root.empty() ? "" : model::absolutePath(unmarked(session.root));
    const std::string state = doctor::libraryFileState(root + path);
    if (state == "missing")
        session.warn("the " + what + " " + path + " is not there");
    else if (state == "broken")
        session.warn("the " + what + " " + path + " cannot be used; odbcadmin driver check tells why");
    else if (state == "wrong architecture")
        session.warn("the " + what + " " + path + " is for another kind of processor");
}

ExitCode enter(const Session& session, const Configuration& configuration, const Line& line, const RegisteredKind& kind,
               WhenPresent present) {
    const bool isDriver = kind.key == model::kDriverKind.key;
    model::Registration wish{line.text("NAME"), model::absoluteLibrary(line.text("--lib")), {}, {}};
    if (const std::string setup = line.text("--setup"); !setup.empty())
        wish.setup = model::absoluteLibrary(setup);
    if (isDriver) {
        const auto keys = takePairs(session, line.texts("KEY=VALUE"), kKeysGivenOtherwise);
        if (!keys)
            return ExitCode::wrongUse;
        wish.keys = *keys;
    }
    const bool isPresent = configuration.find(kind, wish.name).has_value();
    const ChangeResult result = model::registerEntry(configuration, kind, wish, present, session.way());
    if (result.isDone() && isDriver) {
        warnOfLibrary(session, "library", wish.library);
        warnOfLibrary(session, "setup library", wish.setup.value_or(""));
    }
    return session.report(result, (isPresent ? "Changed " : "Added ") + std::string(kind.word) + " " + wish.name);
}

// The data sources that use a driver: those in the file that changes go to, and those of the other scope that have no
// driver of that name there.
struct Users {
    std::vector<std::string> own, others;
};

Users usersOf(const Session& session, const Configuration& configuration, const std::string& name) {
    Users users;
    const model::Scope scope = session.way().scope;
    for (const model::DataSource& source : configuration.dataSourcesOf(name))
        (source.file->scope == scope ? users.own : users.others).push_back(source.name);
    if (const auto driver = configuration.driver(name); driver && driver->hides)
        users.others.clear();
    return users;
}

std::vector<std::string> remarksOn(const Users& users, bool areRemoved) {
    std::vector<std::string> remarks;
    if (!users.own.empty() && !areRemoved)
        remarks.push_back("these data sources use it still: " + model::joined(users.own) +
                          " (--with-dsns removes them too)");
    if (!users.others.empty())
        remarks.push_back("these data sources of the other scope use it still: " + model::joined(users.others));
    return remarks;
}

// The data sources go first: one without its driver is of no use, a driver without data sources is.
ExitCode removeDriver(const Session& session, const Configuration& configuration, const Line& line) {
    const std::string name = line.text("NAME");
    const bool withDataSources = line.has("--with-dsns");
    const Users users = usersOf(session, configuration, name);
    const auto driver = configuration.driver(name);
    if (line.has("--if-exists") && !driver)
        return session.report({}, {});
    const bool isOwn = driver && driver->file->scope == session.way().scope;
    const bool removesUsers = withDataSources && isOwn && !users.own.empty();
    ChangeResult result;
    if (removesUsers && !result.add(model::removeDataSources(users.own, session.way())).isDone())
        return session.fail(result.reason);
    result.add(model::unregisterEntry(configuration, model::kDriverKind, name, session.way()));
    return session.report(
        result, "Removed driver " + name + (removesUsers ? " and data source " + model::joined(users.own) : ""),
        remarksOn(users, withDataSources));
}

ExitCode removeTranslator(const Session& session, const Configuration& configuration, const Line& line) {
    const std::string name = line.text("NAME");
    return session.report(model::unregisterEntry(configuration, model::kTranslatorKind, name, session.way()),
                          "Removed translator " + name);
}

void onEnter(Verb verb, const RegisteredKind& kind, WhenPresent present) {
    verb.option("--setup", "Its setup library", Complete::files)
        .onRead(Needs::drivers,
                [&kind, present](const Session& run, const Configuration& configuration, const Line& line) {
                    return enter(run, configuration, line, kind, present);
                });
}

}  // namespace

void addRegisteredChangeCommands(CLI::App& app, Session& session) {
    onEnter(addVerb(app, session, "driver add", "Register a driver",
                    "odbcadmin driver add SQLite3 --lib /usr/lib/odbc/libsqlite3odbc.so\n"
                    "odbcadmin driver add SQLite3 --lib libsqlite3odbc.so --setup libjxsetup.so FileUsage=1")
                .operand("NAME", "Driver", kOne)
                .operand("KEY=VALUE", "Further keys of its section", kAny)
                .requiredOption("--lib", "The driver's library", Complete::files),
            model::kDriverKind, WhenPresent::fail);
    onEnter(
        addVerb(app, session, "driver ensure", "Ensure a driver is registered with these settings; do nothing if it is",
                "odbcadmin driver ensure SQLite3 --lib /usr/lib/odbc/libsqlite3odbc.so --check")
            .operand("NAME", "Driver", kOne, Complete::driver)
            .operand("KEY=VALUE", "Further keys of its section", kAny)
            .option("--lib", "The driver's library", Complete::files),
        model::kDriverKind, WhenPresent::change);
    addVerb(app, session, "driver remove", "Unregister a driver; its library file stays",
            "odbcadmin driver remove SQLite3\nodbcadmin driver remove SQLite3 --with-dsns --dry-run")
        .operand("NAME", "Driver", kOne, Complete::driver)
        .flag("--with-dsns", "Remove the data sources that use it, too")
        .flag("--if-exists", "Do nothing when it is not there")
        .onRead(Needs::bothFiles, removeDriver);
    onEnter(addVerb(app, session, "translator add", "Register a translator",
                    "odbcadmin translator add Latin1 --lib /usr/lib/odbc/liblatin1.so")
                .operand("NAME", "Translator", kOne)
                .requiredOption("--lib", "Its library", Complete::files),
            model::kTranslatorKind, WhenPresent::fail);
    addVerb(app, session, "translator remove", "Unregister a translator; its library file stays",
            "odbcadmin translator remove Latin1")
        .operand("NAME", "Translator", kOne, Complete::translator)
        .onRead(Needs::drivers, removeTranslator);
}

}  // namespace jx::cli
