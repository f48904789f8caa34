// driver add, ensure and remove; translator add and remove.
#include "odbcadmin/model/registration.h"

#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/pairs.h"
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
    const std::string state = doctor::libraryState(path);
    if (state == "missing")
        session.warn("the " + what + " " + path + " is not there");
    else if (state == "broken")
        session.warn("the " + what + " " + path + " cannot be used; odbcadmin driver check tells why");
    else if (state == "wrong architecture")
        session.warn("the " + what + " " + path + " is for another kind of processor");
}

ExitCode enter(const Session& session, const Configuration& configuration, const RegisteredKind& kind,
               const model::Registration& wish, WhenPresent present) {
    const bool isPresent = configuration.find(kind, wish.name).has_value();
    const ChangeResult result = model::registerEntry(configuration, kind, wish, present, session.way());
    if (result.isDone() && kind.key == model::kDriverKind.key) {
        warnOfLibrary(session, "library", wish.library);
        warnOfLibrary(session, "setup library", wish.setup.value_or(""));
    }
    return session.report(result, (isPresent ? "Changed " : "Added ") + std::string(kind.word) + " " + wish.name);
}

// The data sources go first: one without its driver is of no use, a driver without data sources is.
ExitCode removeDriver(const Session& session, const Configuration& configuration, const std::string& name,
                      bool withDataSources) {
    const std::vector<std::string> users = namesOf(configuration.dataSourcesOf(name));
    const bool removesUsers = withDataSources && configuration.driver(name) && !users.empty();
    ChangeResult result;
    if (removesUsers && !result.add(model::removeDataSources(users, session.way())).isDone())
        return session.fail(result.reason);
    result.add(model::unregisterEntry(configuration, model::kDriverKind, name, session.way()));
    std::vector<std::string> remarks;
    if (!users.empty() && !withDataSources)
        remarks.push_back("these data sources use it still: " + model::joined(users) +
                          " (--with-dsns removes them too)");
    return session.report(
        result, "Removed driver " + name + (removesUsers ? " and data source " + model::joined(users) : ""), remarks);
}

// adds: otherwise what is there already is changed.
void addEntering(CLI::App& verb, Session& session, const RegisteredKind& kind, WhenPresent present) {
    const bool isNew = present == WhenPresent::fail;
    const bool isDriver = kind.key == model::kDriverKind.key;
    const CLI::Option* name = addOperands(verb, "NAME", isDriver ? "Driver" : "Translator",
                                          {1, 1, isNew ? Complete::nothing : Complete::driver});
    const CLI::Option* pairs =
        isDriver ? addOperands(verb, "KEY=VALUE", "Further keys of its section", {0, -1}) : nullptr;
    CLI::Option* library =
        addValueOption(verb, "--lib", isDriver ? "The driver's library" : "Its library", Complete::files);
    const CLI::Option* setup = addValueOption(verb, "--setup", "Its setup library", Complete::files);
    if (isNew)
        require(library);
    onRead(verb, session, Needs::drivers, [=, &kind](Session& run, const Configuration& configuration) {
        model::Registration wish{operand(name, 0), model::absoluteLibrary(operand(library, 0)), {}, {}};
        if (!operand(setup, 0).empty())
            wish.setup = model::absoluteLibrary(operand(setup, 0));
        const auto keys =
            takePairs(run, pairs == nullptr ? std::vector<std::string>() : operands(pairs), kKeysGivenOtherwise);
        if (!keys)
            return ExitCode::wrongUse;
        wish.keys = *keys;
        return enter(run, configuration, kind, wish, present);
    });
}

void addRemoveDriver(CLI::App& driver, Session& session) {
    CLI::App& verb = addVerb(driver, "remove", "Unregister a driver; its library file stays",
                             "odbcadmin driver remove SQLite3\nodbcadmin driver remove SQLite3 --with-dsns --dry-run");
    const CLI::Option* name = addOperands(verb, "NAME", "Driver", {1, 1, Complete::driver});
    const CLI::Option* withDataSources = addSwitch(verb, "--with-dsns", "Remove the data sources that use it, too");
    onRead(verb, session, Needs::bothFiles, [=](Session& run, const Configuration& configuration) {
        return removeDriver(run, configuration, operand(name, 0), isGiven(withDataSources));
    });
}

void addRemoveTranslator(CLI::App& translator, Session& session) {
    CLI::App& verb = addVerb(translator, "remove", "Unregister a translator; its library file stays",
                             "odbcadmin translator remove Latin1");
    const CLI::Option* name = addOperands(verb, "NAME", "Translator", {1, 1, Complete::translator});
    onRead(verb, session, Needs::drivers, [name](Session& run, const Configuration& configuration) {
        return run.report(model::unregisterEntry(configuration, model::kTranslatorKind, operand(name, 0), run.way()),
                          "Removed translator " + operand(name, 0));
    });
}

}  // namespace

void addRegisteredChangeCommands(CLI::App& app, Session& session) {
    CLI::App& driver = noun(app, "driver");
    addEntering(addVerb(driver, "add", "Register a driver",
                        "odbcadmin driver add SQLite3 --lib /usr/lib/odbc/libsqlite3odbc.so\n"
                        "odbcadmin driver add SQLite3 --lib libsqlite3odbc.so --setup libjxsetup.so FileUsage=1"),
                session, model::kDriverKind, WhenPresent::fail);
    addEntering(addVerb(driver, "ensure", "Ensure a driver is registered with these settings; do nothing if it is",
                        "odbcadmin driver ensure SQLite3 --lib /usr/lib/odbc/libsqlite3odbc.so --check"),
                session, model::kDriverKind, WhenPresent::change);
    addRemoveDriver(driver, session);
    CLI::App& translator = noun(app, "translator");
    addEntering(addVerb(translator, "add", "Register a translator",
                        "odbcadmin translator add Latin1 --lib /usr/lib/odbc/liblatin1.so"),
                session, model::kTranslatorKind, WhenPresent::fail);
    addRemoveTranslator(translator, session);
}

}  // namespace jx::cli
