// The entries a driver's section gets: its two libraries and its further keys.
#include <jxfiles.h>
#include <jxtext.h>
#include <odbcinst.h>

#include <array>
#include <string_view>

#include "config/capability_keys.h"
#include "config/text_bytes.h"
#include "install/bounded_text.h"
#include "install/configuration_update.h"
#include "install/driver_description.h"
#include "install/driver_installation.h"
#include "install/owned_text.h"
#include "install/profile_text.h"

namespace jx::install {

namespace {

constexpr char kSetupKey[] = "Setup";
constexpr std::string_view kQuotedDriverKey = "\"Driver\"";

// The longest library value: a directory, a slash, a base name, a dot and an extension.
constexpr std::size_t kLibrarySize = kProfileTextSize + kBosBaseNameSize + kBosExtensionSize;
using LibraryPath = BoundedText<kLibrarySize>;

void writeKey(const unsigned char* section, const unsigned char* key, const unsigned char* value) {
    jxWritePrivateProfileString(section, key, value, asBytes(INS_ODBCINST_FILENAME));
}

// Field 1 of the script's line for key: what stands between the first two commas, without leading blanks. False when
// the script has no such line or the line has fewer commas.
bool fileFromScript(const unsigned char* infFile, const unsigned char* section, const unsigned char* key,
                    ProfileText& file) {
    ProfileText line;
    if (!line.read(section, key, infFile))
        return false;
    const std::string_view value = viewOf(line.text());
    const std::size_t first = value.find(',');
    if (first == std::string_view::npos)
        return false;
    const std::size_t begin = value.find_first_not_of(' ', first + 1);
    const std::size_t second = value.find(',', first + 1);
    if (second == std::string_view::npos)
        return false;
    line.text()[second] = 0;
    strCopy(file.text(), line.text() + begin, kProfileTextSize);
    return true;
}

// What stands behind '=' of the list's text for key, which is found by its place; false when another key or no '='
// stands there.
bool fileFromList(unsigned char* list, std::string_view key, unsigned position, ProfileText& file) {
    unsigned char* pair = keywordText(list, position);
    unsigned char* value = cutAtEquals(pair);
    if (value == nullptr)
        return false;
    const bool isKey = viewOf(pair) == key;
    value[-1] = '=';
    strCopy(file.text(), value, kProfileTextSize);
    return isKey;
}

// The library's file name in directory path; false when the name or the whole is too long.
bool buildLibraryPath(const unsigned char* path, unsigned char* file, LibraryPath& library) {
    std::array<unsigned char, kBosBaseNameSize> baseName{};
    std::array<unsigned char, kBosExtensionSize> extension{};
    // Deliberate: a name without an extension keeps the dot, and the file's own directory is dropped.
    return bosParseName(file, baseName.data(), extension.data(), 0) != 0 && library.append(viewOf(path)) &&
           library.append("/") && library.append(viewOf(baseName.data())) && library.append(".") &&
           library.append(viewOf(extension.data()));
}

void writeKeysOfList(unsigned char* list) {
    unsigned char* next = nullptr;
    for (unsigned char* text = list; *text != 0; text = next) {
        next = textAfter(text);
        // Deliberate: a description that holds '=' is cut here too, and the rest of the list goes to the shorter name.
        unsigned char* value = cutAtEquals(text);
        if (value == nullptr)
            continue;
        const std::string_view key = viewOf(text);
        if (key == kCapabilityKeys[kCreateDsn])
            CreateDataSources(value, list);
        else if (key != INS_ODBCINI_DRIVER && key != kSetupKey)
            writeKey(list, text, value);
    }
}

void writeKeysOfScript(const unsigned char* infFile, const unsigned char* driver) {
    BoundedText<kDescriptionSize + 5> section;
    ProfileText value;
    if (!section.append(viewOf(driver)) || !section.append("-Keys") || !value.read(section.text(), nullptr, infFile))
        return;
    for (const char* key : kCapabilityKeys) {
        if (!value.read(section.text(), asBytes(key), infFile))
            continue;
        // Deliberate: it is a value of this text that creates a data source; the key CreateDSN is stored as it stands.
        if (viewOf(value.text()) == kCapabilityKeys[kCreateDsn])
            CreateDataSources(value.text(), driver);
        else
            writeKey(driver, asBytes(key), value.text());
    }
}

}  // namespace

int WriteTheDriverAndSetupEntryToTheOdbcInstIni(const unsigned char* lpszInfFile, unsigned char* driverList,
                                                const unsigned char* lpszPath, unsigned char* keyName) {
    const bool isDriver = viewOf(keyName) == kQuotedDriverKey;
    const int withoutEntry = isDriver ? 0 : 1;
    const std::string_view bareKey = isDriver ? INS_ODBCINI_DRIVER : kSetupKey;
    ProfileText file;
    LibraryPath library;
    const bool named = lpszInfFile != nullptr
                           ? fileFromScript(lpszInfFile, driverList, keyName, file)
                           : fileFromList(driverList, bareKey, isDriver ? kDriverText : kSetupText, file);
    if (!named || !buildLibraryPath(lpszPath, file.text(), library))
        return withoutEntry;
    keyName[BUTSTLEN(keyName) - 1] = 0;
    writeKey(driverList, keyName + 1, library.text());
    if (isDriver)
        writeKey(driverList, asBytes(kSetupKey), library.text());
    return 1;
}

void WriteDriverKeysToOdbcInstIni(const unsigned char* lpszInfFile, unsigned char* driverList) {
    if (lpszInfFile == nullptr)
        writeKeysOfList(driverList);
    else
        writeKeysOfScript(lpszInfFile, driverList);
}

}  // namespace jx::install
