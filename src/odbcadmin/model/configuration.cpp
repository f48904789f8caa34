// Finding data sources, drivers and translators in the files.
#include "odbcadmin/model/configuration.h"

#include <algorithm>
#include <span>
#include <utility>

#include "odbcadmin/model/name_places.h"
#include "odbcadmin/model/near_matches.h"
#include "odbcadmin/model/system_files.h"
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

using Files = std::vector<const ConfigFile*>;
using SomeFiles = std::span<const ConfigFile* const>;

// What the files say of a name: the first that lists it and the first that has its section need not be the same.
struct Sighting {
    std::string name;
    const ConfigFile* file = nullptr;  // that of the section, or else of the list
    const IniSection* section = nullptr;
    Located listed, header, hides;
};

// A line of a list, and its file.
struct Listing {
    const ConfigFile* file = nullptr;
    const IniEntry* entry = nullptr;
};

// A section, and its file. Both null when there is none.
struct Standing {
    const ConfigFile* file = nullptr;
    const IniSection* section = nullptr;
};

Listing firstListing(SomeFiles files, const char* list, std::string_view name) {
    for (const ConfigFile* file : files)
        if (const IniEntry* entry = exactEntry(*file, list, name))
            return {file, entry};
    return {};
}

Standing firstSection(SomeFiles files, std::string_view name) {
    for (const ConfigFile* file : files)
        if (const IniSection* section = exactSection(*file, name))
            return {file, section};
    return {};
}

// Those behind one of them.
SomeFiles filesBehind(SomeFiles files, const ConfigFile* file) {
    return {std::find(files.begin(), files.end(), file) + 1, files.end()};
}

Sighting sighting(SomeFiles files, std::string_view name, const Listing& listing) {
    Sighting seen;
    const Standing first = firstSection(files, name);
    seen.file = first.file != nullptr ? first.file : listing.file;
    if (listing.entry != nullptr)
        seen.listed = located(*listing.file, listing.entry);
    seen.name = listing.entry != nullptr ? listing.entry->key : first.section != nullptr ? first.section->name : name;
    if (first.file == nullptr)
        return seen;
    seen.section = first.section;
    seen.header = headerOf(*first.file, first.section);
    if (const Standing hidden = firstSection(filesBehind(files, first.file), name); hidden.file != nullptr)
        seen.hides = headerOf(*hidden.file, hidden.section);
    return seen;
}

Sighting sighting(SomeFiles files, const char* list, std::string_view name) {
    return sighting(files, name, firstListing(files, list, name));
}

DataSource dataSourceOf(Sighting&& seen) {
    std::string driver = seen.listed               ? seen.listed.text
                         : seen.section != nullptr ? seen.section->value(rules::kDriver)
                                                   : "";
    return {std::move(seen.name),   std::move(driver),
            /*isDefault=*/false,    seen.file,
            seen.section,           std::move(seen.listed),
            std::move(seen.header), libraryIn(*seen.file, seen.section, rules::kDriver),
            std::move(seen.hides)};
}

auto registeredOf(const RegisteredKind& kind) {
    return [&kind](Sighting&& seen) {
        return Registered{std::move(seen.name),
                          seen.file,
                          seen.section,
                          std::move(seen.listed),
                          std::move(seen.header),
                          libraryIn(*seen.file, seen.section, kind.key),
                          libraryIn(*seen.file, seen.section, rules::kSetup),
                          std::move(seen.hides)};
    };
}

// The lines of one list in all files, of each name the first: a list is long where there are many names to look up.
class Listings {
public:
    Listings(SomeFiles files, const char* list) {
        std::size_t count = 0;
        for (const ConfigFile* file : files)
            count += entriesOf(*file, list).size();
        places_.reserve(count);
        lines_.reserve(count);
        for (const ConfigFile* file : files)
            for (const IniEntry& entry : entriesOf(*file, list))
                if (!placeOf(entry.key)) {
                    places_.add(NamePlaces::hashOf(entry.key), lines_.size());
                    lines_.push_back({file, &entry});
                }
    }

    bool has(std::string_view name) const { return placeOf(name).has_value(); }
    const std::vector<Listing>& lines() const { return lines_; }

private:
    std::optional<std::size_t> placeOf(std::string_view name) const {
        return places_.find(NamePlaces::hashOf(name),
                            [&](std::size_t at) { return rules::sameName(lines_[at].entry->key, name); });
    }

    std::vector<Listing> lines_;
    NamePlaces places_;
};

