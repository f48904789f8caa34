// The entries a driver's section gets: its two libraries and its further keys.
#include "install/driver_entries.h"

#include <jxfiles.h>
#include <jxtext.h>

#include <array>
#include <string_view>

#include "config/configuration_file.h"
#include "config/configuration_run.h"
#include "config/profile_value.h"
#include "install/bounded_text.h"
#include "install/data_source_creation.h"
#include "install/driver_description.h"
#include "install/script.h"
#include "install/script_line.h"
#include "rules/sections.h"

namespace jx::install {

namespace {

constexpr std::string_view kQuotedDriverKey = "\"Driver\"";

using FileName = BoundedText<ProfileValue::kSize>;

// The longest library value: a directory, a slash, a base name, a dot and an extension.
using LibraryPath = BoundedText<ProfileValue::kSize + kBosBaseNameSize + kBosExtensionSize>;

// Takes the file's name from the script's line for key, which needs only two fields here; false without such a line.
bool fileFromScript(const unsigned char* infFile, const unsigned char* section, const unsigned char* key,
                    FileName& file) {
    ProfileValue value;
    if (!Script(infFile).read(section, key, value))
        return false;
    const ScriptLine line(value.view());
    const std::string_view name = line.field(ScriptLine::kFileName);
    // Blanks behind the name would count as part of its extension.
    return line.fieldCount() > ScriptLine::kFileName && file.append(name.substr(0, name.find_last_not_of(' ') + 1));
}

// Takes the file's name from the list's text at position; false when that text is not a pair of this key.
bool fileFromList(unsigned char* list, std::string_view key, unsigned position, FileName& file) {
    const std::string_view pair = viewOf(keywordText(list, position));
    const std::size_t equals = pair.find('=');
    return equals != std::string_view::npos && pair.substr(0, equals) == key && file.append(pair.substr(equals + 1));
}

// Puts the library's file name behind directory path; false when the name or the result is too long.
bool buildLibraryPath(const unsigned char* path, FileName& file, LibraryPath& library) {
    std::array<unsigned char, kBosBaseNameSize> baseName{};
    std::array<unsigned char, kBosExtensionSize> extension{};
    // Deliberate: the directory that the file is given with is dropped, and a name without an extension ends in a dot.
    return bosParseName(file.text(), baseName.data(), extension.data(), 0) != 0 && library.append(viewOf(path)) &&
           library.append("/") && library.append(viewOf(baseName.data())) && library.append(".") &&
           library.append(viewOf(extension.data()));
}

void writeKeysOfList(unsigned char* list) {
    unsigned char* next = nullptr;
    for (unsigned char* text = list; *text != 0; text = next) {
        next = text + BUTSTLEN(text) + 1;
        unsigned char* equals = strFind(text, static_cast<unsigned char>('='));
        if (equals == nullptr)
            continue;
        // Deliberate: a description that holds "=" is cut here too; the keys behind it go to a section of the shorter
        // name.
        *equals = 0;
        const std::string_view key = viewOf(text);
        if (key == kCapabilityKeys[kCreateDsn])
            CreateDataSources(equals + 1, list);
        else if (key != INS_ODBCINI_DRIVER && key != rules::kSetup)
            driverFile().write(list, text, equals + 1);
    }
}

void writeKeysOfScript(const unsigned char* infFile, const unsigned char* driver) {
    ConfigurationRun run;
    const bool isComplete =
        Script(infFile).readCapabilities(viewOf(driver), [&](std::size_t place, ProfileValue& value) {
            // Deliberate: the key CreateDSN is stored like any other; only the value "CreateDSN" creates a data source.
            if (value.view() == kCapabilityKeys[kCreateDsn])
                CreateDataSources(value.text(), driver);
            else
                driverFile().write(driver, asBytes(kCapabilityKeys[place]), value.text());
            return true;
        });
    if (isComplete)
        run.commit();
}

}  // namespace

int WriteTheDriverAndSetupEntryToTheOdbcInstIni(const unsigned char* lpszInfFile, unsigned char* driverList,
                                                const unsigned char* lpszPath, unsigned char* keyName) {
    ConfigurationRun run;
    const bool isDriver = viewOf(keyName) == kQuotedDriverKey;
    const std::string_view bareKey = isDriver ? INS_ODBCINI_DRIVER : rules::kSetup;
    FileName file;
    LibraryPath library;
    const bool named = lpszInfFile != nullptr
                           ? fileFromScript(lpszInfFile, driverList, keyName, file)
                           : fileFromList(driverList, bareKey, isDriver ? kDriverText : kSetupText, file);
    if (!named || !buildLibraryPath(lpszPath, file, library)) {
        // A line of the script that could not be read may name a library: the run is given up.
        if (lpszInfFile == nullptr || !readMayHaveMissed())
            run.commit();
        return isDriver ? 0 : 1;
    }
    keyName[BUTSTLEN(keyName) - 1] = 0;
    driverFile().write(driverList, keyName + 1, library.text());
    if (isDriver)
        driverFile().write(driverList, asBytes(rules::kSetup), library.text());
    run.commit();
    return 1;
}

void WriteDriverKeysToOdbcInstIni(const unsigned char* lpszInfFile, unsigned char* driverList) {
    if (lpszInfFile == nullptr)
        writeKeysOfList(driverList);
    else
        writeKeysOfScript(lpszInfFile, driverList);
}

}  // namespace jx::install
