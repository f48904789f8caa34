// The data sources a driver asks for when it is installed.
#include <jxtext.h>
#include <odbcinst.h>

#include "config/text_bytes.h"
#include "install/configuration_update.h"
#include "install/owned_text.h"
#include "install/profile_text.h"
#include "rules/sections.h"

namespace jx::install {

namespace {

void write(const unsigned char* section, const unsigned char* key, const unsigned char* value) {
    jxWritePrivateProfileString(section, key, value, asBytes(INS_ODBCINI_FILENAME));
}

void createDataSource(const unsigned char* name, const unsigned char* driverName) {
    const unsigned char* list = asBytes(INS_ODBCINI_DS);
    const unsigned char* driverKey = asBytes(INS_ODBCINI_DRIVER);
    ProfileText text;
    // Deliberate: a list that reads as absent is cleared first, as that of the drivers is.
    if (!text.read(list, nullptr, asBytes(INS_ODBCINI_FILENAME)) && !text.readFailed())
        write(list, nullptr, nullptr);
    write(list, name, driverName);
    write(name, nullptr, nullptr);
    write(name, driverKey, nullptr);
    // Deliberate: a driver without a library leaves the default of the read in its data sources.
    text.read(driverName, driverKey, asBytes(INS_ODBCINST_FILENAME));
    if (!text.readFailed())
        write(name, driverKey, text.text());
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