// What the list of each file names, then its further sections that have the key and answer for their name.
template <class Row, class Make>
std::vector<Row> collect(SomeFiles files, const char* list, const char* key, Make make) {
    std::vector<Row> found;
    const Listings listed(files, list);
    found.reserve(listed.lines().size());
    for (const ConfigFile* file : files) {
        for (const Listing& line : listed.lines())
            if (line.file == file)
                found.push_back(make(sighting(files, line.entry->key, line)));
        for (const IniSection& section : file->view.sections())
            if (isOwn(section.name) && section.find(key) != nullptr && !listed.has(section.name) &&
                firstSection(files, section.name).file == file)
                found.push_back(make(sighting(files, section.name, Listing())));
    }
    return found;
}

// What each file but the first would say of names whose sections stand in an earlier one.
template <class Row, class Make>
std::vector<Row> collectHidden(SomeFiles files, const char* list, const char* key, Make make) {
    std::vector<Row> found;
    for (std::size_t at = 1; at < files.size(); ++at)
        for (const Row& row : collect<Row>(files.subspan(at, 1), list, key, make))
            if (row.section != nullptr && firstSection(files.first(at), row.name).file != nullptr)
                found.push_back(row);
    return found;
}

// The first file that has the section answers, whether it has the key or not.
Located valueIn(const Files& files, const char* section, std::string_view key) {
    for (const ConfigFile* file : files)
        if (file->view.section(section) != nullptr)
            return located(*file, file->view.find(section, key));
    return {};
}

bool isSeen(Seen seen, Scope scope) {
    return seen == Seen::both || (seen == Seen::user) == (scope == Scope::user);
}

}  // namespace

Configuration Configuration::read() {
    std::vector<ConfigFile> files;
    files.push_back(readConfigFile(FileKind::dataSources));
    files.push_back(readConfigFile(FileKind::drivers));
    return Configuration(std::move(files));
}

Configuration Configuration::read(const Scopes& scopes) {
    std::vector<ConfigFile> files;
    const auto add = [&](FileKind kind, Seen seen) {
        for (const Scope scope : {Scope::user, Scope::system})
            if (isSeen(seen, scope) && (scope == Scope::user || seen == Seen::system || !isOneFile(kind)))
                files.push_back(readConfigFile(kind, scope));
    };
    add(FileKind::dataSources, scopes.dataSources);
    add(FileKind::drivers, scopes.drivers);
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
    return file(kind).trouble;
}

const Reason& Configuration::trouble() const {
    const Reason& sources = trouble(FileKind::dataSources);
    return sources ? sources : trouble(FileKind::drivers);
}

std::vector<Reason> Configuration::furtherTroubles() const {
    std::vector<Reason> all;
    for (const ConfigFile& each : files_)
        if (each.trouble && &each != &file(each.kind))
            all.push_back(each.trouble);
    return all;
}

std::vector<DataSource> Configuration::dataSources() const {
    auto found =
        collect<DataSource>(files(FileKind::dataSources), rules::kDataSourceList, rules::kDriver, dataSourceOf);
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
    Sighting seen = sighting(files(FileKind::dataSources), rules::kDataSourceList, name);
    if (seen.file == nullptr || (!seen.listed && rules::isReservedSection(name)))
        return std::nullopt;
    return dataSourceOf(std::move(seen));
}

std::vector<DataSource> Configuration::hiddenDataSources() const {
    return collectHidden<DataSource>(files(FileKind::dataSources), rules::kDataSourceList, rules::kDriver,
                                     dataSourceOf);
}

// Its driver's name stands in the file of drivers, so it is there when either file says something of it.
std::optional<DataSource> Configuration::defaultSource() const {
    const Located driver = defaultDriver();
    const Sighting seen = sighting(files(FileKind::dataSources), rules::kDataSourceList, rules::kDefault);
    if (seen.section == nullptr && !driver)
        return std::nullopt;
    const ConfigFile& holder = seen.section == nullptr ? file(FileKind::dataSources) : *seen.file;
    return DataSource{rules::kDefault, driver.text, /*isDefault=*/true, &holder,
                      seen.section,    driver,      seen.header,        libraryIn(holder, seen.section, rules::kDriver),
                      seen.hides};
}

std::vector<Registered> Configuration::all(const RegisteredKind& kind) const {
    return collect<Registered>(files(FileKind::drivers), kind.list, kind.key, registeredOf(kind));
}

