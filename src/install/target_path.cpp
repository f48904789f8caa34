// The directory in which a driver is registered.
#include "install/target_path.h"

#include <jxfiles.h>
#include <jxtext.h>

#include <array>
#include <string_view>

#include "config/configuration_file.h"
#include "config/message_box.h"
#include "config/profile_value.h"
#include "config/sized_output.h"
#include "install/driver_description.h"

namespace jx::install {

namespace {

constexpr std::string_view kDriverKeyword = "Driver";

// The path in the second text of the list. Null, after a message, when that text names no driver file.
const unsigned char* driverFileOf(const unsigned char* list) {
    DriverDescription copy;
    const bool isList = copy.take(list, DescriptionForm::keywordList);
    const unsigned char* pair = list + (keywordText(copy.bytes(), kDriverText) - copy.bytes());
    // Deliberate: only the first six characters count. "DriverODBCVer=" passes here and fails when the entry is
    // written.
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

// Cuts the path in file down to its directory; false when the file name is too long.
bool keepDirectory(unsigned char* file) {
    std::array<unsigned char, kBosBaseNameSize> baseName{};
    std::array<unsigned char, kBosExtensionSize> extension{};
    return bosParseName(file, baseName.data(), extension.data(), 0) != 0;
}

// Cuts the path of a registered library down to its directory, however long the file's name is.
void keepDirectoryOfRegistered(unsigned char* file) {
    const std::size_t slash = viewOf(file).rfind('/');
    file[slash == std::string_view::npos ? 0 : slash + 1] = 0;
    keepDirectory(file);
}

}  // namespace

unsigned int GetTargetPath(const unsigned char* lpszInfFile, const unsigned char* lpszDriver, unsigned char* lpszPath,
                           unsigned short cbPathMax, unsigned short* pcbPathOut) {
    ProfileValue file;
    if (lpszInfFile != nullptr) {
        // Deliberate: a driver that is not registered yet gets the directory "NOT AVAILABLE".
        const bool registered = file.read(lpszDriver, asBytes(INS_ODBCINI_DRIVER), driverFile().name());
        if (readMayHaveMissed())
            return 1;
        if (registered)
            keepDirectoryOfRegistered(file.text());
    } else {
        const unsigned char* named = driverFileOf(lpszDriver);
        if (named == nullptr)
            return 1;
        strCopy(file.text(), named, ProfileValue::kSize);
        if (!keepDirectory(file.text()))
            return 1;
    }
    handOutText(file.text(), lpszPath, cbPathMax, pcbPathOut);
    return 0;
}

}  // namespace jx::install
