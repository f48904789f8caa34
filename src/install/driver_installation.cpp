// Registering one driver: the order of the steps, and the directory that is returned to the caller.
#include "install/driver_installation.h"

#include <jxfiles.h>
#include <jxtext.h>
#include <odbcinst.h>

#include <array>
#include <string_view>

#include "config/message_box.h"
#include "config/text_bytes.h"
#include "install/driver_description.h"
#include "install/owned_text.h"
#include "install/profile_text.h"

namespace jx::install {

namespace {

constexpr std::string_view kDriverKeyword = "Driver";
constexpr std::size_t kKeyNameSize = 50;

// The text behind '=' of the list's second text, or null after a message.
const unsigned char* driverFileOf(const unsigned char* list) {
    DriverDescription copy;
    const bool isList = copy.take(list, DescriptionForm::keywordList);
    const unsigned char* pair = list + (keywordText(copy.bytes(), kDriverText) - copy.bytes());
    // Deliberate: only the first six characters count, so "DriverODBCVer=" passes here and fails at the entry.
    if (!isList || viewOf(pair).substr(0, kDriverKeyword.size()) != kDriverKeyword) {
        showMessage(0, asBytes("Driver keyword was not found in the lpszDriver parameter"), MB_OK);
        return nullptr;
    }
    const unsigned char* equals = strFind(pair, static_cast<unsigned char>('='));
    if (equals == nullptr) {
        showMessage(0, asBytes("Missing '=' after 'Driver' keyword the lpszDriver parameter"), MB_OK);
        return nullptr;
    }
    return equals + 1;
}

// Leaves the directory of the path in file; false when the file's name is too long.
bool keepDirectory(unsigned char* file) {
    std::array<unsigned char, kBosBaseNameSize> baseName{};
    std::array<unsigned char, kBosExtensionSize> extension{};
    return bosParseName(file, baseName.data(), extension.data(), 0) != 0;
}

void handOver(const unsigned char* directory, unsigned char* path, unsigned short pathSize,
              unsigned short* pathLength) {
    const std::size_t length = strCopy(path, directory, pathSize);
    if (pathLength != nullptr)
        *pathLength = static_cast<unsigned short>(length);
}

void handOverNothing(unsigned char* path, unsigned short* pathLength) {
    path[0] = 0;
    if (pathLength != nullptr)
        *pathLength = 0;
}

// Writes the entry named by quotedKey; the routine that does it cuts the key, so it works on a copy.
int writeEntry(const unsigned char* infFile, DriverDescription& description, const unsigned char* path,
               const char* quotedKey) {
    std::array<unsigned char, kKeyNameSize> key{};
    strCopy(key.data(), asBytes(quotedKey), key.size());
    return WriteTheDriverAndSetupEntryToTheOdbcInstIni(infFile, description.bytes(), path, key.data());
}

}  // namespace

unsigned int GetTargetPath(const unsigned char* lpszInfFile, const unsigned char* lpszDriver, unsigned char* lpszPath,
                           unsigned short cbPathMax, unsigned short* pcbPathOut) {
    ProfileText file;
    if (lpszInfFile != nullptr) {
        // Deliberate: a driver that is not registered yet gets the directory "NOT AVAILABLE".
        const bool registered = file.read(lpszDriver, asBytes(INS_ODBCINI_DRIVER), asBytes(INS_ODBCINST_FILENAME));
        if (file.readFailed() || (registered && !keepDirectory(file.text())))
            return 1;
    } else {
        const unsigned char* named = driverFileOf(lpszDriver);
        if (named == nullptr)
            return 1;
        strCopy(file.text(), named, kProfileTextSize);
        if (!keepDirectory(file.text()))
            return 1;
    }
    handOver(file.text(), lpszPath, cbPathMax, pcbPathOut);
    return 0;
}

int installDriver(const unsigned char* infFile, const unsigned char* driver, unsigned char* path,
                  unsigned short pathSize, unsigned short* pathLength) {
    if (driver == nullptr || path == nullptr || pathSize == 0)
        return 0;
    const DescriptionForm form = infFile == nullptr ? DescriptionForm::keywordList : DescriptionForm::name;
    DriverDescription description;
    if (!description.take(driver, form) || GetTargetPath(infFile, driver, path, pathSize, pathLength) != 0)
        return 0;
    if (writeEntry(infFile, description, path, "\"Driver\"") == 0) {
        handOverNothing(path, pathLength);
        return 0;
    }
    description.take(driver, form);
    writeEntry(infFile, description, path, "\"Setup\"");
    description.take(driver, form);
    WriteDriverKeysToOdbcInstIni(infFile, description.bytes());
    return 1;
}

}  // namespace jx::install
