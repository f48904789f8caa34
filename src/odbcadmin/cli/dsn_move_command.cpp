// dsn rename, copy and default.
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/verb.h"
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

ExitCode copyDataSource(const Session& session, const Configuration& configuration, const Line& line, Old old) {
    const std::string from = line.text("OLD");
    const std::string to = line.text("NEW");
    const auto source = configuration.dataSource(from);
    return session.report(model::copyDataSource(configuration, from, to, old, session.way()),
                          (old == Old::remove ? "Renamed data source " : "Copied data source ") +
                              (source ? source->name : from) + " to " + to);
}

void addTwoNames(Verb verb, Old old) {
    verb.operand("OLD", "Data source", kOne, Complete::dsn)
        .operand("NEW", "New name", kOne)
        .onRead(Needs::bothFiles, [old](const Session& run, const Configuration& configuration, const Line& line) {
            return copyDataSource(run, configuration, line, old);
        });
}

}  // namespace

void addDsnMoveCommands(CLI::App& app, Session& session) {
    addTwoNames(addVerb(app, session, "dsn rename", "Give a data source another name",
                        "odbcadmin dsn rename Sales \"Sales 2025\""),
                Old::remove);
    addTwoNames(addVerb(app, session, "dsn copy", "Make a second data source with the same keys",
                        "odbcadmin dsn copy Sales SalesTest"),
                Old::keep);
    addVerb(app, session, "dsn default", "Show the default data source, or make it a copy of another one",
            "odbcadmin dsn default\nodbcadmin dsn default Sales\nodbcadmin dsn default --unset")
        .operand("NAME", "Data source", kOptional, Complete::dsn)
        .flag("--unset", "Remove the default data source")
        .notBoth("--unset", "NAME")
        .onRead(Needs::bothFiles, changeDefault);
}

}  // namespace jx::cli
