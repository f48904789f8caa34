// Registering one driver in .odbcinst.ini: the order of the steps.
#include "install/driver_installation.h"

#include <jxini.h>
#include <jxtext.h>

#include <array>

#include "config/configuration_file.h"
#include "config/configuration_run.h"
#include "config/sized_output.h"
#include "config/text_bytes.h"
#include "install/driver_description.h"
#include "install/driver_entries.h"
#include "install/target_path.h"

namespace jx::install {

namespace {

// Writes the entry of a key, whose quotes are cut off in a copy. False when there is no usable entry "Driver".
bool writeEntry(const unsigned char* infFile, unsigned char* description, const unsigned char* path,
                const char* quotedKey) {
    std::array<unsigned char, 50> key{};
    strCopy(key.data(), asBytes(quotedKey), key.size());
    return WriteTheDriverAndSetupEntryToTheOdbcInstIni(infFile, description, path, key.data()) != 0;
}

// Writes all entries as one change; false when there is no usable entry "Driver", or when they did not arrive.
bool writeEntries(const unsigned char* infFile, DriverDescription& description, const unsigned char* path) {
    ConfigurationRun run;
    if (!run.hasBegun() || !writeEntry(infFile, description.bytes(), path, "\"Driver\""))
        return false;
    // Deliberate: where the file of drivers cannot be opened or locked, nothing is registered and that is not reported.
    const bool isReported = driverFile().lockInRun() || jxIniLastFailure().step == JxIniStepMemory;
    writeEntry(infFile, description.bytes(), path, "\"Setup\"");
    WriteDriverKeysToOdbcInstIni(infFile, description.bytes());
    return run.commit() || !isReported;
}

}  // namespace

int installDriver(const unsigned char* infFile, const unsigned char* driver, unsigned char* path,
                  unsigned short pathSize, unsigned short* pathLength) {
    if (driver == nullptr || path == nullptr || pathSize == 0)
        return 0;
    DriverDescription description;
    if (!description.take(driver, infFile == nullptr ? DescriptionForm::keywordList : DescriptionForm::name) ||
        GetTargetPath(infFile, driver, path, pathSize, pathLength) != 0)
        return 0;
    if (!writeEntries(infFile, description, path)) {
        handOutText(asBytes(""), path, pathSize, pathLength);
        return 0;
    }
    return 1;
}

}  // namespace jx::install
