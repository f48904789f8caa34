// The data sources a driver asks for when it is installed.
#include "install/data_source_creation.h"

#include <jxtext.h>

#include "config/configuration_file.h"
#include "config/configuration_run.h"
#include "config/profile_value.h"
#include "rules/sections.h"

namespace jx::install {

namespace {

// False when the driver's library cannot be read.
bool createDataSource(const unsigned char* name, const unsigned char* driverName) {
    const ConfigurationFile file = dataSourceFile();
    const unsigned char* driverKey = asBytes(INS_ODBCINI_DRIVER);
    file.clearAbsentList(asBytes(INS_ODBCINI_DS));
    file.write(asBytes(INS_ODBCINI_DS), name, driverName);
    file.removeSection(name);
    file.removeKey(name, driverKey);
    ProfileValue library;
    // Deliberate: the data sources of a driver without a library get "NOT AVAILABLE", the default of this read.
    library.read(driverName, driverKey, driverFile().name());
    if (library.readFailed())
        return false;
    file.write(name, driverKey, library.text());
    return true;
}

unsigned char* skipBlanks(unsigned char* text) {
    while (*text == ' ')
        ++text;
    return text;
}

}  // namespace

void CreateDataSources(unsigned char* dataSourceList, const unsigned char* driverName) {
    ConfigurationRun run;
    // A driver's own entry may have been refused, so nothing else is sure to have locked this file first.
    driverFile().lockInRun();
    bool areCreated = true;
    unsigned char* name = dataSourceList;
    while (name != nullptr) {
        unsigned char* comma = strFind(name, static_cast<unsigned char>(','));
        if (comma != nullptr)
            *comma = 0;
        // Blanks before the comma stay part of the name; the store trims them.
        if (!rules::isReservedSection(asChars(name)))
            areCreated = createDataSource(name, driverName) && areCreated;
        if (comma == nullptr)
            break;
        *comma = ' ';
        name = skipBlanks(comma);
    }
    if (areCreated)
        run.commit();
}

}  // namespace jx::install
