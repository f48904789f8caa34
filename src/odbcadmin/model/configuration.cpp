// Finding data sources, drivers and translators in the files.
#include "odbcadmin/model/configuration.h"

#include <algorithm>
#include <unordered_set>

#include "odbcadmin/model/near_matches.h"
#include "odbcadmin/model/text.h"
#include "rules/names.h"

namespace jx::model {

namespace {

// Whether the section is something's own, no list and no setting.
bool isOwn(std::string_view name) {
    return !rules::isReservedSection(name) && !rules::isDefaultName(name);
}

const std::vector<IniEntry>& entriesOf(const ConfigFile& file, const char* list) {
    static const std::vector<IniEntry> kNone;
    const IniSection* section = file.view.section(list);
    return section == nullptr ? kNone : section->entries;
}

// A look-up trims what it looks for, so blanks around the name show in the length only.
const IniSection* exactSection(const ConfigFile& file, std::string_view name) {
    const IniSection* section = file.view.section(name);
    return section != nullptr && section->name.size() == name.size() ? section : nullptr;
}

const IniEntry* exactEntry(const ConfigFile& file, const char* list, std::string_view name) {
    const IniEntry* entry = file.view.find(list, name);
    return entry != nullptr && entry->key.size() == name.size() ? entry : nullptr;
}

Located located(const ConfigFile& file, const IniEntry* entry) {
    return entry == nullptr ? Located() : Located{std::string(entry->value), &file, entry->line};
}

Located headerOf(const ConfigFile& file, const IniSection* section) {
    return section == nullptr ? Located() : Located{std::string(section->name), &file, section->line};
}

// A library without a path is none.
Located libraryIn(const ConfigFile& file, const IniSection* section, const char* key) {
    const IniEntry* entry = section == nullptr ? nullptr : section->find(key);
    return entry == nullptr || entry->value.empty() ? Located() : located(file, entry);
}

DataSource dataSourceIn(const ConfigFile& file, std::string_view name, const IniEntry* listed) {
    const IniSection* section = file.view.section(name);
    const std::string driver = listed != nullptr ? std::string(listed->value) : section->value(rules::kDriver);
    return {std::string(name),
            driver,
            /*isDefault=*/false,
            &file,
            section,
            located(file, listed),
            headerOf(file, section),
            libraryIn(file, section, rules::kDriver)};
}

auto registeredIn(const RegisteredKind& kind) {
    return [&kind](const ConfigFile& file, std::string_view name, const IniEntry* listed) {
        const IniSection* section = file.view.section(name);
        return Registered{std::string(name),
                          &file,
                          section,
                          located(file, listed),
                          headerOf(file, section),
                          libraryIn(file, section, kind.key),
                          libraryIn(file, section, rules::kSetup)};
    };
}

// What the list of each file names, then its further sections that have the key; make(file, name, line in the list or
// null).
template <class Row, class Make>
std::vector<Row> collect(const std::vector<const ConfigFile*>& files, const char* list, const char* key, Make make) {
    std::vector<Row> found;
    std::unordered_set<std::string> met;
    const auto isNew = [&](std::string_view name) { return met.insert(rules::foldedName(name)).second; };
    for (const ConfigFile* file : files) {
        for (const IniEntry& entry : entriesOf(*file, list))
            if (isNew(entry.key))
                found.push_back(make(*file, entry.key, &entry));
        for (const IniSection& section : file->view.sections())
            if (isOwn(section.name) && section.find(key) != nullptr && isNew(section.name))
                found.push_back(make(*file, section.name, nullptr));
    }
    return found;
}

}  // namespace

Configuration Configuration::read() {
    std::vector<ConfigFile> files;
    files.push_back(readConfigFile(FileKind::dataSources));
    files.push_back(readConfigFile(FileKind::drivers));
    return Configuration(std::move(files));
}

std::vector<const ConfigFile*> Configuration::files(FileKind kind) const {
    std::vector<const ConfigFile*> found;
    for (const ConfigFile& file : files_)
        if (file.kind == kind)
            found.push_back(&file);
    return found;
}

std::vector<std::string> Configuration::paths() const {
    std::vector<std::string> paths;
    for (const ConfigFile& file : files_)
        paths.push_back(file.path);
    return paths;
}

const Reason& Configuration::trouble(FileKind kind) const {
    static const Reason kNone;
    for (const ConfigFile* file : files(kind))
        if (file->trouble)
            return file->trouble;
    return kNone;
}

const Reason& Configuration::trouble() const {
    const Reason& sources = trouble(FileKind::dataSources);
    return sources ? sources : trouble(FileKind::drivers);
}

std::vector<DataSource> Configuration::dataSources() const {
    auto found =
        collect<DataSource>(files(FileKind::dataSources), rules::kDataSourceList, rules::kDriver, dataSourceIn);
    if (const auto source = defaultSource())
        found.push_back(*source);
    return found;
}

std::vector<DataSource> Configuration::dataSourcesOf(std::string_view driver) const {
    std::vector<DataSource> found = dataSources();
    std::erase_if(found, [&](const DataSource& source) { return !rules::sameName(source.driver, driver); });
    return found;
}

std::optional<DataSource> Configuration::dataSource(std::string_view name) const {
    if (rules::isDefaultName(name))
        return defaultSource();
    for (const ConfigFile* file : files(FileKind::dataSources)) {
        if (const IniEntry* entry = exactEntry(*file, rules::kDataSourceList, name))
            return dataSourceIn(*file, entry->key, entry);
        const IniSection* section = exactSection(*file, name);
        if (section != nullptr && !rules::isReservedSection(name))
            return dataSourceIn(*file, section->name, nullptr);
    }
    return std::nullopt;
}

// Its driver's name stands in the file of drivers, so it is there when either file says something of it.
std::optional<DataSource> Configuration::defaultSource() const {
    const Located driver = defaultDriver();
    const std::vector<const ConfigFile*> candidates = files(FileKind::dataSources);
    const auto holder = std::find_if(candidates.begin(), candidates.end(), [](const ConfigFile* each) {
        return each->view.section(rules::kDefault) != nullptr;
    });
    if (holder == candidates.end() && !driver)
        return std::nullopt;
    const ConfigFile& file = holder == candidates.end() ? *candidates.front() : **holder;
    const IniSection* section = file.view.section(rules::kDefault);
    return DataSource{rules::kDefault, driver.text, /*isDefault=*/true,      &file,
                      section,         driver,      headerOf(file, section), libraryIn(file, section, rules::kDriver)};
}

std::vector<Registered> Configuration::all(const RegisteredKind& kind) const {
    return collect<Registered>(files(FileKind::drivers), kind.list, kind.key, registeredIn(kind));
}

std::optional<Registered> Configuration::find(const RegisteredKind& kind, std::string_view name) const {
    for (const ConfigFile* file : files(FileKind::drivers)) {
        if (const IniEntry* entry = exactEntry(*file, kind.list, name))
            return registeredIn(kind)(*file, entry->key, entry);
        const IniSection* section = exactSection(*file, name);
        if (section != nullptr && isOwn(name) && section->find(kind.key) != nullptr)
            return registeredIn(kind)(*file, section->name, nullptr);
    }
    return std::nullopt;
}

Located Configuration::defaultDriver() const {
    for (const ConfigFile* file : files(FileKind::drivers))
        if (const IniEntry* entry = file->view.find(rules::kDefault, rules::kDriver))
            return located(*file, entry);
    return {};
}

Located Configuration::setting(std::string_view key) const {
    for (const ConfigFile* file : files(FileKind::dataSources))
        if (const IniEntry* entry = file->view.find(rules::kSettings, key))
            return located(*file, entry);
    return {};
}

std::vector<std::string> Configuration::sectionNames(FileKind kind) const {
    std::vector<std::string> names;
    for (const ConfigFile* file : files(kind))
        for (const IniSection& section : file->view.sections())
            if (isOwn(section.name))
                names.emplace_back(section.name);
    return names;
}

Reason noDataSource(const Configuration& configuration, std::string_view name, const std::string& systemFolder) {
    const std::string forAll = systemFolder + "/odbc.ini";
    const std::optional<IniView> others = IniView::read(forAll);
    if (others && others->section(name) != nullptr)
        return {
            Reason::Kind::notFound,
            "The data source " + std::string(name) + " stands in " + forAll + " only, which this library does not read",
            "Add it for this user: odbcadmin dsn add " + shellWord(std::string(name)) +
                " --driver DRIVER KEY=VALUE..."};
    return {Reason::Kind::notFound,
            "There is no data source " + std::string(name) + " in " + configuration.file(FileKind::dataSources).path,
            adviceFor(name, namesOf(configuration.dataSources()), "See odbcadmin dsn list.")};
}

Reason noneRegistered(const Configuration& configuration, const RegisteredKind& kind, std::string_view name) {
    const std::string word = kind.word;
    return {Reason::Kind::notFound,
            "There is no " + word + " " + std::string(name) + " in " + configuration.file(FileKind::drivers).path,
            adviceFor(name, namesOf(configuration.all(kind)),
                      "See odbcadmin " + word + " list; odbcadmin " + word + " add registers one.")};
}

Reason noDataSourceOrDriver(const Configuration& configuration, std::string_view name) {
    std::vector<std::string> names = namesOf(configuration.dataSources());
    for (const Registered& driver : configuration.drivers())
        names.push_back(driver.name);
    return {Reason::Kind::notFound,
            "There is no data source or driver " + std::string(name) + " in " +
                configuration.file(FileKind::dataSources).path + " and " + configuration.file(FileKind::drivers).path,
            adviceFor(name, names, "See odbcadmin dsn list and odbcadmin driver list.")};
}

}  // namespace jx::model
