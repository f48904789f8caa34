// Composing data sources: which lines of which file.
#include "odbcadmin/model/data_source_change.h"

#include <algorithm>

#include "odbcadmin/model/text.h"
#include "rules/names.h"
#include "rules/valid_names.h"

namespace jx::model {

namespace {

using Kind = Reason::Kind;

Reason whyNameRefused(const std::string& name, const rules::NameRules& rules) {
    const rules::Why why = rules::whyNoName(name, rules);
    return why == nullptr
               ? Reason()
               : Reason{Kind::refused, "No data source can be called \"" + name + "\": " + why, "Choose another name."};
}

Reason alreadyThere(const std::string& name, const std::string& path) {
    return {Kind::exists, "There is a data source " + name + " in " + path,
            "Use odbcadmin dsn set or dsn ensure to change it."};
}

Scope scopeOfChanges(const Configuration& configuration) {
    return configuration.file(FileKind::dataSources).scope;
}

// Why one that is there cannot be changed: what is written goes to the user's file, and would hide all of a section
// that stands in the system's alone.
Reason whyOnlySystems(const Configuration& configuration, const DataSource& source) {
    if (source.file->scope == scopeOfChanges(configuration))
        return {};
    return {Kind::refused,
            "The data source " + source.name + " is the system's: a change in " +
                configuration.file(FileKind::dataSources).path + " would hide all of [" + source.name + "] in " +
                source.file->path,
            "--system changes it for all users; odbcadmin dsn copy " + shellWord(source.name) +
                " --to user gives you one of your own."};
}

// The same for one that is to be added; its own scope may have none yet.
Reason whyAlreadyThere(const Configuration& configuration, const std::string& name, const DataSource& source) {
    if (source.file->scope == scopeOfChanges(configuration))
        return alreadyThere(name, source.file->path);
    return {Kind::exists, "There is a data source " + name + " in " + source.file->path + ", the system's",
            "--system changes that one; --user adds one of your own, which hides it."};
}

bool isThere(const IniView& file, const std::string& name) {
    return file.section(name) != nullptr ||
           (!rules::isDefaultName(name) && file.find(rules::kDataSourceList, name) != nullptr);
}

bool isNamed(const Pairs& pairs, std::string_view key) {
    return std::any_of(pairs.begin(), pairs.end(), [&](const auto& pair) { return rules::sameName(pair.first, key); });
}

Pairs pairsOf(const IniSection* section) {
    Pairs pairs;
    if (section != nullptr)
        for (const IniEntry& entry : section->entries)
            pairs.emplace_back(entry.key, entry.value);
    return pairs;
}

void removeOtherKeys(FileChange& change, const DataSourceWish& wish) {
    if (const IniSection* section = change.before().section(wish.name))
        for (const std::string& key : section->keys())
            if (!rules::sameName(key, rules::kDriver) && !isNamed(wish.attributes, key))
                change.erase(wish.name, key);
}

// The registered driver that a data source is to use, with its library.
Reason findDriver(const Configuration& configuration, const std::string& name, Registered& driver) {
    const std::optional<Registered>& found = configuration.driver(name);
    if (!found)
        return noneRegistered(configuration, kDriverKind, name);
    driver = *found;
    if (!driver.library)
        return {Kind::failed, "Driver " + driver.name + " has no library in " + driver.file->path,
                "Register it: odbcadmin driver ensure NAME --lib PATH"};
    return {};
}

// The default data source's driver stands in the file of drivers.
ChangeResult writeDefaultDriver(const std::string& driver, const ChangeWay& way) {
    FileChange change(rules::kDriverFile, way);
    change.set(rules::kDefault, rules::kDriver, driver);
    return change.finish();
}

enum class Existing { allowed, refused };

ChangeResult write(const Configuration& configuration, const DataSourceWish& wish, OtherKeys others, Existing existing,
                   const ChangeWay& way) {
    Registered driver;
    if (Reason reason = findDriver(configuration, wish.driver, driver))
        return {std::move(reason)};
    ChangeResult result;
    if (rules::isDefaultName(wish.name) && !result.add(writeDefaultDriver(driver.name, way)).isDone())
        return result;
    FileChange change(rules::kDataSourceFile, way);
    // Looked at again now that no other program can add it.
    if (existing == Existing::refused && isThere(change.before(), wish.name))
        change.fail(alreadyThere(wish.name, pathOf(rules::kDataSourceFile, way.scope)));
    composeDataSource(change, {wish.name, driver.name, wish.attributes}, driver.library.text, others);
    return result.add(change.finish());
}

// Of a data source that is in no list only the library is known: the driver is the registered one that has it.
std::string driverNow(const Configuration& configuration, const DataSource& source) {
    if (source.listed)
        return source.driver;
    for (const Registered& driver : configuration.drivers())
        if (driver.library && driver.library.text == source.driver)
            return driver.name;
    return {};
}

}  // namespace

Reason whyNotStored(const Pairs& attributes) {
    for (const auto& [key, value] : attributes) {
        if (const rules::Refusal refused = rules::exactRefusalOf("section", key, value))
            return {Kind::refused,
                    (refused.what == rules::Text::key ? "The key \"" + key + "\"" : "This value of " + key) +
                        " cannot be stored: " + refused.why,
                    "The file could not give it back as it is."};
        if (Reason reason = whyHidden(key, value))
            return reason;
    }
    return {};
}

Reason whyNoDataSourceName(const Configuration& configuration, const std::string& name) {
    return whyNameRefused(name, configuration.dataSource(name) ? rules::kAnyDataSource : rules::kNewDataSource);
}

Reason whyNotAdd(const Configuration& configuration, const DataSourceWish& wish) {
    if (Reason reason = whyNameRefused(wish.name, rules::kNewDataSource))
        return reason;
    if (Reason reason = whyNotStored(wish.attributes))
        return reason;
    if (const auto present = configuration.dataSource(wish.name))
        return whyAlreadyThere(configuration, wish.name, *present);
    Registered driver;
    return findDriver(configuration, wish.driver, driver);
}

Reason whyNotThere(const Configuration& configuration, const std::string& name) {
    if (Reason reason = whyNameRefused(name, rules::kAnyDataSource))
        return reason;
    const std::optional<DataSource> source = configuration.dataSource(name);
    return source ? whyOnlySystems(configuration, *source) : noDataSource(configuration, name);
}

Reason whyNotSet(const Configuration& configuration, const std::string& name, const Pairs& attributes) {
    Reason reason = whyNotStored(attributes);
    return reason ? reason : whyNotThere(configuration, name);
}

void composeRemoval(FileChange& change, const std::string& name) {
    if (!rules::isDefaultName(name) && change.before().find(rules::kDataSourceList, name) != nullptr)
        change.erase(rules::kDataSourceList, name);
    change.eraseSection(name);
}

void composeDataSource(FileChange& change, const DataSourceWish& wish, const std::string& library, OtherKeys others) {
    if (!rules::isDefaultName(wish.name) && !wish.driver.empty())
        change.set(rules::kDataSourceList, wish.name, wish.driver);
    if (others == OtherKeys::remove)
        removeOtherKeys(change, wish);
    if (!isNamed(wish.attributes, rules::kDriver))
        change.set(wish.name, rules::kDriver, library);
    change.set(wish.name, wish.attributes);
}

ChangeResult addDataSource(const Configuration& configuration, const DataSourceWish& wish, const ChangeWay& way) {
    if (Reason reason = whyNotAdd(configuration, wish))
        return {std::move(reason)};
    return write(configuration, wish, OtherKeys::keep, Existing::refused, way);
}

ChangeResult ensureDataSource(const Configuration& configuration, const DataSourceWish& wish, OtherKeys others,
                              const ChangeWay& way) {
    if (Reason reason = whyNoDataSourceName(configuration, wish.name))
        return {std::move(reason)};
    if (Reason reason = whyNotStored(wish.attributes))
        return {std::move(reason)};
    const std::optional<DataSource> present = configuration.dataSource(wish.name);
    if (Reason reason = present ? whyOnlySystems(configuration, *present) : Reason())
        return {std::move(reason)};
    DataSourceWish whole = wish;
    if (whole.driver.empty() && present)
        whole.driver = driverNow(configuration, *present);
    if (whole.driver.empty())
        return {{Kind::incomplete,
                 present ? "The driver of data source " + wish.name +
                               " is not known: no driver is registered with its library"
                         : "There is no data source " + wish.name + " yet",
                 "Say with --driver what it is to use."}};
    return write(configuration, whole, others, Existing::allowed, way);
}

ChangeResult setKeys(const Configuration& configuration, const std::string& name, const Pairs& attributes,
                     const ChangeWay& way) {
    if (Reason reason = whyNotSet(configuration, name, attributes))
        return {std::move(reason)};
    FileChange change(rules::kDataSourceFile, way);
    change.set(name, attributes);
    return change.finish();
}

ChangeResult unsetKeys(const Configuration& configuration, const std::string& name,
                       const std::vector<std::string>& keys, const ChangeWay& way) {
    if (Reason reason = whyNotThere(configuration, name))
        return {std::move(reason)};
    FileChange change(rules::kDataSourceFile, way);
    for (const std::string& key : keys) {
        if (rules::sameName(rules::trimmed(key), rules::kDriver))
            change.fail({Kind::refused, "A data source cannot be without its Driver",
                         "Use odbcadmin dsn ensure NAME --driver to change it."});
        change.erase(name, key);
    }
    return change.finish();
}

ChangeResult copyDataSource(const Configuration& configuration, const std::string& from, const std::string& to, Old old,
                            const ChangeWay& way) {
    if (rules::isDefaultName(from) || rules::isDefaultName(to))
        return {{Kind::refused, "The default data source cannot be renamed, copied or made so",
                 "Use odbcadmin dsn default NAME."}};
    if (Reason reason = whyNameRefused(to, rules::kNewDataSource))
        return {std::move(reason)};
    const std::optional<DataSource> source = configuration.dataSource(from);
    if (!source)
        return {noDataSource(configuration, from)};
    const bool onlyCapitals = old == Old::remove && rules::sameName(from, to);
    if (const auto present = configuration.dataSource(to); present && !onlyCapitals)
        return {whyAlreadyThere(configuration, to, *present)};
    const Reason onlySystems = whyOnlySystems(configuration, *source);
    if (onlySystems && old == Old::remove)
        return {onlySystems};
    FileChange change(rules::kDataSourceFile, way);
    if (source->name == to)
        return change.finish();
    const Pairs keys = pairsOf(onlySystems ? source->section : change.before().section(source->name));
    if (old == Old::remove)
        composeRemoval(change, source->name);
    if (source->isListed())
        change.set(rules::kDataSourceList, to, source->driver);
    change.set(to, keys);
    return change.finish();
}

ChangeResult removeDataSources(const std::vector<std::string>& names, const ChangeWay& way) {
    ChangeResult result;
    if (std::any_of(names.begin(), names.end(), rules::isDefaultName)) {
        FileChange drivers(rules::kDriverFile, way);
        drivers.eraseSection(rules::kDefault);
        if (!result.add(drivers.finish()).isDone())
            return result;
    }
    FileChange change(rules::kDataSourceFile, way);
    for (const std::string& name : names)
        composeRemoval(change, name);
    return result.add(change.finish());
}

ChangeResult makeDefault(const Configuration& configuration, const std::string& name, const ChangeWay& way) {
    const std::optional<DataSource> source = configuration.dataSource(name);
    if (!source)
        return {noDataSource(configuration, name)};
    if (source->isDefault)
        return {{Kind::notFound, "The default data source cannot be a copy of itself", "Name another one."}};
    return write(configuration, {rules::kDefault, source->driver, pairsOf(source->section)}, OtherKeys::remove,
                 Existing::allowed, way);
}

std::string twinOfDefault(const Configuration& configuration) {
    const std::optional<DataSource> own = configuration.dataSource(rules::kDefault);
    if (!own || own->section == nullptr)
        return {};
    const auto isSame = [](const IniEntry& a, const IniEntry& b) {
        return rules::sameName(a.key, b.key) && a.value == b.value;
    };
    const auto isTwin = [&](const DataSource& source) {
        return !source.isDefault && source.section != nullptr && rules::sameName(source.driver, own->driver) &&
               std::equal(source.section->entries.begin(), source.section->entries.end(), own->section->entries.begin(),
                          own->section->entries.end(), isSame);
    };
    const std::vector<DataSource> sources = configuration.dataSources();
    const auto twin = std::find_if(sources.begin(), sources.end(), isTwin);
    return twin == sources.end() ? std::string() : twin->name;
}

}  // namespace jx::model
