// dsn list, show and get.
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/sections.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

namespace {

using model::Configuration;
using model::DataSource;

Json sourceJson(const DataSource& source) {
    return {
        {"name", source.name}, {"driver", source.driver}, {"listed", source.isListed()}, {"default", source.isDefault}};
}

ExitCode listDataSources(const Session& session, const Configuration& configuration) {
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

ExitCode showDataSource(const Session& session, const Configuration& configuration, const std::string& name) {
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
    session.say("; driver " + source->driver + ", " +
                (source->header ? source->header.where() : source->file->path + " (no section)"));
    return ExitCode::done;
}

ExitCode getValue(const Session& session, const Configuration& configuration, const std::string& name,
                  const std::string& key) {
    const auto source = configuration.dataSource(name);
    if (!source)
        return session.fail(model::noDataSource(configuration, name));
    const std::string keys = source->section == nullptr ? "" : model::joined(source->section->keys());
    return printValue(session, source->section, key, "Data source " + name + " has no key " + key,
                      keys.empty() ? "" : "It has " + keys, {{"name", name}});
}

}  // namespace

void addDsnReadCommands(CLI::App& app, Session& session) {
    CLI::App& dsn = noun(app, "dsn");
    onRead(addVerb(dsn, "list", "List the data sources and their drivers",
                   "odbcadmin dsn list\nodbcadmin dsn list -q\nodbcadmin dsn list --json"),
           session, Needs::bothFiles, listDataSources);

    CLI::App& show = addVerb(dsn, "show", "Show all keys of a data source", "odbcadmin dsn show Sales");
    const CLI::Option* shown = addOperands(show, "NAME", "Data source", {1, 1, Complete::dsn});
    onRead(show, session, Needs::bothFiles, [shown](Session& run, const Configuration& configuration) {
        return showDataSource(run, configuration, operand(shown, 0));
    });

    CLI::App& get = addVerb(dsn, "get", "Print one value of a data source",
                            "odbcadmin dsn get Sales Database\nodbcadmin dsn get Sales PWD --show-secrets");
    const CLI::Option* name = addOperands(get, "NAME", "Data source", {1, 1, Complete::dsn});
    const CLI::Option* key = addOperands(get, "KEY", "Key", {1, 1, Complete::keysOfDsn});
    onRead(get, session, Needs::bothFiles, [=](Session& run, const Configuration& configuration) {
        return getValue(run, configuration, operand(name, 0), operand(key, 0));
    });
}

}  // namespace jx::cli
