// dsn rename, copy and default.
#include <odbcinst.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "odbcadmin/cli/command_line.h"
#include "odbcadmin/cli/commands.h"
#include "odbcadmin/cli/data_source_change.h"
#include "odbcadmin/cli/text.h"
#include "rules/names.h"
#include "rules/sections.h"

namespace jx::admin {

namespace {

enum class Old { keep, remove };

bool copySection(FileChange& change, const std::string& from, const std::string& to) {
    const IniSection* section = change.before().section(from);
    if (section == nullptr)
        return true;
    return std::all_of(section->entries.begin(), section->entries.end(), [&](const IniEntry& entry) {
        return change.set(to, std::string(entry.key), std::string(entry.value));
    });
}

bool composeCopy(FileChange& change, const DataSource& source, const std::string& to, Old old) {
    if (old == Old::remove && !composeRemoval(change, source.name))
        return false;
    if (source.isListed && !change.set(INS_ODBCINI_DS, to, source.driver))
        return false;
    return copySection(change, source.name, to);
}

// The default data source is made and removed with "dsn default": its driver stands in the other file.
ExitCode checkNames(const Session& session, const std::string& from, const std::string& to) {
    if (rules::isDefaultName(from) || rules::isDefaultName(to))
        return session.fail(ExitCode::invalid, "The default data source cannot be renamed, copied or made so",
                            "Use odbcadmin dsn default NAME.");
    return checkDataSourceName(session, to);
}

ExitCode copyDataSource(const Session& session, const std::string& from, const std::string& to, Old old) {
    ExitCode code = checkNames(session, from, to);
    if (code != ExitCode::done)
        return code;
    const std::optional<Configuration> configuration = Configuration::read(session, code);
    if (!configuration)
        return code;
    const std::optional<DataSource> source = configuration->dataSource(from);
    if (!source)
        return noDataSource(session, *configuration, from);
    // A name may get other capitals.
    const bool sameOne = old == Old::remove && rules::sameName(from, to);
    if (configuration->dataSource(to) && !sameOne)
        return dataSourceExists(session, to);
    Outcome outcome;
    FileChange change(session, INS_ODBCINI_FILENAME);
    if (!change.isOpen() || (source->name != to && !composeCopy(change, *source, to, old)))
        return change.trouble();
    code = outcome.finish(change);
    if (code != ExitCode::done)
        return code;
    return outcome.tell(
        session, (old == Old::remove ? "Renamed data source " : "Copied data source ") + source->name + " to " + to);
}

// The data source with the same keys as the default one; empty when there is none.
std::string twinOfDefault(const Configuration& configuration) {
    const IniSection* own = configuration.sourcesFile().section(INS_ODBCINI_DEFAULT);
    const auto isTwin = [&](const DataSource& source) {
        const IniSection* section = configuration.sourcesFile().section(source.name);
        return !source.isDefault && section != nullptr && own != nullptr &&
               rules::sameName(source.driver, configuration.defaultDriver()) &&
               std::equal(section->entries.begin(), section->entries.end(), own->entries.begin(), own->entries.end(),
                          [](const IniEntry& a, const IniEntry& b) {
                              return rules::sameName(a.key, b.key) && a.value == b.value;
                          });
    };
    const std::vector<DataSource> sources = configuration.dataSources();
    const auto twin = std::find_if(sources.begin(), sources.end(), isTwin);
    return twin == sources.end() ? std::string() : twin->name;
}

ExitCode showDefault(const Session& session) {
    ExitCode code = ExitCode::done;
    const std::optional<Configuration> configuration = Configuration::read(session, code);
    if (!configuration)
        return code;
    const std::string driver = configuration->defaultDriver();
    if (driver.empty())
        return session.fail(ExitCode::notFound, "There is no default data source",
                            "odbcadmin dsn default NAME makes one of a data source.");
    const std::string twin = twinOfDefault(*configuration);
    if (session.json)
        session.printJson({{"driver", driver}, {"sameAs", twin.empty() ? Json() : Json(twin)}});
    else
        session.printTable({{INS_ODBCINI_DEFAULT, driver, twin.empty() ? "" : "same as " + twin}});
    return ExitCode::done;
}

Pairs keysOf(const IniSection* section) {
    Pairs pairs;
    if (section != nullptr)
        for (const IniEntry& entry : section->entries)
            pairs.emplace_back(entry.key, entry.value);
    return pairs;
}

ExitCode makeDefault(const Session& session, const std::string& name) {
    ExitCode code = ExitCode::done;
    const std::optional<Configuration> configuration = Configuration::read(session, code);
    if (!configuration)
        return code;
    const std::optional<DataSource> source = configuration->dataSource(name);
    if (!source || source->isDefault)
        return noDataSource(session, *configuration, name);
    const DataSourceWish wish{INS_ODBCINI_DEFAULT, source->driver, keysOf(configuration->sourcesFile().section(name))};
    Outcome outcome;
    code = writeDataSource(session, *configuration, wish, OtherKeys::remove, Existing::allowed, outcome);
    return code != ExitCode::done ? code : outcome.tell(session, "The default data source is now as " + source->name);
}

ExitCode removeDefault(const Session& session) {
    Outcome outcome;
    const ExitCode code = removeDataSources(session, {INS_ODBCINI_DEFAULT}, outcome);
    return code != ExitCode::done ? code : outcome.tell(session, "Removed the default data source");
}

void addTwoNames(CLI::App& dsn, Session& session, Old old) {
    CLI::App& verb = old == Old::remove ? addVerb(dsn, "rename", "Give a data source another name",
                                                  "odbcadmin dsn rename Sales \"Sales 2025\"")
                                        : addVerb(dsn, "copy", "Make a second data source with the same keys",
                                                  "odbcadmin dsn copy Sales SalesTest");
    const CLI::Option* from = addOperands(verb, "OLD", "Data source", {1, 1, Complete::dsn});
    const CLI::Option* to = addOperands(verb, "NEW", "New name", {1, 1});
    onRun(verb, session, [=](Session& run) { return copyDataSource(run, operand(from, 0), operand(to, 0), old); });
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
    onRun(verb, session, [=](Session& run) {
        if (isGiven(unset))
            return removeDefault(run);
        return isGiven(name) ? makeDefault(run, operand(name, 0)) : showDefault(run);
    });
}

}  // namespace jx::admin
