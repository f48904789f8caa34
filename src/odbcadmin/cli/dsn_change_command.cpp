// dsn add, ensure, set, unset and remove.
#include <iostream>
#include <iterator>

#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/pairs.h"
#include "odbcadmin/cli/setup_route.h"
#include "odbcadmin/model/data_source_change.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

namespace {

using model::ChangeResult;
using model::Configuration;
using Action = trial::SetupRequest::Action;
using Remarks = std::vector<std::string>;

// What is given by name and options and thus not as KEY=VALUE.
const std::vector<std::string_view> kAttributesGivenOtherwise{"DSN", "Driver"};

Remarks remarksOf(const SetupRoute& route) {
    return route.reason.empty() ? Remarks() : Remarks{route.remark()};
}

ExitCode addDataSource(const Session& session, const Configuration& configuration, const model::DataSourceWish& wish,
                       bool isDirect) {
    if (const model::Reason reason = model::whyNotAdd(configuration, wish))
        return session.fail(reason);
    const auto driver = configuration.driver(wish.driver);
    const SetupRoute route = findRoute(session, driver, isDirect);
    const ChangeResult result =
        route.usable ? goThroughSetup(session, *driver, {Action::add, driver->name, wish.name, wish.attributes},
                                      "add data source " + wish.name)
                     : model::addDataSource(configuration, wish, session.way());
    return session.report(result, "Added data source " + wish.name, remarksOf(route));
}

ExitCode ensureDataSource(const Session& session, const Configuration& configuration, const model::DataSourceWish& wish,
                          model::OtherKeys others) {
    const bool isPresent = configuration.dataSource(wish.name).has_value();
    return session.report(model::ensureDataSource(configuration, wish, others, session.way()),
                          (isPresent ? "Changed data source " : "Added data source ") + wish.name);
}

// A setup library works on sections that exist, for drivers that are registered; it takes an empty value as none.
ExitCode setKeys(const Session& session, const Configuration& configuration, const std::string& name,
                 const model::Pairs& attributes, bool isDirect) {
    if (const model::Reason reason = model::whyNotSet(configuration, name, attributes))
        return session.fail(reason);
    const auto driver = configuration.driver(configuration.dataSource(name)->driver);
    const SetupRoute route = findRoute(session, driver, isDirect);
    const ChangeResult result =
        route.usable ? goThroughSetup(session, *driver, {Action::configure, driver->name, name, attributes},
                                      "change data source " + name)
                     : model::setKeys(configuration, name, attributes, session.way());
    return session.report(result, "Changed data source " + name, remarksOf(route));
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

std::optional<model::Pairs> pairFromInput(const Session& session, const std::vector<std::string>& keys) {
    if (keys.size() == 1 && keys[0].find('=') == std::string::npos)
        return model::Pairs{{keys[0], valueFromInput()}};
    session.fail(ExitCode::wrongUse, "--stdin takes one KEY and no VALUE",
                 "odbcadmin dsn set NAME KEY --stdin reads the value.");
    return std::nullopt;
}

struct Removal {
    std::vector<std::string> names;
    bool ifExists = false;
    bool isDirect = false;
};

// Every name is looked up before the first one is removed.
model::Reason findAll(const Configuration& configuration, const Removal& removal,
                      std::vector<model::DataSource>& sources) {
    for (const std::string& name : removal.names) {
        model::Reason reason = model::whyNotThere(configuration, name);
        if (!reason)
            sources.push_back(*configuration.dataSource(name));
        else if (reason.kind != model::Reason::Kind::notFound || !removal.ifExists)
            return reason;
    }
    return {};
}

ExitCode removeDataSources(const Session& session, const Configuration& configuration, const Removal& removal) {
    std::vector<model::DataSource> sources;
    if (const model::Reason reason = findAll(configuration, removal, sources))
        return session.fail(reason);
    ChangeResult result;
    Remarks remarks;
    std::vector<std::string> left;
    for (const model::DataSource& source : sources) {
        const auto driver = configuration.driver(source.driver);
        const SetupRoute route = findRoute(session, driver, removal.isDirect);
        if (!route.usable) {
            left.push_back(source.name);
            for (const std::string& remark : remarksOf(route))
                remarks.push_back(remark);
        } else if (!result
                        .add(goThroughSetup(session, *driver, {Action::remove, driver->name, source.name, {}},
                                            "remove data source " + source.name))
                        .isDone()) {
            return session.fail(result.reason);
        }
    }
    if (!left.empty())
        result.add(model::removeDataSources(left, session.way()));
    return session.report(result, "Removed data source " + model::joined(namesOf(sources)), remarks);
}

CLI::Option* addDirect(CLI::App& verb) {
    return addSwitch(verb, "--direct", "Write the file without the driver's setup library");
}

void addAdd(CLI::App& dsn, Session& session) {
    CLI::App& verb =
        addVerb(dsn, "add", "Add a data source",
                "odbcadmin dsn add Sales --driver SQLite3 Database=/srv/sales.db Timeout=30\n"
                "odbcadmin dsn add \"Sales 2026\" --driver SQLite3 \"Description=Sales of the year\" --dry-run");
    const CLI::Option* name = addOperands(verb, "NAME", "Data source", {1, 1});
    const CLI::Option* pairs = addOperands(verb, "KEY=VALUE", "What its section is to hold", {0, -1});
    CLI::Option* driver = addValueOption(verb, "--driver", "Its driver, as driver list shows it", Complete::driver);
    const CLI::Option* direct = addDirect(verb);
    require(driver);
    onRead(verb, session, Needs::bothFiles, [=](Session& run, const Configuration& configuration) {
        const auto attributes = takePairs(run, operands(pairs), kAttributesGivenOtherwise);
        return attributes ? addDataSource(run, configuration, {operand(name, 0), operand(driver, 0), *attributes},
                                          isGiven(direct))
                          : ExitCode::wrongUse;
    });
}

void addEnsure(CLI::App& dsn, Session& session) {
    CLI::App& verb = addVerb(dsn, "ensure", "Ensure a data source is there with these keys; do nothing if it is",
                             "odbcadmin dsn ensure Sales --driver SQLite3 Database=/srv/sales.db\n"
                             "odbcadmin dsn ensure Sales --driver SQLite3 Database=/srv/sales.db --exact --check");
    const CLI::Option* name = addOperands(verb, "NAME", "Data source", {1, 1});
    const CLI::Option* pairs = addOperands(verb, "KEY=VALUE", "What its section is to hold", {0, -1});
    const CLI::Option* driver =
        addValueOption(verb, "--driver", "Its driver, as driver list shows it", Complete::driver);
    const CLI::Option* exact = addSwitch(verb, "--exact", "Remove all other keys of its section");
    onRead(verb, session, Needs::bothFiles, [=](Session& run, const Configuration& configuration) {
        const auto attributes = takePairs(run, operands(pairs), kAttributesGivenOtherwise);
        return attributes ? ensureDataSource(run, configuration, {operand(name, 0), operand(driver, 0), *attributes},
                                             isGiven(exact) ? model::OtherKeys::remove : model::OtherKeys::keep)
                          : ExitCode::wrongUse;
    });
}

void addSet(CLI::App& dsn, Session& session) {
    CLI::App& verb = addVerb(dsn, "set", "Set keys of a data source",
                             "odbcadmin dsn set Sales Timeout=30 Server=db1\n"
                             "odbcadmin dsn set Sales PWD --stdin < password.txt");
    const CLI::Option* name = addOperands(verb, "NAME", "Data source", {1, 1, Complete::dsn});
    const CLI::Option* pairs = addOperands(verb, "KEY=VALUE", "What to store", {1, -1, Complete::keysOfDsn});
    const CLI::Option* input = addSwitch(verb, "--stdin", "Read the value of the one KEY from standard input");
    const CLI::Option* direct = addDirect(verb);
    onRead(verb, session, Needs::bothFiles, [=](Session& run, const Configuration& configuration) {
        const auto attributes = isGiven(input) ? pairFromInput(run, operands(pairs))
                                               : takePairs(run, operands(pairs), kAttributesGivenOtherwise);
        return attributes ? setKeys(run, configuration, operand(name, 0), *attributes, isGiven(direct))
                          : ExitCode::wrongUse;
    });
}

void addUnset(CLI::App& dsn, Session& session) {
    CLI::App& verb = addVerb(dsn, "unset", "Remove keys of a data source", "odbcadmin dsn unset Sales Timeout Server");
    const CLI::Option* name = addOperands(verb, "NAME", "Data source", {1, 1, Complete::dsn});
    const CLI::Option* keys = addOperands(verb, "KEY", "Keys", {1, -1, Complete::keysOfDsn});
    onRead(verb, session, Needs::bothFiles, [=](Session& run, const Configuration& configuration) {
        return run.report(model::unsetKeys(configuration, operand(name, 0), operands(keys), run.way()),
                          "Changed data source " + operand(name, 0));
    });
}

void addRemove(CLI::App& dsn, Session& session) {
    CLI::App& verb = addVerb(dsn, "remove", "Remove data sources",
                             "odbcadmin dsn remove Sales\nodbcadmin dsn remove Sales Accounts --if-exists");
    const CLI::Option* names = addOperands(verb, "NAME", "Data sources", {1, -1, Complete::dsn});
    const CLI::Option* ifExists = addSwitch(verb, "--if-exists", "Pass over those that are not there");
    const CLI::Option* direct = addDirect(verb);
    onRead(verb, session, Needs::bothFiles, [=](Session& run, const Configuration& configuration) {
        return removeDataSources(run, configuration, {operands(names), isGiven(ifExists), isGiven(direct)});
    });
}

}  // namespace

void addDsnChangeCommands(CLI::App& app, Session& session) {
    CLI::App& dsn = noun(app, "dsn");
    addAdd(dsn, session);
    addEnsure(dsn, session);
    addSet(dsn, session);
    addUnset(dsn, session);
    addRemove(dsn, session);
}

}  // namespace jx::cli