std::optional<Registered> Configuration::find(const RegisteredKind& kind, std::string_view name) const {
    Sighting seen = sighting(files(FileKind::drivers), kind.list, name);
    const bool isSection = seen.section != nullptr && isOwn(name) && seen.section->find(kind.key) != nullptr;
    if (!seen.listed && !isSection)
        return std::nullopt;
    return registeredOf(kind)(std::move(seen));
}

const std::optional<Registered>& Configuration::driver(std::string_view name) const {
    const auto [place, isNew] = foundDrivers_.try_emplace(std::string(name));
    if (isNew)
        place->second = find(kDriverKind, name);
    return place->second;
}

std::vector<Registered> Configuration::hidden(const RegisteredKind& kind) const {
    return collectHidden<Registered>(files(FileKind::drivers), kind.list, kind.key, registeredOf(kind));
}

Located Configuration::defaultDriver() const {
    return valueIn(files(FileKind::drivers), rules::kDefault, rules::kDriver);
}

Located Configuration::setting(std::string_view key) const {
    return valueIn(files(FileKind::dataSources), rules::kSettings, key);
}

std::vector<std::string> Configuration::sectionNames(FileKind kind) const {
    std::vector<std::string> names;
    for (const ConfigFile* file : files(kind))
        for (const IniSection& section : file->view.sections())
            if (isOwn(section.name))
                names.emplace_back(section.name);
    return names;
}

std::string lookedAt(const Configuration& configuration, FileKind kind) {
    std::vector<std::string> paths;
    for (const ConfigFile* file : configuration.files(kind))
        if (paths.empty() || file->state != ConfigFile::State::absent)
            paths.push_back(file->path);
    return joined(paths, " or ");
}

namespace {

// Of a name that no file has which was looked at, the file of another scope that does.
std::optional<ConfigFile> elsewhere(const Configuration& configuration, FileKind kind, std::string_view name) {
    const auto isSeenAt = [&](Scope scope) {
        const Files files = configuration.files(kind);
        return std::any_of(files.begin(), files.end(), [&](const ConfigFile* file) { return file->scope == scope; });
    };
    for (const Scope scope : {Scope::user, Scope::system}) {
        if (isSeenAt(scope))
            continue;
        ConfigFile file = readConfigFile(kind, scope);
        if (file.view.section(name) != nullptr && isOwn(name))
            return file;
    }
    return std::nullopt;
}

// noun: that of the command that copies it.
Reason onlyElsewhere(const std::string& what, const std::string& noun, const ConfigFile& other) {
    return {Reason::Kind::notFound,
            what + " stands in " + other.path + " only, the file of the " + scopeWord(other.scope),
            other.scope == Scope::user ? "Leave --system out, or copy it first: see odbcadmin " + noun + " copy --help."
                                       : "Leave --user out to read it; --system changes it."};
}

}  // namespace

Reason noDataSource(const Configuration& configuration, std::string_view name) {
    if (const auto other = elsewhere(configuration, FileKind::dataSources, name))
        return onlyElsewhere("The data source " + std::string(name), "dsn", *other);
    return {Reason::Kind::notFound,
            "There is no data source " + std::string(name) + " in " + lookedAt(configuration, FileKind::dataSources),
            adviceFor(name, namesOf(configuration.dataSources()), "See odbcadmin dsn list.")};
}

Reason noneRegistered(const Configuration& configuration, const RegisteredKind& kind, std::string_view name) {
    const std::string word = kind.word;
    if (const auto other = elsewhere(configuration, FileKind::drivers, name))
        return onlyElsewhere("The " + word + " " + std::string(name), "driver", *other);
    return {Reason::Kind::notFound,
            "There is no " + word + " " + std::string(name) + " in " + lookedAt(configuration, FileKind::drivers),
            adviceFor(name, namesOf(configuration.all(kind)),
                      "See odbcadmin " + word + " list; odbcadmin " + word + " add registers one.")};
}

Reason noDataSourceOrDriver(const Configuration& configuration, std::string_view name) {
    std::vector<std::string> names = namesOf(configuration.dataSources());
    for (const Registered& driver : configuration.drivers())
        names.push_back(driver.name);
    return {Reason::Kind::notFound,
            "There is no data source or driver " + std::string(name) + " in " +
                lookedAt(configuration, FileKind::dataSources) + " and " + lookedAt(configuration, FileKind::drivers),
            adviceFor(name, names, "See odbcadmin dsn list and odbcadmin driver list.")};
}

}  // namespace jx::model
