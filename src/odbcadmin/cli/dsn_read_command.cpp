// dsn list, show and get.
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/scope_output.h"
#include "odbcadmin/cli/sections.h"
#include "odbcadmin/cli/verb.h"
#include "odbcadmin/model/text.h"

namespace jx::cli {

namespace {

using model::Configuration;
using model::DataSource;

Json sourceJson(const DataSource& source, bool isShadowed) {
    Json json{
        {"name", source.name}, {"driver", source.driver}, {"listed", source.isListed()}, {"default", source.isDefault}};
    addScope(json, *source.file, isShadowed);
    return json;
}

// The rows of a list; those that are shadowed come last.
struct SourceRows {
    std::vector<DataSource> answering, shadowed;

    bool nameScopes() const { return holdsSystems(answering) || holdsSystems(shadowed); }
};

std::vector<std::string> rowOf(const DataSource& source, bool namesScope, bool isShadowed) {
    std::vector<std::string> row{source.name, source.driver};
    if (namesScope)
        row.emplace_back(scopeWord(source.file->scope));
    row.emplace_back(isShadowed ? "(shadowed)" : source.listed || source.isDefault ? "" : "(not listed)");
    return row;
}

ExitCode printJson(const Session& session, const SourceRows& rows) {
    Json json = Json::array();
    for (const DataSource& source : rows.answering)
        json.push_back(sourceJson(source, /*isShadowed=*/false));
    for (const DataSource& source : rows.shadowed)
        json.push_back(sourceJson(source, /*isShadowed=*/true));
    session.printJson({{"dataSources", json}});
    return ExitCode::done;
}

ExitCode listDataSources(const Session& session, const Configuration& configuration, const Line& /*line*/) {
    const SourceRows rows{configuration.dataSources(), configuration.hiddenDataSources()};
    if (session.json)
        return printJson(session, rows);
    std::vector<std::vector<std::string>> table;
    const bool namesScopes = rows.nameScopes();
    for (const DataSource& source : rows.answering)
        table.push_back(session.quiet ? std::vector<std::string>{source.name}
                                      : rowOf(source, namesScopes, /*isShadowed=*/false));
    if (!session.quiet)
        for (const DataSource& source : rows.shadowed)
            table.push_back(rowOf(source, namesScopes, /*isShadowed=*/true));
    session.printTable(table);
    if (table.empty())
        session.say("There are no data sources in " + lookedAt(configuration, model::FileKind::dataSources));
    return ExitCode::done;
}

ExitCode showDataSource(const Session& session, const Configuration& configuration, const Line& line) {
    const std::string name = line.text("NAME");
    const auto source = configuration.dataSource(name);
    if (!source)
        return session.fail(model::noDataSource(configuration, name));
    if (session.json) {
        Json json = sourceJson(*source, /*isShadowed=*/false);
        json.update(Json{{"file", source->file->path},
                         {"line", source->header.line},
                         {"hides", placeJson(source->hides)},
                         {"attributes", keysJson(session, source->section)}});
        session.printJson(json);
        return ExitCode::done;
    }
    printHeader(session, source->name);
    printKeys(session, source->section);
    session.say("; " + (source->driver.empty() ? "no driver" : "driver " + source->driver) + ", " +
                (source->header ? source->header.where() : source->file->path + " (no section)") + hidesText(*source));
    return ExitCode::done;
}

// A key that the user's section lacks and the hidden one has is no longer found: the section answers whole.
std::string adviceOnMissingKey(const DataSource& source, const std::string& key) {
    const model::IniSection* hidden = source.hides ? source.hides.file->view.section(source.name) : nullptr;
    if (hidden != nullptr && hidden->find(key) != nullptr)
        return sectionText(source.hides) + " has it, which this one hides whole";
    const std::string keys = source.section == nullptr ? "" : model::joined(source.section->keys());
    return keys.empty() ? "" : "It has " + keys;
}

ExitCode getValue(const Session& session, const Configuration& configuration, const Line& line) {
    const std::string name = line.text("NAME");
    const std::string key = line.text("KEY");
    const auto source = configuration.dataSource(name);
    if (!source)
        return session.fail(model::noDataSource(configuration, name));
    return printValue(session, source->section, key, "Data source " + name + " has no key " + key,
                      adviceOnMissingKey(*source, key),
                      {{"name", name},
                       {"scope", scopeWord(source->file->scope)},
                       {"file", source->file->path},
                       {"hides", placeJson(source->hides)}});
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
