// What an installed file leaves in .odbcinst.ini.
#include "install/configuration_update.h"

#include <algorithm>

#include "config/configuration_file.h"
#include "install/data_source_creation.h"
#include "rules/sections.h"

namespace jx::install {

namespace {

bool hasRole(const InfEntry& file, const char* role) {
    return file.key != nullptr && viewOf(file.key) == role;
}

// Whether the item also names this file as its setup library.
bool isOwnSetup(const InstallItem& item, const InfEntry& file) {
    const auto isSame = [&](const InfEntry& other) {
        return hasRole(other, rules::kSetup) && other.fileName != nullptr &&
               viewOf(other.fileName) == viewOf(file.fileName);
    };
    return std::any_of(entriesOf(item).begin(), entriesOf(item).end(), isSame);
}

void enterTranslator(const InstallItem& item, const InfEntry& file, const unsigned char* path) {
    driverFile().write(asBytes(INS_ODBCINST_TRANSLATORS), item.name, asBytes(rules::kInstalled));
    driverFile().removeSection(item.name);
    driverFile().write(item.name, asBytes(rules::kTranslator), path);
    if (isOwnSetup(item, file))
        driverFile().write(item.name, asBytes(rules::kSetup), path);
}

void writeCapabilities(const InstallItem& item) {
    for (std::size_t place = 0; place < kCapabilityKeys.size(); ++place) {
        if (place != kCreateDsn && item.driverKeys[place] != nullptr)
            driverFile().replace(item.name, asBytes(kCapabilityKeys[place]), item.driverKeys[place]);
    }
}

void enterDriver(const InstallItem& item, const InfEntry& file, const unsigned char* path) {
    driverFile().clearAbsentList(asBytes(INS_ODBCINI_DRIVERS));
    driverFile().replace(asBytes(INS_ODBCINI_DRIVERS), item.name, asBytes(rules::kInstalled));
    driverFile().removeSection(item.name);
    driverFile().replace(item.name, asBytes(rules::kDriver), path);
    if (isOwnSetup(item, file))
        driverFile().replace(item.name, asBytes(rules::kSetup), path);
    writeCapabilities(item);
    // Last, so that the data sources find the driver's library.
    if (item.driverKeys[kCreateDsn] != nullptr)
        CreateDataSources(item.driverKeys[kCreateDsn], item.name);
}

}  // namespace

void UpdateOdbcIniAndOdbcInstIni(_Install* install, unsigned long itemIndex, unsigned long fileIndex,
                                 unsigned char* installedPath) {
    const InstallItem& item = install->items[itemIndex];
    const InfEntry& file = item.entries[fileIndex];
    // Installing the item would clear the section of that name, and with it all drivers, translators or settings.
    if (rules::isReservedSection(asChars(item.name)))
        return;
    if (item.kind == TranslatorItem && hasRole(file, rules::kTranslator))
        enterTranslator(item, file, installedPath);
    if (item.kind == DriverItem && hasRole(file, rules::kDriver))
        enterDriver(item, file, installedPath);
    // Deliberate: the kind of the first item of the run, not of this one, decides whether setup libraries are recorded.
    const std::uint32_t firstKind = install->items[0].kind;
    if ((firstKind == DriverItem || firstKind == TranslatorItem) && hasRole(file, rules::kSetup))
        driverFile().replace(item.name, asBytes(rules::kSetup), installedPath);
}

}  // namespace jx::install
