// dsn list, show and get.
#include <odbcinst.h>

#include <nlohmann/json.hpp>

#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/configuration.h"
#include "odbcadmin/cli/file_change.h"
#include "odbcadmin/cli/near_matches.h"
#include "odbcadmin/cli/text.h"
#include "rules/secrets.h"

namespace jx::admin {

namespace {

std::string shownValue(const Session& session, std::string_view key, std::string_view value) {
    return session.showSecrets ? std::string(value) : rules::masked(key, value);
}

ExitCode listAsJson(const Session& session, const std::vector<DataSource>& sources) {
    Json rows = Json::array();
    for (const DataSource& source : sources)
        rows.push_back({{"name", source.name},
                        {"driver", source.driver},
                        {"listed", source.isListed},
                        {"default", source.isDefault}});
    session.printJson({{"dataSources", rows}});
    return ExitCode::done;
}

ExitCode listDataSources(const Session& session) {
    ExitCode code = ExitCode::done;
    const std::optional<Configuration> configuration = Configuration::read(session, code);
    if (!configuration)
        return code;
    const std::vector<DataSource> sources = configuration->dataSources();
    if (session.json)
        return listAsJson(session, sources);
    std::vector<std::vector<std::string>> rows;
    for (const DataSource& source : sources) {
        const bool isLoose = !source.isListed && !source.isDefault;
        rows.push_back(session.quiet
                           ? std::vector{source.name}
                           : std::vector{source.name, source.driver, std::string(isLoose ? "(not listed)" : "")});
    }
    session.printTable(rows);
    if (rows.empty())
        session.say("There are no data sources in " + pathOf(INS_ODBCINI_FILENAME));
    return ExitCode::done;
}

Json keysAsJson(const Session& session, const IniSection* section) {
    Json keys = Json::object();
    if (section != nullptr)
        for (const IniEntry& entry : section->entries)
            keys[std::string(entry.key)] = shownValue(session, entry.key, entry.value);
    return keys;
}

void showKeys(const Session& session, const DataSource& source, const IniSection* section) {
    session.print("[" + printable(source.name) + "]");
    if (section != nullptr)
        for (const IniEntry& entry : section->entries)
            session.print(printable(entry.key) + "=" + printable(shownValue(session, entry.key, entry.value)));
    const std::string place = section == nullptr ? " (no section)" : ":" + std::to_string(section->line);
    session.say("; driver " + source.driver + ", " + pathOf(INS_ODBCINI_FILENAME) + place);
}

ExitCode showDataSource(const Session& session, const std::string& name) {
    ExitCode code = ExitCode::done;
    const std::optional<Configuration> configuration = Configuration::read(session, code);
    if (!configuration)
        return code;
    const std::optional<DataSource> source = configuration->dataSource(name);
    if (!source)
        return noDataSource(session, *configuration, name);
    const IniSection* section = configuration->sourcesFile().section(name);
    if (!session.json) {
        showKeys(session, *source, section);
        return ExitCode::done;
    }
    session.printJson({{"name", source->name},
                       {"driver", source->driver},
                       {"listed", source->isListed},
                       {"default", source->isDefault},
                       {"file", pathOf(INS_ODBCINI_FILENAME)},
                       {"line", section == nullptr ? 0 : section->line},
                       {"attributes", keysAsJson(session, section)}});
    return ExitCode::done;
}

ExitCode noKey(const Session& session, const IniSection* section, const std::string& name, const std::string& key) {
    std::vector<std::string> keys;
    if (section != nullptr)
        for (const IniEntry& entry : section->entries)
            keys.emplace_back(entry.key);
    return session.fail(ExitCode::notFound, "Data source " + name + " has no key " + key,
                        adviceFor(key, keys, keys.empty() ? "" : "It has " + joined(keys)));
}

ExitCode getValue(const Session& session, const std::string& name, const std::string& key) {
    ExitCode code = ExitCode::done;
    const std::optional<Configuration> configuration = Configuration::read(session, code);
    if (!configuration)
        return code;
    if (!configuration->dataSource(name))
        return noDataSource(session, *configuration, name);
    const IniSection* section = configuration->sourcesFile().section(name);
    const IniEntry* entry = section == nullptr ? nullptr : section->find(key);
    if (entry == nullptr)
        return noKey(session, section, name, key);
    const std::string shown = shownValue(session, entry->key, entry->value);
    if (session.json)
        session.printJson({{"name", name}, {"key", entry->key}, {"value", shown}, {"line", entry->line}});
    else
        session.print(shown);
    if (shown != entry->value)
        session.warn("the value is hidden; --show-secrets shows it");
    return ExitCode::done;
}

}  // namespace

void addDsnReadCommands(CLI::App& app, Session& session) {
    CLI::App& dsn = noun(app, "dsn");
    onRun(addVerb(dsn, "list", "List the data sources and their drivers",
                  "odbcadmin dsn list\nodbcadmin dsn list -q\nodbcadmin dsn list --json"),
          session, listDataSources);

    CLI::App& show = addVerb(dsn, "show", "Show all keys of a data source", "odbcadmin dsn show Sales");
    const CLI::Option* shown = addOperands(show, "NAME", "Data source", {1, 1, Complete::dsn});
    onRun(show, session, [shown](Session& run) { return showDataSource(run, operand(shown, 0)); });

    CLI::App& get = addVerb(dsn, "get", "Print one value of a data source",
                            "odbcadmin dsn get Sales Database\nodbcadmin dsn get Sales PWD --show-secrets");
    const CLI::Option* name = addOperands(get, "NAME", "Data source", {1, 1, Complete::dsn});
    const CLI::Option* key = addOperands(get, "KEY", "Key", {1, 1, Complete::keysOfDsn});
    onRun(get, session, [=](Session& run) { return getValue(run, operand(name, 0), operand(key, 0)); });
}

}  // namespace jx::admin
