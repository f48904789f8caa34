// dsn rename, copy and default.
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/commands.h"
#include "odbcadmin/model/data_source_change.h"

namespace jx::cli {

namespace {

using model::Configuration;
using model::Old;

ExitCode showDefault(const Session& session, const Configuration& configuration) {
    const std::string driver = configuration.defaultDriver().text;
    if (driver.empty())
        return session.fail(ExitCode::notFound, "There is no default data source",
                            "odbcadmin dsn default NAME makes one of a data source.");
    const std::string twin = model::twinOfDefault(configuration);
    if (session.json)
        session.printJson({{"driver", driver}, {"sameAs", twin.empty() ? Json() : Json(twin)}});
    else
        session.printTable({{rules::kDefault, driver, twin.empty() ? "" : "same as " + twin}});
    return ExitCode::done;
}

ExitCode makeDefault(const Session& session, const Configuration& configuration, const std::string& name) {
    const auto source = configuration.dataSource(name);
    return session.report(model::makeDefault(configuration, name, session.way()),
                          "The default data source is now as " + (source ? source->name : name));
}

void addTwoNames(CLI::App& dsn, Session& session, Old old) {
    CLI::App& verb = old == Old::remove ? addVerb(dsn, "rename", "Give a data source another name",
                                                  "odbcadmin dsn rename Sales \"Sales 2025\"")
                                        : addVerb(dsn, "copy", "Make a second data source with the same keys",
                                                  "odbcadmin dsn copy Sales SalesTest");
    const CLI::Option* from = addOperands(verb, "OLD", "Data source", {1, 1, Complete::dsn});
    const CLI::Option* to = addOperands(verb, "NEW", "New name", {1, 1});
    onRead(verb, session, Needs::bothFiles, [=](Session& run, const Configuration& configuration) {
        const auto source = configuration.dataSource(operand(from, 0));
        return run.report(model::copyDataSource(configuration, operand(from, 0), operand(to, 0), old, run.way()),
                          (old == Old::remove ? "Renamed data source " : "Copied data source ") +
                              (source ? source->name : "") + " to " + operand(to, 0));
    });
}

}  // namespace

void addDsnMoveCommands(CLI::App& app, Session& session) {
    CLI::App& dsn = noun(app, "dsn");
    addTwoNames(dsn, session, Old::remove);
    addTwoNames(dsn, session, Old::keep);
    CLI::App& verb = addVerb(dsn, "default", "Show the default data source, or make it a copy of another one",
                             "odbcadmin dsn default\nodbcadmin dsn default Sales\nodbcadmin dsn default --unset");
    CLI::Option* name = addOperands(verb, "NAME", "Data source", {0, 1, Complete::dsn});
    CLI::Option* unset = addSwitch(verb, "--unset", "Remove the default data source");
    excludeEachOther(unset, name);
    onRead(verb, session, Needs::bothFiles, [=](Session& run, const Configuration& configuration) {
        if (isGiven(unset))
            return run.report(model::removeDataSources({rules::kDefault}, run.way()),
                              "Removed the default data source");
        return isGiven(name) ? makeDefault(run, configuration, operand(name, 0)) : showDefault(run, configuration);
    });
}

}  // namespace jx::cli
