// Registering one driver in .odbcinst.ini: the order of the steps.
#include "install/driver_installation.h"

#include <jxtext.h>

#include <array>

#include "config/sized_output.h"
#include "config/text_bytes.h"
#include "install/driver_description.h"
#include "install/driver_entries.h"
#include "install/target_path.h"

namespace jx::install {

namespace {

// Writes the entry of a key, whose quotes are cut off in a copy. False when there is no usable entry "Driver".
bool writeEntry(const unsigned char* infFile, DriverDescription& description, const unsigned char* path,
                const char* quotedKey) {
    std::array<unsigned char, 50> key{};
    strCopy(key.data(), asBytes(quotedKey), key.size());
    return WriteTheDriverAndSetupEntryToTheOdbcInstIni(infFile, description.bytes(), path, key.data()) != 0;
}

}  // namespace

int installDriver(const unsigned char* infFile, const unsigned char* driver, unsigned char* path,
                  unsigned short pathSize, unsigned short* pathLength) {
    if (driver == nullptr || path == nullptr || pathSize == 0)
        return 0;
    const DescriptionForm form = infFile == nullptr ? DescriptionForm::keywordList : DescriptionForm::name;
    DriverDescription description;
    if (!description.take(driver, form) || GetTargetPath(infFile, driver, path, pathSize, pathLength) != 0)
        return 0;
    if (!writeEntry(infFile, description, path, "\"Driver\"")) {
        handOutText(asBytes(""), path, pathSize, pathLength);
        return 0;
    }
    // Each step writes into the description, so the next one gets a fresh copy.
    description.take(driver, form);
    writeEntry(infFile, description, path, "\"Setup\"");
    description.take(driver, form);
    WriteDriverKeysToOdbcInstIni(infFile, description.bytes());
    return 1;
}

}  // namespace jx::install
