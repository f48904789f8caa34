// Writing one data source: the change is made in memory, read back, and then committed as a whole.
#include "setup/data_source_file.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <utility>

#include <jxini.h>
#include "rules/valid_names.h"

namespace jx::setup {

namespace {

struct ReleaseText {
    void operator()(JxIniText* text) const { jxIniRelease(text); }
};
struct DiscardChange {
    void operator()(JxIniChange* change) const { jxIniDiscard(change); }
};
using Text = std::unique_ptr<JxIniText, ReleaseText>;
using Change = std::unique_ptr<JxIniChange, DiscardChange>;
using LookAt = const char*(const JxIniChange*, size_t*);

Text parse(const Change& change, LookAt* lookAt) {
    size_t length = 0;
    const char* bytes = change ? lookAt(change.get(), &length) : nullptr;
    return Text(bytes != nullptr ? jxIniParse(bytes, length) : nullptr);
}

bool set(const Change& change, const std::string& section, const char* key, const char* value) {
    return change && jxIniSet(change.get(), section.c_str(), key, value) != 0;
}

bool commit(Change change) {
    return jxIniCommit(change.release()) != 0;
}

// The store trims names: a name with outer blanks would find, and change, the data source or driver without them. So
// the length of the name that was found must be equal, too.
bool hasSection(const Text& text, const std::string& name) {
    JxIniPiece header;
    return text && jxIniFind(text.get(), name.c_str(), nullptr, &header) != 0 && header.nameLength == name.size();
}

std::optional<std::string> valueOf(const Text& text, const std::string& section, const std::string& key) {
    JxIniPiece entry;
    if (!hasSection(text, section) || jxIniFind(text.get(), section.c_str(), key.c_str(), &entry) == 0 ||
        entry.nameLength != key.size())
        return std::nullopt;
    return entry.value == nullptr ? std::string() : std::string(entry.value, entry.valueLength);
}

// Whether a look-up of key would find the key without its outer blanks.
bool meansAnotherKey(const Text& text, const std::string& section, const std::string& key) {
    JxIniPiece entry;
    return text && jxIniFind(text.get(), section.c_str(), key.c_str(), &entry) != 0 && entry.nameLength != key.size();
}

std::optional<std::string> registeredLibrary(const char* driver) {
    if (driver == nullptr || *driver == '\0')
        return std::nullopt;
    const std::optional<std::string> library = valueOf(Text(jxIniRead(rules::kDriverFile)), driver, rules::kDriver);
    return library && !library->empty() ? library : std::nullopt;
}

rules::Why whyNoNewName(std::string_view name) {
    return rules::whyNoName(name, rules::kNewDataSource);
}

Text read(const SetupFile& file) {
    return Text(jxIniRead(file.name.c_str()));
}

Change begin(const SetupFile& file) {
    return Change(file.whenNew == NewFile::forEverybody ? jxIniBeginShared(file.name.c_str())
                                                        : jxIniBegin(file.name.c_str()));
}

bool readsBack(const Change& change, const std::string& name, const std::vector<KeyChange>& changes) {
    const Text after = parse(change, jxIniAfter);
    return hasSection(after, name) && std::all_of(changes.begin(), changes.end(), [&](const KeyChange& item) {
               return valueOf(after, name, item.keyword) == item.value;
           });
}

// The attributes as changes. In a change of a data source, unlike in an add, an empty value removes the key.
std::vector<KeyChange> asChanges(const std::vector<Attribute>& attributes, bool emptyRemoves) {
    std::vector<KeyChange> changes;
    changes.reserve(attributes.size());
    for (const auto& [keyword, value] : attributes)
        changes.push_back({keyword, emptyRemoves && value.empty() ? std::nullopt : std::optional(value)});
    return changes;
}

// For jxIniEach: adds a key to the attributes, unless it is "Driver".
int keepAttribute(void* attributes, const JxIniPiece* piece) {
    Attribute found{std::string(piece->name, piece->nameLength), {}};
    if (piece->value != nullptr)
        found.value.assign(piece->value, piece->valueLength);
    if (!isDriverKeyword(found.keyword))
        static_cast<std::vector<Attribute>*>(attributes)->push_back(std::move(found));
    return 1;
}

bool enterInList(const Change& change, const std::string& name, const char* driver) {
    return set(change, rules::kDataSourceList, name.c_str(), nullptr) &&
           set(change, rules::kDataSourceList, name.c_str(), driver);
}

// Makes the same writes in the same order as SQLWriteDSNToIni, followed by one write for each attribute.
bool composeSection(const Change& change, const std::string& library, const DataSourceRequest& request) {
    if (!set(change, request.name, nullptr, nullptr) || !set(change, request.name, rules::kDriver, library.c_str()))
        return false;
    for (const Attribute& attribute : request.attributes)
        if (!set(change, request.name, attribute.keyword.c_str(), attribute.value.c_str()))
            return false;
    return readsBack(change, request.name, asChanges(request.attributes, /*emptyRemoves=*/false));
}

// A null key means the whole section.
bool writeDefaultEntry(const SetupFiles& files, const char* key, const char* driver) {
    Change change = begin(files.drivers);
    return set(change, rules::kDefault, key, driver) && commit(std::move(change));
}

void putBackDefaultEntry(const SetupFiles& files, const Text& before) {
    const std::optional<std::string> driver = valueOf(before, rules::kDefault, rules::kDriver);
    const bool hadSection = hasSection(before, rules::kDefault);
    writeDefaultEntry(files, hadSection ? rules::kDriver : nullptr, driver ? driver->c_str() : nullptr);
}

bool writeSection(const SetupFiles& files, const std::string& library, const DataSourceRequest& request) {
    Change change = begin(files.dataSources);
    return composeSection(change, library, request) && commit(std::move(change));
}

// The two files are not locked at the same time, since both names may mean the same file.
bool addDefaultDataSource(const SetupFiles& files, const char* driver, const std::string& library,
                          const DataSourceRequest& request) {
    if (!composeSection(Change(jxIniPreview(files.dataSources.name.c_str())), library, request))
        return false;
    const Text before = read(files.drivers);
    const bool isKnown = before || jxIniLastFailure().error == ENOENT;
    if (!isKnown || !writeDefaultEntry(files, rules::kDriver, driver))
        return false;
    if (writeSection(files, library, request))
        return true;
    putBackDefaultEntry(files, before);
    return false;
}

bool removeSection(const SetupFile& file, const std::string& name) {
    Change change = begin(file);
    return set(change, name, nullptr, nullptr) && commit(std::move(change));
}

bool removeDefaultDataSource(const SetupFiles& files, const std::string& name) {
    const bool known = hasSection(read(files.drivers), name) || hasSection(read(files.dataSources), name);
    return known && removeSection(files.drivers, name) && removeSection(files.dataSources, name);
}

}  // namespace

SetupFiles usersFiles() {
    return {{rules::kDataSourceFile}, {rules::kDriverFile}, registeredLibrary, whyNoNewName};
}

bool addDataSource(const SetupFiles& files, const char* driver, const DataSourceRequest& request) {
    const std::optional<std::string> library = files.libraryOf(driver);
    if (!library || files.whyNoNewName(request.name) != nullptr)
        return false;
    if (rules::isDefaultName(request.name))
        return addDefaultDataSource(files, driver, *library, request);
    Change change = begin(files.dataSources);
    return enterInList(change, request.name, driver) && composeSection(change, *library, request) &&
           commit(std::move(change));
}

bool changeDataSource(const SetupFiles& files, const char* driver, const DataSourceRequest& request) {
    return changeKeys(files, driver, request.name, asChanges(request.attributes, /*emptyRemoves=*/true));
}

bool changeKeys(const SetupFiles& files, const char* driver, const std::string& name,
                const std::vector<KeyChange>& changes) {
    if (!isInstalled(files, driver) || rules::isReservedSection(name))
        return false;
    Change change = begin(files.dataSources);
    const Text before = parse(change, jxIniBefore);
    if (!hasSection(before, name))
        return false;
    for (const auto& [keyword, value] : changes)
        if (meansAnotherKey(before, name, keyword) ||
            !set(change, name, keyword.c_str(), value ? value->c_str() : nullptr))
            return false;
    return readsBack(change, name, changes) && commit(std::move(change));
}

bool removeDataSource(const SetupFiles& files, const DataSourceRequest& request) {
    if (rules::isReservedSection(request.name))
        return false;
    if (rules::isDefaultName(request.name))
        return removeDefaultDataSource(files, request.name);
    Change change = begin(files.dataSources);
    const Text before = parse(change, jxIniBefore);
    const bool listed = valueOf(before, rules::kDataSourceList, request.name).has_value();
    const bool hasOwnSection = hasSection(before, request.name);
    return (listed || hasOwnSection) &&
           (!listed || set(change, rules::kDataSourceList, request.name.c_str(), nullptr)) &&
           set(change, request.name, nullptr, nullptr) && commit(std::move(change));
}

bool isInstalled(const SetupFiles& files, const char* driver) {
    return files.libraryOf(driver).has_value();
}

bool dataSourceExists(const SetupFiles& files, const std::string& name) {
    const Text sources = read(files.dataSources);
    return hasSection(sources, name) || valueOf(sources, rules::kDataSourceList, name).has_value() ||
           (rules::isDefaultName(name) && hasSection(read(files.drivers), name));
}

std::optional<DataSourceRequest> readDataSource(const SetupFiles& files, const std::string& name) {
    const Text sources = read(files.dataSources);
    if (rules::isReservedSection(name) || !hasSection(sources, name))
        return std::nullopt;
    DataSourceRequest found{name, {}};
    jxIniEach(sources.get(), name.c_str(), keepAttribute, &found.attributes);
    return found;
}

}  // namespace jx::setup
