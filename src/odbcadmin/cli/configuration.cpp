// Reading data sources, drivers and translators out of the two files.
#include "odbcadmin/cli/configuration.h"

#include <odbcinst.h>

#include <algorithm>
#include <array>
#include <unordered_set>

#include "odbcadmin/cli/file_change.h"
#include "odbcadmin/cli/near_matches.h"
#include "odbcadmin/cli/text.h"
#include "rules/names.h"
#include "rules/sections.h"

namespace jx::admin {

namespace {

// One registered library: its section has the path under key.
Registered registered(const IniView& file, std::string_view name, const char* key, bool isListed) {
    const IniSection* section = file.section(name);
    if (section == nullptr)
        return {std::string(name), {}, {}, isListed};
    return {std::string(name), section->value(key), section->value(kSetupKey), isListed};
}

// What the list names, and every further section that has the key.
std::vector<Registered> allRegistered(const IniView& file, const char* list, const char* key) {
    std::vector<Registered> found;
    std::unordered_set<std::string> names;
    if (const IniSection* section = file.section(list))
        for (const IniEntry& entry : section->entries) {
            found.push_back(registered(file, entry.key, key, /*isListed=*/true));
            names.insert(rules::foldedName(entry.key));
        }
    for (const IniSection& section : file.sections())
        if (section.find(key) != nullptr && !rules::isReservedSection(section.name) &&
            !rules::isDefaultName(section.name) && !names.contains(rules::foldedName(section.name)))
            found.push_back(registered(file, section.name, key, /*isListed=*/false));
    return found;
}

std::optional<Registered> oneRegistered(const IniView& file, const char* list, const char* key, std::string_view name) {
    const IniEntry* entry = file.find(list, name);
    if (entry != nullptr && entry->key.size() == name.size())
        return registered(file, entry->key, key, /*isListed=*/true);
    const IniSection* section = file.section(name);
    if (section == nullptr || section->name.size() != name.size() || section->find(key) == nullptr ||
        rules::isReservedSection(name) || rules::isDefaultName(name))
        return std::nullopt;
    return registered(file, section->name, key, /*isListed=*/false);
}

template <class Rows>
std::vector<std::string> namesOf(const Rows& rows) {
    std::vector<std::string> names(rows.size());
    std::transform(rows.begin(), rows.end(), names.begin(), [](const auto& row) { return row.name; });
    return names;
}

}  // namespace

std::optional<Configuration> Configuration::read(const Session& session, ExitCode& code) {
    std::optional<IniView> sources = readFile(session, INS_ODBCINI_FILENAME, code);
    if (!sources)
        return std::nullopt;
    std::optional<IniView> drivers = readFile(session, INS_ODBCINST_FILENAME, code);
    if (!drivers)
        return std::nullopt;
    return Configuration(std::move(*sources), std::move(*drivers));
}

std::vector<DataSource> Configuration::dataSources() const {
    std::vector<DataSource> found;
    std::unordered_set<std::string> names;
    if (const IniSection* list = sources_.section(INS_ODBCINI_DS))
        for (const IniEntry& entry : list->entries) {
            found.push_back({std::string(entry.key), std::string(entry.value)});
            names.insert(rules::foldedName(entry.key));
        }
    for (const IniSection& section : sources_.sections()) {
        if (names.contains(rules::foldedName(section.name)) || rules::isReservedSection(section.name) ||
            rules::isDefaultName(section.name))
            continue;
        if (const IniEntry* driver = section.find(INS_ODBCINI_DRIVER))
            found.push_back({std::string(section.name), std::string(driver->value), /*isListed=*/false});
    }
    if (!defaultDriver().empty())
        found.push_back({INS_ODBCINI_DEFAULT, defaultDriver(), /*isListed=*/false, /*isDefault=*/true});
    return found;
}

std::optional<DataSource> Configuration::dataSource(std::string_view name) const {
    if (rules::isDefaultName(name)) {
        if (defaultDriver().empty() && sources_.section(name) == nullptr)
            return std::nullopt;
        return DataSource{INS_ODBCINI_DEFAULT, defaultDriver(), /*isListed=*/false, /*isDefault=*/true};
    }
    const IniEntry* entry = sources_.find(INS_ODBCINI_DS, name);
    if (entry != nullptr && entry->key.size() == name.size())
        return DataSource{std::string(entry->key), std::string(entry->value)};
    const IniSection* section = sources_.section(name);
    if (section == nullptr || section->name.size() != name.size() || rules::isReservedSection(name))
        return std::nullopt;
    return DataSource{std::string(section->name), section->value(INS_ODBCINI_DRIVER), /*isListed=*/false};
}

std::vector<std::string> Configuration::dataSourceNames() const {
    return namesOf(dataSources());
}

std::vector<std::string> Configuration::dataSourcesOf(std::string_view driver) const {
    std::vector<std::string> names;
    for (const DataSource& source : dataSources())
        if (rules::sameName(source.driver, driver))
            names.push_back(source.name);
    return names;
}

std::vector<Registered> Configuration::drivers() const {
    return allRegistered(drivers_, INS_ODBCINI_DRIVERS, INS_ODBCINI_DRIVER);
}

std::optional<Registered> Configuration::driver(std::string_view name) const {
    return oneRegistered(drivers_, INS_ODBCINI_DRIVERS, INS_ODBCINI_DRIVER, name);
}

std::vector<std::string> Configuration::driverNames() const {
    return namesOf(drivers());
}

std::vector<Registered> Configuration::translators() const {
    return allRegistered(drivers_, INS_ODBCINST_TRANSLATORS, kTranslatorKey);
}

std::optional<Registered> Configuration::translator(std::string_view name) const {
    return oneRegistered(drivers_, INS_ODBCINST_TRANSLATORS, kTranslatorKey, name);
}

std::string Configuration::defaultDriver() const {
    return drivers_.value(INS_ODBCINI_DEFAULT, INS_ODBCINI_DRIVER);
}

ExitCode noDataSource(const Session& session, const Configuration& configuration, std::string_view name) {
    const std::string fact = "There is no data source " + std::string(name) + " in " + pathOf(INS_ODBCINI_FILENAME);
    return session.fail(ExitCode::notFound, fact,
                        adviceFor(name, configuration.dataSourceNames(), "odbcadmin dsn list shows those there are."));
}

ExitCode noDriver(const Session& session, const Configuration& configuration, std::string_view name) {
    const std::string fact = "There is no driver " + std::string(name) + " in " + pathOf(INS_ODBCINST_FILENAME);
    return session.fail(ExitCode::notFound, fact,
                        adviceFor(name, configuration.driverNames(), "Register it first: odbcadmin driver add"));
}

ExitCode takePairs(const Session& session, const std::vector<std::string>& texts, Pairs& pairs,
                   const std::vector<std::string_view>& reserved) {
    std::unordered_set<std::string> seen;
    for (const std::string& text : texts) {
        const auto pair = splitPair(text);
        if (!pair)
            return session.fail(ExitCode::wrongUse, "\"" + text + "\" is not of the form KEY=VALUE",
                                "Put the whole of it in quotes when the value holds blanks.");
        const auto isKey = [&](std::string_view key) { return rules::sameName(pair->first, key); };
        if (std::any_of(reserved.begin(), reserved.end(), isKey))
            return session.fail(ExitCode::wrongUse, pair->first + " cannot be given as KEY=VALUE here",
                                "It comes from the name and from the options; see --help.");
        if (!seen.insert(rules::foldedName(pair->first)).second)
            return session.fail(ExitCode::wrongUse, pair->first + " is given twice", "Give each key once.");
        pairs.push_back(*pair);
    }
    return ExitCode::done;
}

}  // namespace jx::admin
