// Making documents of files and files of documents.
#include "odbcadmin/model/document.h"

#include <algorithm>

#include "odbcadmin/model/data_source_change.h"
#include "odbcadmin/model/registration.h"
#include "odbcadmin/model/trace_settings.h"
#include "rules/names.h"
#include "rules/secrets.h"

namespace jx::model {

namespace {

using Secrets = ChangeWay::Secrets;

// All keys but Driver when it has this value.
std::vector<DocumentKey> keysOf(const IniSection* section, const std::string& library, Secrets secrets) {
    std::vector<DocumentKey> keys;
    if (section == nullptr)
        return keys;
    for (const IniEntry& entry : section->entries) {
        if (!library.empty() && rules::sameName(entry.key, rules::kDriver) && entry.value == library)
            continue;
        const bool hides = secrets == Secrets::masked && rules::masked(entry.key, entry.value) != entry.value;
        keys.push_back({std::string(entry.key), hides ? std::nullopt : std::optional(std::string(entry.value))});
    }
    return keys;
}

std::vector<DocumentEntry> registeredOf(const std::vector<Registered>& all, Secrets secrets) {
    std::vector<DocumentEntry> entries;
    for (const Registered& each : all)
        if (each.library)
            entries.push_back({each.name, {}, keysOf(each.section, {}, secrets), each.file->scope});
    return entries;
}

std::vector<DocumentEntry> tracingOf(const Configuration& configuration) {
    std::vector<DocumentEntry> entries;
    for (const ConfigFile* file : configuration.files(FileKind::dataSources)) {
        std::vector<DocumentKey> keys = keysOf(file->view.section(rules::kSettings), {}, Secrets::shown);
        std::erase_if(keys, [](const DocumentKey& key) { return !isTraceKey(key.name); });
        if (!keys.empty())
            entries.push_back({{}, {}, std::move(keys), file->scope});
    }
    return entries;
}

template <class Rows>
Rows withHidden(Rows rows, const Rows& hidden) {
    rows.insert(rows.end(), hidden.begin(), hidden.end());
    return rows;
}

// Keys without a value are left as they are.
Pairs pairsOf(const DocumentEntry& entry) {
    Pairs pairs;
    for (const DocumentKey& key : entry.keys)
        if (key.value)
            pairs.emplace_back(key.name, *key.value);
    return pairs;
}

const DocumentEntry* entryOf(const std::vector<DocumentEntry>& entries, const std::string& name, Scope scope) {
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const DocumentEntry& each) {
        return each.scope == scope && rules::sameName(each.name, name);
    });
    return found == entries.end() ? nullptr : &*found;
}

std::string libraryOf(const DocumentEntry& driver) {
    for (const DocumentKey& key : driver.keys)
        if (rules::sameName(key.name, rules::kDriver))
            return key.value.value_or("");
    return {};
}

// What a document's data sources and drivers are looked up in: the document itself, then the files.
struct Surroundings {
    const Document& document;
    const Configuration& configuration;  // what the user sees
    const Configuration& system;         // what everybody sees
};

// The library of a data source's driver; empty when it has none. What all users have finds no driver of one user.
std::string libraryFor(const DocumentEntry& source, const Surroundings& around) {
    const DocumentEntry* entry = entryOf(around.document.drivers, source.driver, source.scope);
    if (entry == nullptr && source.scope == Scope::user)
        entry = entryOf(around.document.drivers, source.driver, Scope::system);
    if (entry != nullptr)
        return libraryOf(*entry);
    const Configuration& files = source.scope == Scope::user ? around.configuration : around.system;
    const std::optional<Registered>& driver = files.driver(source.driver);
    return driver ? driver->library.text : std::string();
}

bool hasLibrary(const DocumentEntry& source) {
    return std::any_of(source.keys.begin(), source.keys.end(), [](const DocumentKey& key) {
        return rules::sameName(key.name, rules::kDriver) && key.value && !key.value->empty();
    });
}

