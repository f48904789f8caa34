// Making documents of files and files of documents.
#include "odbcadmin/model/document.h"

#include <algorithm>

#include "odbcadmin/model/data_source_change.h"
#include "odbcadmin/model/registration.h"
#include "rules/names.h"
#include "rules/secrets.h"

namespace jx::model {

namespace {

using Secrets = ChangeWay::Secrets;

// All keys but Driver when it has this value.
std::vector<DocumentKey> keysOf(const IniSection* section, const std::string& library, Secrets secrets,
                                std::size_t& leftOut) {
    std::vector<DocumentKey> keys;
    if (section == nullptr)
        return keys;
    for (const IniEntry& entry : section->entries) {
        if (!library.empty() && rules::sameName(entry.key, rules::kDriver) && entry.value == library)
            continue;
        const bool hides = secrets == Secrets::masked && rules::masked(entry.key, entry.value) != entry.value;
        leftOut += hides ? 1 : 0;
        keys.push_back({std::string(entry.key), hides ? std::nullopt : std::optional(std::string(entry.value))});
    }
    return keys;
}

std::vector<DocumentEntry> registeredOf(const std::vector<Registered>& all, Secrets secrets, std::size_t& leftOut) {
    std::vector<DocumentEntry> entries;
    for (const Registered& each : all)
        if (each.library)
            entries.push_back({each.name, {}, keysOf(each.section, {}, secrets, leftOut)});
    return entries;
}

// Keys without a value are left as they are.
Pairs pairsOf(const DocumentEntry& entry) {
    Pairs pairs;
    for (const DocumentKey& key : entry.keys)
        if (key.value)
            pairs.emplace_back(key.name, *key.value);
    return pairs;
}

// The library a data source's driver has in the document, else in the file; empty when nowhere.
std::string libraryOf(const Configuration& configuration, const Document& document, const std::string& name) {
    for (const DocumentEntry& driver : document.drivers)
        if (rules::sameName(driver.name, name))
            for (const DocumentKey& key : driver.keys)
                if (rules::sameName(key.name, rules::kDriver))
                    return key.value.value_or("");
    const std::optional<Registered> driver = configuration.driver(name);
    return driver ? driver->library.text : std::string();
}

bool hasLibrary(const DocumentEntry& source) {
    return std::any_of(source.keys.begin(), source.keys.end(), [](const DocumentKey& key) {
        return rules::sameName(key.name, rules::kDriver) && key.value && !key.value->empty();
    });
}

Reason whyHidden(const std::vector<DocumentEntry>& entries) {
    for (const DocumentEntry& entry : entries)
        for (const DocumentKey& key : entry.keys)
            if (Reason reason = model::whyHidden(key.name, key.value.value_or("")))
                return reason;
    return {};
}

Reason whyNotApply(const Configuration& configuration, const Document& document) {
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
        if (!hasLibrary(source) && libraryOf(configuration, document, source.driver).empty())
            return noneRegistered(configuration, kDriverKind, source.driver);
    return {};
}

ChangeResult writeDrivers(const Document& document, const ChangeWay& way) {
    FileChange change(rules::kDriverFile, way);
    for (const DocumentEntry& driver : document.drivers)
        composeRegistration(change, kDriverKind, {driver.name, {}, {}, pairsOf(driver)});
    for (const DocumentEntry& translator : document.translators)
        composeRegistration(change, kTranslatorKind, {translator.name, {}, {}, pairsOf(translator)});
    for (const DocumentEntry& source : document.dataSources)
        if (rules::isDefaultName(source.name))
            change.set(rules::kDefault, rules::kDriver, source.driver);
    return change.finish();
}

ChangeResult writeDataSources(const Configuration& configuration, const Document& document, const ChangeWay& way) {
    FileChange change(rules::kDataSourceFile, way);
    for (const DocumentEntry& source : document.dataSources)
        composeDataSource(change, {source.name, source.driver, pairsOf(source)},
                          libraryOf(configuration, document, source.driver), OtherKeys::keep);
    return change.finish();
}

}  // namespace

Exchange documentOf(const Configuration& configuration, Secrets secrets) {
    Exchange made;
    made.document.drivers = registeredOf(configuration.drivers(), secrets, made.secretsLeftOut);
    made.document.translators = registeredOf(configuration.all(kTranslatorKind), secrets, made.secretsLeftOut);
    for (const DataSource& source : configuration.dataSources()) {
        const std::optional<Registered> driver = configuration.driver(source.driver);
        // What stands in no list has no driver's name, and what has a library of its own needs none that is registered.
        const std::string name = source.listed || source.isDefault ? source.driver : "";
        const std::string library = driver && driver->library && !name.empty() ? driver->library.text : "";
        if (!library.empty() || source.library)
            made.document.dataSources.push_back(
                {source.name, name, keysOf(source.section, library, secrets, made.secretsLeftOut)});
        else
            made.leftOut.push_back(source);
    }
    return made;
}

ChangeResult applyDocument(const Configuration& configuration, const Document& document, const ChangeWay& way) {
    if (Reason reason = whyNotApply(configuration, document))
        return {std::move(reason)};
    // What the second file would refuse must show before the first one is written.
    ChangeWay trial = way;
    trial.writing = ChangeWay::Writing::never;
    if (Reason reason = writeDataSources(configuration, document, trial).reason)
        return {std::move(reason)};
    ChangeResult result = writeDrivers(document, way);
    return result.isDone() ? result.add(writeDataSources(configuration, document, way)) : result;
}

}  // namespace jx::model
