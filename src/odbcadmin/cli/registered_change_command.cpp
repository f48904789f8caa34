// driver add, ensure and remove; translator add and remove.
#include "odbcadmin/model/registration.h"

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/driver_template.h"
#include "odbcadmin/cli/followers.h"
#include "odbcadmin/cli/library_warning.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/model/data_source_change.h"
#include "odbcadmin/model/file_change.h"
#include "odbcadmin/model/text.h"
#include "odbcadmin/trial/installer_library.h"

namespace jx::cli {

namespace {

using model::ChangeResult;
using model::Configuration;
using model::RegisteredKind;
using model::WhenPresent;

// What is given by options and thus not as KEY=VALUE.
const std::vector<std::string_view> kKeysGivenOtherwise{"Driver", "Setup"};

constexpr const char* kNoSetup = "Without --setup: enter no setup library, not even the general one";

// The setup library to enter for a driver that would have none; empty when it has one, or is to have none. That of this
// system is no library of an image.
std::string missingSetup(const Session& session, const Configuration& configuration, const Line& line) {
    const auto& driver = configuration.driver(line.text("NAME"));
    const bool isOwn = driver && driver->file->scope == session.way().scope;
    const bool hasSetup = (isOwn && driver->setup) || !line.text("--setup").empty();
    return hasSetup || line.has("--no-setup") || !session.root.empty() ? "" : trial::generalSetupLibrary();
}

ExitCode enter(const Session& session, const Configuration& configuration, const Line& line, const RegisteredKind& kind,
               WhenPresent present, const std::vector<std::string>& furtherKeys) {
    const bool isDriver = kind.key == model::kDriverKind.key;
    model::Registration wish{line.text("NAME"), session.storedPath(line.text("--lib")), {}, {}};
    if (const std::string setup = line.text("--setup"); !setup.empty())
        wish.setup = session.storedPath(setup);
    if (isDriver) {
        const auto keys = takePairs(session, furtherKeys, kKeysGivenOtherwise);
        if (!keys)
            return ExitCode::wrongUse;
        wish.keys = *keys;
    }
    const std::string general = isDriver ? missingSetup(session, configuration, line) : "";
    if (!general.empty())
        wish.setup = general;
    const bool isPresent = configuration.find(kind, wish.name).has_value();
    const ChangeResult result = model::registerEntry(configuration, kind, wish, present, session.way());
    if (result.isDone() && isDriver) {
        warnOfLibrary(session, "library", wish.library);
        warnOfLibrary(session, "setup library", wish.setup.value_or(""));
    }
    return session.report(result, (isPresent ? "Changed " : "Added ") + std::string(kind.word) + " " + wish.name +
                                      (general.empty() ? "" : " with the general setup library " + general));
}

// With -f the template says all.
ExitCode addDriver(const Session& session, const Configuration& configuration, const Line& line) {
    const bool hasTemplate = line.has("-f");
    std::vector<std::string> keys = line.texts("NAME");
    if (!keys.empty())
        keys.erase(keys.begin());
    const bool givesDriver = line.has("--lib") || line.has("--setup") || !keys.empty();
    if (hasTemplate && givesDriver)
        return session.fail(ExitCode::wrongUse, "-f takes everything from the template",
                            "Give at most the NAME of one of its drivers with it.");
    if (hasTemplate)
        return addFromTemplate(session, configuration, line);
    if (!line.has("NAME") || !line.has("--lib"))
        return session.fail(ExitCode::wrongUse, line.has("NAME") ? "--lib is required" : "NAME is required",
                            "See odbcadmin driver add --help");
    return enter(session, configuration, line, model::kDriverKind, WhenPresent::fail, keys);
}

// What is said of data sources that stay and have no driver any more.
std::vector<std::string> remarksOnStaying(const Session& session, const Followers& followers) {
    std::vector<std::string> remarks;
    for (const auto* users : {&followers.changed, &followers.left})
        for (const model::DriverUsers& each : *users)
            remarks.push_back(each.scope == session.way().scope
                                  ? "these data sources use it still: " + model::joined(each.names) +
                                        " (--with-dsns removes them too)"
                                  : "these data sources of the other scope use it still: " + model::joined(each.names));
    return remarks;
}

ChangeResult removeFollowers(const Session& session, const Followers& followers) {
    ChangeResult result;
    for (const model::DriverUsers& each : followers.changed) {
        model::ChangeWay way = session.way();
        way.scope = each.scope;
        if (!result.add(model::removeDataSources(each.names, way)).isDone())
            break;
    }
    return result;
}

// Driver and data sources go together or not at all. Renaming locks the two files in this order, too.
ExitCode removeDriver(const Session& session, const Configuration& configuration, const Line& line) {
    const std::string name = line.text("NAME");
    const bool withDataSources = line.has("--with-dsns");
    const auto& driver = configuration.driver(name);
    const bool isOwn = driver && driver->file->scope == session.way().scope;
    // A package's purge comes after its removal, when only the data sources are left.
    const bool isGone = line.has("--if-exists") && !driver;
    const Followers followers = isOwn || isGone ? followersOf(session, name) : Followers();
    const std::string names = withDataSources ? namesIn(session, followers.changed) : "";
    const auto removeAll = [&] {
        ChangeResult all =
            isGone ? ChangeResult() : model::unregisterEntry(configuration, model::kDriverKind, name, session.way());
        if (all.isDone() && withDataSources)
            all.add(removeFollowers(session, followers));
        return all;
    };
    const ChangeResult result = model::asOneChange(session.way(), removeAll);
    std::vector<std::string> remarks;
    if (!result.files.empty())
        remarks = withDataSources ? remarksOnLeft(session, followers, "dsn remove NAME")
                                  : remarksOnStaying(session, followers);
    const std::string sources = names.empty() ? "" : "data source " + names;
    return session.report(
        result, isGone ? "Removed " + sources : "Removed driver " + name + (sources.empty() ? "" : " and " + sources),
        remarks);
}

ExitCode removeTranslator(const Session& session, const Configuration& configuration, const Line& line) {
    const std::string name = line.text("NAME");
    if (line.has("--if-exists") && !configuration.find(model::kTranslatorKind, name))
        return session.report({}, {});
    return session.report(model::unregisterEntry(configuration, model::kTranslatorKind, name, session.way()),
                          "Removed translator " + name);
}

void onEnter(Verb verb, const RegisteredKind& kind, WhenPresent present) {
    verb.option("--setup", "Its setup library", Complete::files)
        .onRead(Needs::drivers,
                [&kind, present](const Session& run, const Configuration& configuration, const Line& line) {
                    const bool isDriver = kind.key == model::kDriverKind.key;
                    return enter(run, configuration, line, kind, present,
                                 isDriver ? line.texts("KEY=VALUE") : std::vector<std::string>());
                });
}

}  // namespace

void addRegisteredChangeCommands(CLI::App& app, Session& session) {
    addVerb(app, session, "driver add", "Register a driver, or those of a template that its package brings",
            "odbcadmin driver add SQLite3 --lib /usr/lib/odbc/libsqlite3odbc.so\n"
            "odbcadmin driver add SQLite3 --lib libsqlite3odbc.so --setup libjxsetup.so FileUsage=1\n"
            "odbcadmin driver add -f /usr/share/psqlodbc/odbcinst.ini.template")
        .operand("NAME", "Driver, then further keys as KEY=VALUE; with -f the driver to take from the template", kAny)
        .option("--lib", "The driver's library", Complete::files)
        .option("--setup", "Its setup library", Complete::files)
        .flag("--no-setup", kNoSetup)
        .option("-f,--file", "A template, in which each section with a Driver is a driver", Complete::files)
        .onRead(Needs::drivers, addDriver);
    onEnter(
        addVerb(app, session, "driver ensure", "Ensure a driver is registered with these settings; do nothing if it is",
                "odbcadmin driver ensure SQLite3 --lib /usr/lib/odbc/libsqlite3odbc.so --check")
            .operand("NAME", "Driver", kOne, Complete::driver)
            .operand("KEY=VALUE", "Further keys of its section", kAny)
            .option("--lib", "The driver's library", Complete::files)
            .flag("--no-setup", kNoSetup),
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
        .flag("--if-exists", "Do nothing when it is not there")
        .onRead(Needs::drivers, removeTranslator);
}

}  // namespace jx::cli
