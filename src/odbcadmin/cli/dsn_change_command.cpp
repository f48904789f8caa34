// dsn add, ensure, set, unset and remove.
#include <odbcinst.h>

#include <algorithm>
#include <iostream>
#include <iterator>

#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/data_source_change.h"
#include "odbcadmin/cli/near_matches.h"
#include "odbcadmin/cli/setup_route.h"
#include "odbcadmin/cli/text.h"
#include "rules/names.h"

namespace jx::admin {

namespace {

// What is given by name and options and thus not as KEY=VALUE.
const std::vector<std::string_view> kAttributesGivenOtherwise{"DSN", "Driver"};

struct Request {
    DataSourceWish wish;
    bool direct = false;
    bool exact = false;
};

void noteDirect(const SetupRoute& route, Outcome& outcome) {
    if (!route.reason.empty())
        outcome.noteRemark("written directly: " + route.reason);
}

ExitCode checkWish(const Session& session, const DataSourceWish& wish) {
    if (const ExitCode code = checkDataSourceName(session, wish.name); code != ExitCode::done)
        return code;
    for (const auto& [key, value] : wish.attributes) {
        const std::string whyKey = whyNoKey(key);
        if (!whyKey.empty())
            return session.fail(ExitCode::invalid, "The key \"" + key + "\" cannot be stored: " + whyKey,
                                "Use another key.");
        const std::string whyValue = whyNoValue(value);
        if (!whyValue.empty())
            return session.fail(ExitCode::invalid, "This value of " + key + " cannot be stored: " + whyValue,
                                "The file could not give it back as it is.");
    }
    return ExitCode::done;
}

ExitCode addDataSource(const Session& session, const Request& request) {
    ExitCode code = checkWish(session, request.wish);
    if (code != ExitCode::done)
        return code;
    const std::optional<Configuration> configuration = Configuration::read(session, code);
    if (!configuration)
        return code;
    const std::string& name = request.wish.name;
    if (configuration->dataSource(name))
        return dataSourceExists(session, name);
    const std::optional<Registered> driver = configuration->driver(request.wish.driver);
    if (!driver)
        return noDriver(session, *configuration, request.wish.driver);
    const SetupRoute route = findRoute(session, *driver, request.direct);
    Outcome outcome;
    if (route.usable)
        code = configureThroughSetup(session, *driver, ODBC_ADD_DSN, name, request.wish.attributes,
                                     "add data source " + name, outcome);
    else
        code = writeDataSource(session, *configuration, request.wish, OtherKeys::keep, Existing::refused, outcome);
    if (code != ExitCode::done)
        return code;
    noteDirect(route, outcome);
    return outcome.tell(session, "Added data source " + name);
}

// Of a data source that is in no list only the library is known: the driver is the registered one that has it.
std::string driverNow(const Configuration& configuration, const DataSource& source) {
    if (source.isListed || source.isDefault)
        return source.driver;
    for (const Registered& driver : configuration.drivers())
        if (driver.library == source.driver)
            return driver.name;
    return {};
}

ExitCode ensureDataSource(const Session& session, Request request) {
    ExitCode code = checkWish(session, request.wish);
    if (code != ExitCode::done)
        return code;
    const std::optional<Configuration> configuration = Configuration::read(session, code);
    if (!configuration)
        return code;
    const std::optional<DataSource> present = configuration->dataSource(request.wish.name);
    if (request.wish.driver.empty() && present)
        request.wish.driver = driverNow(*configuration, *present);
    if (request.wish.driver.empty())
        return session.fail(ExitCode::wrongUse,
                            present ? "The driver of data source " + request.wish.name +
                                          " is not known: no driver is registered with its library"
                                    : "There is no data source " + request.wish.name + " yet",
                            "Say with --driver what it is to use.");
    Outcome outcome;
    code = writeDataSource(session, *configuration, request.wish, request.exact ? OtherKeys::remove : OtherKeys::keep,
                           Existing::allowed, outcome);
    if (code != ExitCode::done)
        return code;
    return outcome.tell(session, (present ? "Changed data source " : "Added data source ") + request.wish.name);
}

ExitCode setDirectly(const Session& session, const std::string& name, const Pairs& attributes, Outcome& outcome) {
    FileChange change(session, INS_ODBCINI_FILENAME);
    if (!change.isOpen())
        return change.trouble();
    for (const auto& [key, value] : attributes)
        if (!change.set(name, key, value))
            return change.trouble();
    return outcome.finish(change);
}

// A setup library works on sections that exist, for drivers that are registered; it takes an empty value as none.
SetupRoute routeForSet(const Session& session, const Configuration& configuration, const DataSource& source,
                       const Request& request) {
    const std::optional<Registered> driver = configuration.driver(source.driver);
    if (!driver)
        return {false, request.direct ? "as --direct asks" : "its driver is not registered"};
    return findRoute(session, *driver, request.direct);
}

ExitCode setKeys(const Session& session, const Request& request) {
    const auto& [name, driverName, attributes] = request.wish;
    ExitCode code = checkWish(session, request.wish);
    if (code != ExitCode::done)
        return code;
    const std::optional<Configuration> configuration = Configuration::read(session, code);
    if (!configuration)
        return code;
    const std::optional<DataSource> source = configuration->dataSource(name);
    if (!source)
        return noDataSource(session, *configuration, name);
    const SetupRoute route = routeForSet(session, *configuration, *source, request);
    Outcome outcome;
    if (route.usable)
        code = configureThroughSetup(session, *configuration->driver(source->driver), ODBC_CONFIG_DSN, name, attributes,
                                     "change data source " + name, outcome);
    else
        code = setDirectly(session, name, attributes, outcome);
    if (code != ExitCode::done)
        return code;
    noteDirect(route, outcome);
    return outcome.tell(session, "Changed data source " + name);
}

// One line end at the end of the input is the shell's, not the value's.
std::string valueFromInput() {
    std::string value{std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
    if (value.ends_with('\n'))
        value.pop_back();
    if (value.ends_with('\r'))
        value.pop_back();
    return value;
}

ExitCode setFromInput(const Session& session, Request request, const std::vector<std::string>& keys) {
    if (keys.size() != 1 || keys[0].find('=') != std::string::npos)
        return session.fail(ExitCode::wrongUse, "--stdin takes one KEY and no VALUE",
                            "odbcadmin dsn set NAME KEY --stdin reads the value.");
    request.wish.attributes.emplace_back(keys[0], valueFromInput());
    return setKeys(session, request);
}

ExitCode unsetKeys(const Session& session, const std::string& name, const std::vector<std::string>& keys) {
    ExitCode code = checkDataSourceName(session, name);
    if (code != ExitCode::done)
        return code;
    const std::optional<Configuration> configuration = Configuration::read(session, code);
    if (!configuration)
        return code;
    if (!configuration->dataSource(name))
        return noDataSource(session, *configuration, name);
    const auto isDriver = [](const std::string& key) {
        return rules::sameName(rules::trimmed(key), INS_ODBCINI_DRIVER);
    };
    if (std::any_of(keys.begin(), keys.end(), isDriver))
        return session.fail(ExitCode::invalid, "A data source cannot be without its Driver",
                            "Use odbcadmin dsn ensure NAME --driver to change it.");
    FileChange change(session, INS_ODBCINI_FILENAME);
    if (!change.isOpen())
        return change.trouble();
    for (const std::string& key : keys)
        if (!change.erase(name, key))
            return change.trouble();
    Outcome outcome;
    code = outcome.finish(change);
    return code != ExitCode::done ? code : outcome.tell(session, "Changed data source " + name);
}

struct Removal {
    std::vector<std::string> names;
    bool ifExists = false;
    bool direct = false;
};

// Every name is looked up before the first one is removed.
ExitCode findAll(const Session& session, const Configuration& configuration, const Removal& removal,
                 std::vector<DataSource>& sources) {
    for (const std::string& name : removal.names) {
        if (const ExitCode code = checkDataSourceName(session, name); code != ExitCode::done)
            return code;
        const std::optional<DataSource> source = configuration.dataSource(name);
        if (source)
            sources.push_back(*source);
        else if (!removal.ifExists)
            return noDataSource(session, configuration, name);
    }
    return ExitCode::done;
}

ExitCode removeOne(const Session& session, const Configuration& configuration, const DataSource& source, bool direct,
                   std::vector<std::string>& left, Outcome& outcome) {
    const std::optional<Registered> driver = configuration.driver(source.driver);
    const SetupRoute route = driver ? findRoute(session, *driver, direct)
                                    : SetupRoute{false, direct ? "as --direct asks" : "its driver is not registered"};
    if (route.usable)
        return configureThroughSetup(session, *driver, ODBC_REMOVE_DSN, source.name, {},
                                     "remove data source " + source.name, outcome);
    left.push_back(source.name);
    noteDirect(route, outcome);
    return ExitCode::done;
}

ExitCode removeThem(const Session& session, const Removal& removal) {
    ExitCode code = ExitCode::done;
    const std::optional<Configuration> configuration = Configuration::read(session, code);
    if (!configuration)
        return code;
    std::vector<DataSource> sources;
    if (code = findAll(session, *configuration, removal, sources); code != ExitCode::done)
        return code;
    Outcome outcome;
    std::vector<std::string> left;
    for (const DataSource& source : sources)
        if (code = removeOne(session, *configuration, source, removal.direct, left, outcome); code != ExitCode::done)
            return code;
    if (!left.empty())
        if (code = removeDataSources(session, left, outcome); code != ExitCode::done)
            return code;
    std::vector<std::string> names(sources.size());
    std::transform(sources.begin(), sources.end(), names.begin(), [](const DataSource& source) { return source.name; });
    return outcome.tell(session, "Removed data source " + joined(names));
}

void addAddAndEnsure(CLI::App& dsn, Session& session, bool ensures) {
    CLI::App& verb =
        ensures
            ? addVerb(dsn, "ensure", "See that a data source is there with these keys; do nothing when it is",
                      "odbcadmin dsn ensure Sales --driver SQLite3 Database=/srv/sales.db\n"
                      "odbcadmin dsn ensure Sales --driver SQLite3 Database=/srv/sales.db --exact --check")
            : addVerb(dsn, "add", "Add a data source",
                      "odbcadmin dsn add Sales --driver SQLite3 Database=/srv/sales.db Timeout=30\n"
                      "odbcadmin dsn add \"Sales 2026\" --driver SQLite3 \"Description=Sales of the year\" --dry-run");
    const CLI::Option* name = addOperands(verb, "NAME", "Data source", {1, 1, Complete::nothing});
    const CLI::Option* pairs = addOperands(verb, "KEY=VALUE", "What its section is to hold", {0, -1});
    CLI::Option* driver = addValueOption(verb, "--driver", "Its driver, as driver list shows it", Complete::driver);
    const CLI::Option* exact = nullptr;
    const CLI::Option* direct = nullptr;
    if (ensures)
        exact = addSwitch(verb, "--exact", "Remove all other keys of its section");
    else
        direct = addSwitch(verb, "--direct", "Write the file without the driver's setup library");
    if (!ensures)
        require(driver);
    onRun(verb, session, [=](Session& run) {
        Request request{{operand(name, 0), operand(driver, 0), {}}, isGiven(direct), isGiven(exact)};
        const ExitCode code = takePairs(run, operands(pairs), request.wish.attributes, kAttributesGivenOtherwise);
        if (code != ExitCode::done)
            return code;
        return ensures ? ensureDataSource(run, request) : addDataSource(run, request);
    });
}

void addSet(CLI::App& dsn, Session& session) {
    CLI::App& verb = addVerb(dsn, "set", "Set keys of a data source",
                             "odbcadmin dsn set Sales Timeout=30 Server=db1\n"
                             "odbcadmin dsn set Sales PWD --stdin < password.txt");
    const CLI::Option* name = addOperands(verb, "NAME", "Data source", {1, 1, Complete::dsn});
    const CLI::Option* pairs = addOperands(verb, "KEY=VALUE", "What to store", {1, -1, Complete::keysOfDsn});
    const CLI::Option* input = addSwitch(verb, "--stdin", "Read the value of the one KEY from standard input");
    const CLI::Option* direct = addSwitch(verb, "--direct", "Write the file without the driver's setup library");
    onRun(verb, session, [=](Session& run) {
        Request request{{operand(name, 0), {}, {}}, isGiven(direct), /*exact=*/false};
        if (isGiven(input))
            return setFromInput(run, request, operands(pairs));
        const ExitCode code = takePairs(run, operands(pairs), request.wish.attributes, kAttributesGivenOtherwise);
        return code != ExitCode::done ? code : setKeys(run, request);
    });
}

void addUnset(CLI::App& dsn, Session& session) {
    CLI::App& verb = addVerb(dsn, "unset", "Remove keys of a data source", "odbcadmin dsn unset Sales Timeout Server");
    const CLI::Option* name = addOperands(verb, "NAME", "Data source", {1, 1, Complete::dsn});
    const CLI::Option* keys = addOperands(verb, "KEY", "Keys", {1, -1, Complete::keysOfDsn});
    onRun(verb, session, [=](Session& run) { return unsetKeys(run, operand(name, 0), operands(keys)); });
}

void addRemove(CLI::App& dsn, Session& session) {
    CLI::App& verb = addVerb(dsn, "remove", "Remove data sources",
                             "odbcadmin dsn remove Sales\nodbcadmin dsn remove Sales Accounts --if-exists");
    const CLI::Option* names = addOperands(verb, "NAME", "Data sources", {1, -1, Complete::dsn});
    const CLI::Option* ifExists = addSwitch(verb, "--if-exists", "Pass over those that are not there");
    const CLI::Option* direct = addSwitch(verb, "--direct", "Write the file without the driver's setup library");
    onRun(verb, session, [=](Session& run) {
        return removeThem(run, {operands(names), isGiven(ifExists), isGiven(direct)});
    });
}

}  // namespace

void addDsnChangeCommands(CLI::App& app, Session& session) {
    CLI::App& dsn = noun(app, "dsn");
    addAddAndEnsure(dsn, session, /*ensures=*/false);
    addAddAndEnsure(dsn, session, /*ensures=*/true);
    addSet(dsn, session);
    addUnset(dsn, session);
    addRemove(dsn, session);
}

}  // namespace jx::admin
