// Data sources written without a setup library, as the installer's own writer leaves them.
#include "odbcadmin/cli/data_source_change.h"

#include <odbcinst.h>

#include <algorithm>

#include "odbcadmin/cli/text.h"
#include "rules/names.h"
#include "rules/sections.h"

namespace jx::admin {

namespace {

bool isNamed(const Pairs& pairs, std::string_view key) {
    return std::any_of(pairs.begin(), pairs.end(), [&](const auto& pair) { return rules::sameName(pair.first, key); });
}

bool removeOtherKeys(FileChange& change, const DataSourceWish& wish) {
    const IniSection* section = change.before().section(wish.name);
    if (section == nullptr)
        return true;
    for (const IniEntry& entry : section->entries)
        if (!rules::sameName(entry.key, INS_ODBCINI_DRIVER) && !isNamed(wish.attributes, entry.key) &&
            !change.erase(wish.name, std::string(entry.key)))
            return false;
    return true;
}

// The default data source's driver stands in .odbcinst.ini, and goes there first: a default that has a driver and no
// section can be repaired, the other way round it would not be seen.
ExitCode writeDefaultDriver(const Session& session, const std::string& driver, Outcome& outcome) {
    FileChange change(session, INS_ODBCINST_FILENAME);
    if (!change.isOpen() || !change.set(INS_ODBCINI_DEFAULT, INS_ODBCINI_DRIVER, driver))
        return change.trouble();
    return outcome.finish(change);
}

ExitCode removeDefaultDriver(const Session& session, Outcome& outcome) {
    FileChange change(session, INS_ODBCINST_FILENAME);
    if (!change.isOpen() || !change.eraseSection(INS_ODBCINI_DEFAULT))
        return change.trouble();
    return outcome.finish(change);
}

bool isThere(const IniView& file, const std::string& name) {
    return file.section(name) != nullptr || (!rules::isDefaultName(name) && file.find(INS_ODBCINI_DS, name) != nullptr);
}

}  // namespace

ExitCode dataSourceExists(const Session& session, const std::string& name) {
    return session.fail(ExitCode::exists, "There is a data source " + name + " in " + pathOf(INS_ODBCINI_FILENAME),
                        "Use odbcadmin dsn set or dsn ensure to change it.");
}

ExitCode checkDataSourceName(const Session& session, const std::string& name) {
    if (rules::isReservedSection(name))
        return session.fail(ExitCode::invalid, "No data source can be called " + name + ": the section has another use",
                            "Choose another name.");
    std::string why = whyNoSection(name);
    if (why.empty())
        why = whyNoKey(name);
    if (why.empty())
        return ExitCode::done;
    return session.fail(ExitCode::invalid, "No data source can be called \"" + name + "\": " + why,
                        "Choose another name.");
}

bool composeDataSource(FileChange& change, const DataSourceWish& wish, const std::string& library, OtherKeys others) {
    if (!rules::isDefaultName(wish.name) && !change.set(INS_ODBCINI_DS, wish.name, wish.driver))
        return false;
    if (others == OtherKeys::remove && !removeOtherKeys(change, wish))
        return false;
    if (!isNamed(wish.attributes, INS_ODBCINI_DRIVER) && !change.set(wish.name, INS_ODBCINI_DRIVER, library))
        return false;
    return std::all_of(wish.attributes.begin(), wish.attributes.end(),
                       [&](const auto& pair) { return change.set(wish.name, pair.first, pair.second); });
}

bool composeRemoval(FileChange& change, const std::string& name) {
    if (!rules::isDefaultName(name) && change.before().find(INS_ODBCINI_DS, name) != nullptr &&
        !change.erase(INS_ODBCINI_DS, name))
        return false;
    return change.eraseSection(name);
}

ExitCode writeDataSource(const Session& session, const Configuration& configuration, const DataSourceWish& wish,
                         OtherKeys others, Existing existing, Outcome& outcome) {
    const std::optional<Registered> driver = configuration.driver(wish.driver);
    if (!driver)
        return noDriver(session, configuration, wish.driver);
    if (driver->library.empty())
        return session.fail(ExitCode::failed,
                            "Driver " + driver->name + " has no library in " + pathOf(INS_ODBCINST_FILENAME),
                            "Register it: odbcadmin driver ensure NAME --lib PATH");
    if (rules::isDefaultName(wish.name))
        if (const ExitCode code = writeDefaultDriver(session, driver->name, outcome); code != ExitCode::done)
            return code;
    FileChange change(session, INS_ODBCINI_FILENAME);
    if (!change.isOpen())
        return change.trouble();
    // Looked at again now that no other program can add it.
    if (existing == Existing::refused && isThere(change.before(), wish.name))
        return dataSourceExists(session, wish.name);
    if (!composeDataSource(change, {wish.name, driver->name, wish.attributes}, driver->library, others))
        return change.trouble();
    return outcome.finish(change);
}

ExitCode removeDataSources(const Session& session, const std::vector<std::string>& names, Outcome& outcome) {
    if (std::any_of(names.begin(), names.end(), rules::isDefaultName))
        if (const ExitCode code = removeDefaultDriver(session, outcome); code != ExitCode::done)
            return code;
    FileChange change(session, INS_ODBCINI_FILENAME);
    if (!change.isOpen())
        return change.trouble();
    for (const std::string& name : names)
        if (!composeRemoval(change, name))
            return change.trouble();
    return outcome.finish(change);
}

}  // namespace jx::admin