// The driver that a data source means. What all users have means no driver of one user, also where that hides theirs.
std::optional<Registered> driverOf(const Configuration& configuration, const DataSource& source) {
    std::optional<Registered> driver = configuration.driver(source.driver);
    if (!driver || source.file->scope == Scope::user || driver->file->scope == Scope::system)
        return driver;
    if (driver->hides)
        for (const Registered& hidden : configuration.hidden(kDriverKind))
            if (rules::sameName(hidden.name, source.driver))
                return hidden;
    return std::nullopt;
}

Reason whyHidden(const std::vector<DocumentEntry>& entries) {
    for (const DocumentEntry& entry : entries)
        for (const DocumentKey& key : entry.keys)
            if (Reason reason = model::whyHidden(key.name, key.value.value_or("")))
                return reason;
    return {};
}

Reason whyNotApply(const Surroundings& around) {
    const Configuration& configuration = around.configuration;
    const Document& document = around.document;
    for (const DocumentEntry& driver : document.drivers)
        if (Reason reason = whyNoRegisteredName(configuration, kDriverKind, driver.name))
            return reason;
    for (const DocumentEntry& translator : document.translators)
        if (Reason reason = whyNoRegisteredName(configuration, kTranslatorKind, translator.name))
            return reason;
    for (const DocumentEntry& source : document.dataSources)
        if (Reason reason = whyNoDataSourceName(configuration, source.name))
            return reason;
    for (const auto* entries : {&document.drivers, &document.translators, &document.dataSources})
        if (Reason reason = whyHidden(*entries))
            return reason;
    for (const DocumentEntry& source : document.dataSources)
        if (!hasLibrary(source) && libraryFor(source, around).empty())
            return noneRegistered(source.scope == Scope::user ? configuration : around.system, kDriverKind,
                                  source.driver);
    return {};
}

// One scope's part of the work.
struct Share {
    const Surroundings& around;
    const Superfluous* removed;  // may be null
    Scope scope;

    ChangeResult writeDrivers(const ChangeWay& way) const;
    ChangeResult writeDataSources(const ChangeWay& way) const;
    bool isMine(const DocumentEntry& entry) const { return entry.scope == scope; }
};

ChangeResult Share::writeDrivers(const ChangeWay& way) const {
    FileChange change(rules::kDriverFile, way);
    if (removed != nullptr) {
        for (const std::string& name : removed->drivers)
            composeUnregistration(change, kDriverKind, name);
        for (const std::string& name : removed->translators)
            composeUnregistration(change, kTranslatorKind, name);
        for (const std::string& name : removed->dataSources)
            if (rules::isDefaultName(name))
                change.eraseSection(rules::kDefault);
    }
    for (const DocumentEntry& driver : around.document.drivers)
        if (isMine(driver))
            composeRegistration(change, kDriverKind, {driver.name, {}, {}, pairsOf(driver)});
    for (const DocumentEntry& translator : around.document.translators)
        if (isMine(translator))
            composeRegistration(change, kTranslatorKind, {translator.name, {}, {}, pairsOf(translator)});
    for (const DocumentEntry& source : around.document.dataSources)
        if (isMine(source) && rules::isDefaultName(source.name))
            change.set(rules::kDefault, rules::kDriver, source.driver);
    return change.finish();
}

ChangeResult Share::writeDataSources(const ChangeWay& way) const {
    FileChange change(rules::kDataSourceFile, way);
    if (removed != nullptr)
        for (const std::string& name : removed->dataSources)
            composeRemoval(change, name);
    for (const DocumentEntry& source : around.document.dataSources)
        if (isMine(source))
            composeDataSource(change, {source.name, source.driver, pairsOf(source)}, libraryFor(source, around),
                              OtherKeys::keep);
    for (const DocumentEntry& settings : around.document.tracing)
        if (isMine(settings))
            change.set(rules::kSettings, pairsOf(settings));
    return change.finish();
}

