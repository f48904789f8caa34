// The record of one batch installation: its components, their files, the paths it works with.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "install/capability_keys.h"

namespace jx::install {

// One file of a component, from one line of the script. Texts are owned heap blocks, null where the line has none.
struct InfEntry {
    unsigned char* key;  // the file's role: "Driver", "Setup", "Translator", ...
    long number0;        // field 0 of the line
    unsigned char* fileName;
    long dateYear;
    long dateMonth;
    long dateDay;
    unsigned char* text8;  // field 8, "OLDER" when that is empty
    unsigned char* text14;
    long number15;
    long version[4];
};

enum ItemKind : std::uint32_t { DriverItem = 0, CoreItem = 1, TranslatorItem = 2 };

// One component. All texts and the entries are owned.
struct InstallItem {
    unsigned char* name;     // also the component's section in the script
    std::uint32_t kind;      // an ItemKind
    std::uint32_t selected;  // 1 when the component is to be installed
    unsigned char*
        driverKeys[kCapabilityKeys.size()];  // in the order of kCapabilityKeys; null where the script has none
    std::uint32_t entryCount;
    InfEntry* entries;
};

// One installation. All texts and arrays are owned; an array and its count change together.
struct _Install {
    std::uint32_t itemCount;
    InstallItem* items;  // in the order in which they were added
    std::uint32_t anyFileInstalled;
    std::uint32_t reserved0;  // the option flag of the advanced options
    std::uint32_t reserved1;  // their first choice
    std::uint32_t reserved2;  // their second choice
    std::uint32_t processedCount;
    unsigned char** processedFiles;  // names of the files done so far, in that order
    std::uint32_t reserved3;
    unsigned char* auxString1;
    unsigned char* infFile;  // the script
    unsigned char* auxString2;
    unsigned char* targetDir;  // where the files lie, ended by one slash
    unsigned char* sourceDir;
};

static_assert(sizeof(void*) != 4 || (sizeof(_Install) == 56 && sizeof(InstallItem) == 48 && sizeof(InfEntry) == 52));

// What the Install Drivers dialog works on.
struct InstallDriversRecord {
    std::uint32_t proceed;  // set by the dialog: 1 to go on, 0 when it was cancelled
    _Install* install;
};

// What DoTheTempDirectoryThing is asked to do.
enum TempDirectoryType : std::uint32_t { TempDirectoryRemove = 1 };

// Makes an empty record in install. The caller ends it with InstallTerm and then releases it with ramFree. The paths
// are not stored. Returns 0, or 1 with install null when memory is short.
unsigned int InstallInit(unsigned int hwnd, _Install*& install, const unsigned char* infFile,
                         const unsigned char* srcPath);

// The place to make or remove a temporary directory. Does nothing and returns 0.
unsigned int DoTheTempDirectoryThing(unsigned int hwnd, _Install* install, unsigned char* path, TempDirectoryType kind);

// Releases everything the record owns and empties it. The record itself and anyFileInstalled stay: the outcome is read
// afterwards. Null is allowed.
void InstallTerm(_Install* install);

// Appends a component with a copy of name. A name that is there already is added again.
// Returns 0, or 1 with the record unchanged when memory is short.
unsigned int appendItem(_Install* install, std::string_view name, ItemKind kind);

// Releases the item's entries and sets their number to 0.
void releaseEntries(InstallItem& item);

inline std::span<InstallItem> itemsOf(const _Install& install) {
    return {install.items, install.itemCount};
}
inline std::span<InfEntry> entriesOf(const InstallItem& item) {
    return {item.entries, item.entryCount};
}

}  // namespace jx::install
