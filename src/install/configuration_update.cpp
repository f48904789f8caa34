// What an installed file leaves in .odbcinst.ini.
#include "install/configuration_update.h"

#include <odbcinst.h>

#include "config/capability_keys.h"
#include "config/text_bytes.h"
#include "install/owned_text.h"
#include "install/profile_text.h"
#include "rules/sections.h"

namespace jx::install {

namespace {

constexpr char kInstalled[] = "Installed";
constexpr char kDriverRole[] = "Driver";
constexpr char kSetupRole[] = "Setup";
constexpr char kTranslatorRole[] = "Translator";

void write(const unsigned char* section, const unsigned char* key, const unsigned char* value) {
    jxWritePrivateProfileString(section, key, value, asBytes(INS_ODBCINST_FILENAME));
}

// An entry that was there moves to the end of its section: the order of a section is the order of its installations.
void replace(const unsigned char* section, const unsigned char* key, const unsigned char* value) {
    write(section, key, nullptr);
    write(section, key, value);
}

void clearSection(const unsigned char* section) {
    write(section, nullptr, nullptr);
}

bool hasRole(const InfEntry& file, const char* role) {
    return file.key != nullptr && viewOf(file.key) == role;
}

// Whether other is the setup library and the same file as installed.
bool isOwnSetup(const InfEntry& other, const InfEntry& installed) {
    return hasRole(other, kSetupRole) && other.fileName != nullptr &&
           viewOf(other.fileName) == viewOf(installed.fileName);
}

void enterTranslator(const InstallItem& item, const InfEntry& file, const unsigned char* path) {
    write(asBytes(INS_ODBCINST_TRANSLATORS), item.name, asBytes(kInstalled));
    clearSection(item.name);
    write(item.name, asBytes(kTranslatorRole), path);
    for (const InfEntry& other : entriesOf(item)) {
        if (isOwnSetup(other, file))
            write(item.name, asBytes(kSetupRole), path);
    }
}

void writeCapabilities(const InstallItem& item) {
    for (std::size_t position = 0; position < kCapabilityKeys.size(); ++position) {
        if (position != kCreateDsn && item.driverKeys[position] != nullptr)
            replace(item.name, asBytes(kCapabilityKeys[position]), item.driverKeys[position]);
    }
}

void enterDriver(const InstallItem& item, const InfEntry& file, const unsigned char* path) {
    const unsigned char* list = asBytes(INS_ODBCINI_DRIVERS);
    ProfileText drivers;
    // Deliberate: a list that reads as absent is cleared before its first entry. Mostly there is nothing to clear; a
    // list whose first name is "NOT AVAILABLE" goes, and so does one that another program begins in this very moment.
    if (!drivers.read(list, nullptr, asBytes(INS_ODBCINST_FILENAME)) && !drivers.readFailed())
        clearSection(list);
    replace(list, item.name, asBytes(kInstalled));
    clearSection(item.name);
    replace(item.name, asBytes(kDriverRole), path);
    for (const InfEntry& other : entriesOf(item)) {
        if (isOwnSetup(other, file))
            replace(item.name, asBytes(kSetupRole), path);
    }
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
    // Its section would be cleared: all drivers, translators or settings would go for the sake of one.
    if (rules::isReservedSection(asChars(item.name)))
        return;
    if (item.kind == TranslatorItem && hasRole(file, kTranslatorRole))
        enterTranslator(item, file, installedPath);
    if (item.kind == DriverItem && hasRole(file, kDriverRole))
        enterDriver(item, file, installedPath);
    // Deliberate: the first item of the run decides whether setup libraries are recorded, whatever this item is.
    const std::uint32_t firstKind = install->items[0].kind;
    if ((firstKind == DriverItem || firstKind == TranslatorItem) && hasRole(file, kSetupRole))
        replace(item.name, asBytes(kSetupRole), installedPath);
}

}  // namespace jx::install
