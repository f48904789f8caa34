// dsn rename and default.
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/model/data_source_change.h"

namespace jx::cli {

namespace {

using model::Configuration;

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

ExitCode changeDefault(const Session& session, const Configuration& configuration, const Line& line) {
    if (line.has("--unset"))
        return session.report(model::removeDataSources({rules::kDefault}, session.way()),
                              "Removed the default data source");
    if (!line.has("NAME"))
        return showDefault(session, configuration);
    const std::string name = line.text("NAME");
    const auto source = configuration.dataSource(name);
    return session.report(model::makeDefault(configuration, name, session.way()),
                          "The default data source is now a copy of " + (source ? source->name : name));
}

ExitCode renameDataSource(const Session& session, const Configuration& configuration, const Line& line) {
    const std::string from = line.text("OLD");
    const std::string to = line.text("NEW");
    const auto source = configuration.dataSource(from);
    return session.report(model::copyDataSource(configuration, from, to, model::Old::remove, session.way()),
                          "Renamed data source " + (source ? source->name : from) + " to " + to);
}

}  // namespace

void addDsnMoveCommands(CLI::App& app, Session& session) {
    addVerb(app, session, "dsn rename", "Give a data source another name", "odbcadmin dsn rename Sales \"Sales 2025\"")
        .operand("OLD", "Data source", kOne, Complete::dsn)
        .operand("NEW", "New name", kOne)
        .onRead(Needs::bothFiles, renameDataSource);
    addVerb(app, session, "dsn default", "Show the default data source, or make it a copy of another one",
            "odbcadmin dsn default\nodbcadmin dsn default Sales\nodbcadmin dsn default --unset")
        .operand("NAME", "Data source", kOptional, Complete::dsn)
        .flag("--unset", "Remove the default data source")
        .notBoth("--unset", "NAME")
        .onRead(Needs::bothFiles, changeDefault);
}

}  // namespace jx::cli