// A step of the work: one file of one scope.
struct WriteStep {
    Share share;
    ChangeResult (Share::*write)(const ChangeWay&) const;

    ChangeResult run(ChangeWay way) const {
        way.scope = share.scope;
        return (share.*write)(way);
    }
};

std::vector<WriteStep> stepsOf(const Surroundings& around, const std::vector<Superfluous>& removed) {
    std::vector<WriteStep> steps;
    for (const Scope scope : {Scope::system, Scope::user}) {
        const auto mine =
            std::find_if(removed.begin(), removed.end(), [&](const Superfluous& each) { return each.scope == scope; });
        const Share share{around, mine == removed.end() ? nullptr : &*mine, scope};
        steps.push_back({share, &Share::writeDrivers});
        steps.push_back({share, &Share::writeDataSources});
    }
    return steps;
}

}  // namespace

Exchange documentOf(const Configuration& configuration, Secrets secrets) {
    Exchange made;
    const auto registered = [&](const RegisteredKind& kind) {
        return registeredOf(withHidden(configuration.all(kind), configuration.hidden(kind)), secrets);
    };
    made.document.drivers = registered(kDriverKind);
    made.document.translators = registered(kTranslatorKind);
    for (const DataSource& source : withHidden(configuration.dataSources(), configuration.hiddenDataSources())) {
        const std::optional<Registered> driver = driverOf(configuration, source);
        // What stands in no list has no driver's name, and what has a library of its own needs none that is registered.
        const std::string name = source.listed || source.isDefault ? source.driver : "";
        const std::string library = driver && driver->library && !name.empty() ? driver->library.text : "";
        if (!library.empty() || source.library)
            made.document.dataSources.push_back(
                {source.name, name, keysOf(source.section, library, secrets), source.file->scope});
        else
            made.leftOut.push_back(source);
    }
    made.document.tracing = tracingOf(configuration);
    return made;
}

std::size_t secretsLeftOut(const Document& document) {
    std::size_t count = 0;
    for (const auto* entries : {&document.drivers, &document.translators, &document.dataSources})
        for (const DocumentEntry& entry : *entries)
            count += static_cast<std::size_t>(
                std::count_if(entry.keys.begin(), entry.keys.end(), [](const auto& key) { return !key.value; }));
    return count;
}

Superfluous superfluous(const Document& document, Scope scope) {
    const Seen own = scope == Scope::user ? Seen::user : Seen::system;
    const Configuration files = Configuration::read({own, own});
    const auto without = [&](std::vector<std::string> names, const std::vector<DocumentEntry>& entries) {
        std::erase_if(names, [&](const std::string& name) { return entryOf(entries, name, scope) != nullptr; });
        return names;
    };
    return {scope, without(namesOf(files.drivers()), document.drivers),
            without(namesOf(files.all(kTranslatorKind)), document.translators),
            without(namesOf(files.dataSources()), document.dataSources)};
}

ChangeResult applyDocument(const Configuration& configuration, const Document& document, const ChangeWay& way,
                           const std::vector<Superfluous>& removed) {
    const Configuration system = Configuration::read({Seen::system, Seen::system});
    const Surroundings around{document, configuration, system};
    if (Reason reason = whyNotApply(around))
        return {std::move(reason)};
    // What a later file would refuse must show before the first one is written; and a file that stays as it is needs no
    // right to change it.
    ChangeWay trial = way;
    trial.writing = ChangeWay::Writing::never;
    std::vector<WriteStep> needed;
    for (const WriteStep& step : stepsOf(around, removed)) {
        const ChangeResult tried = step.run(trial);
        if (!tried.isDone())
            return {tried.reason};
        if (!tried.files.empty())
            needed.push_back(step);
    }
    ChangeResult result;
    for (const WriteStep& step : needed)
        if (result.isDone())
            result.add(step.run(way));
    return result;
}

}  // namespace jx::model
