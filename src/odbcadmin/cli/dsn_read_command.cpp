// dsn list, show and get.
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/sections.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

namespace {

using model::Configuration;
using model::DataSource;

Json sourceJson(const DataSource& source) {
    return {
        {"name", source.name}, {"driver", source.driver}, {"listed", source.isListed()}, {"default", source.isDefault}};
}

ExitCode listDataSources(const Session& session, const Configuration& configuration, const Line& /*line*/) {
    Json json = Json::array();
    std::vector<std::vector<std::string>> rows;
    for (const DataSource& source : configuration.dataSources()) {
        if (session.json)
            json.push_back(sourceJson(source));
        else if (session.quiet)
            rows.push_back({source.name});
        else
            rows.push_back({source.name, source.driver, source.listed || source.isDefault ? "" : "(not listed)"});
    }
    if (session.json)
        session.printJson({{"dataSources", json}});
    session.printTable(rows);
    if (rows.empty())
        session.say("There are no data sources in " + configuration.file(model::FileKind::dataSources).path);
    return ExitCode::done;
}

ExitCode showDataSource(const Session& session, const Configuration& configuration, const Line& line) {
    const std::string name = line.text("NAME");
    const auto source = configuration.dataSource(name);
    if (!source)
        return session.fail(model::noDataSource(configuration, name));
    if (session.json) {
        Json json = sourceJson(*source);
        json.update(Json{{"file", source->file->path},
                         {"line", source->header.line},
                         {"attributes", keysJson(session, source->section)}});
        session.printJson(json);
        return ExitCode::done;
    }
    printHeader(session, source->name);
    printKeys(session, source->section);
    session.say("; " + (source->driver.empty() ? "no driver" : "driver " + source->driver) + ", " +
                (source->header ? source->header.where() : source->file->path + " (no section)"));
    return ExitCode::done;
}

ExitCode getValue(const Session& session, const Configuration& configuration, const Line& line) {
    const std::string name = line.text("NAME");
    const std::string key = line.text("KEY");
    const auto source = configuration.dataSource(name);
    if (!source)
        return session.fail(model::noDataSource(configuration, name));
    const std::string keys = source->section == nullptr ? "" : model::joined(source->section->keys());
    return printValue(session, source->section, key, "Data source " + name + " has no key " + key,
                      keys.empty() ? "" : "It has " + keys, {{"name", name}});
}

}  // namespace

void addDsnReadCommands(CLI::App& app, Session& session) {
    addVerb(app, session, "dsn list", "List the data sources and their drivers",
            "odbcadmin dsn list\nodbcadmin dsn list -q\nodbcadmin dsn list --json")
        .onRead(Needs::bothFiles, listDataSources);
    addVerb(app, session, "dsn show", "Show all keys of a data source", "odbcadmin dsn show Sales")
        .operand("NAME", "Data source", kOne, Complete::dsn)
        .onRead(Needs::bothFiles, showDataSource);
    addVerb(app, session, "dsn get", "Print one value of a data source",
            "odbcadmin dsn get Sales Database\nodbcadmin dsn get Sales PWD --show-secrets")
        .operand("NAME", "Data source", kOne, Complete::dsn)
        .operand("KEY", "Key", kOne, Complete::keysOfDsn)
        .onRead(Needs::bothFiles, getValue);
}

}  // namespace jx::cli
