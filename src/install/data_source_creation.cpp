// The data sources a driver asks for when it is installed.
#include "install/data_source_creation.h"

#include <jxtext.h>

#include "config/configuration_file.h"
#include "config/profile_value.h"
#include "rules/sections.h"

namespace jx::install {

namespace {

void createDataSource(const unsigned char* name, const unsigned char* driverName) {
    const ConfigurationFile file = dataSourceFile();
    const unsigned char* driverKey = asBytes(INS_ODBCINI_DRIVER);
    file.clearAbsentList(asBytes(INS_ODBCINI_DS));
    file.write(asBytes(INS_ODBCINI_DS), name, driverName);
    file.removeSection(name);
    file.removeKey(name, driverKey);
    ProfileValue library;
    // Deliberate: a driver without a library leaves the default of the read in its data sources.
    library.read(driverName, driverKey, driverFile().name());
    if (!library.readFailed())
        file.write(name, driverKey, library.text());
}

unsigned char* skipBlanks(unsigned char* text) {
    while (*text == ' ')
        ++text;
    return text;
}

}  // namespace

void CreateDataSources(unsigned char* dataSourceList, const unsigned char* driverName) {
    unsigned char* name = dataSourceList;
    while (name != nullptr) {
        unsigned char* comma = strFind(name, static_cast<unsigned char>(','));
        if (comma != nullptr)
            *comma = 0;
        // Blanks before the comma are handed on; what a name may hold is the store's business.
        if (!rules::isReservedSection(asChars(name)))
            createDataSource(name, driverName);
        if (comma == nullptr)
            return;
        *comma = ' ';
        name = skipBlanks(comma);
    }
}

}  // namespace jx::install
