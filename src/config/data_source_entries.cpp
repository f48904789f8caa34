// Entering, removing and checking data sources in the two configuration files.
#include <jxdialog.h>
#include <jxprofile.h>
#include <jxtext.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <cstdint>

#include "config/message_text.h"
#include "config/text_bytes.h"
#include "rules/names.h"
#include "rules/sections.h"

using jx::asBytes;

namespace {

constexpr unsigned short kUnknownDataSourceText = 55;

int writeDataSourceFile(const unsigned char* section, const unsigned char* key, const unsigned char* value) {
    return jxWritePrivateProfileString(section, key, value, asBytes(INS_ODBCINI_FILENAME));
}

int writeDriverFile(const unsigned char* section, const unsigned char* key, const unsigned char* value) {
    return jxWritePrivateProfileString(section, key, value, asBytes(INS_ODBCINST_FILENAME));
}

// Notes which driver a data source has: in the list of data sources, or for the default one beside the drivers.
int writeDriverOf(const unsigned char* dsn, const unsigned char* driver) {
    // Deliberate: any spelling of "Default" is the default data source here, although removing one asks for the exact
    // spelling.
    if (jx::rules::isDefaultName(jx::asChars(dsn)))
        return writeDriverFile(asBytes(INS_ODBCINI_DEFAULT), asBytes(INS_ODBCINI_DRIVER), driver);
    return writeDataSourceFile(asBytes(INS_ODBCINI_DS), dsn, driver);
}

}  // namespace

int OdbcIns::jxSQLWriteDSNToIni(unsigned char* dsn, unsigned char* driver) {
    // A null driver would read the list of all sections, a null name delete or overwrite what is not a data source.
    if (dsn == nullptr || driver == nullptr)
        return 0;
    unsigned char path[1024] = {};
    if (jxGetPrivateProfileString(driver, asBytes(INS_ODBCINI_DRIVER), asBytes(""), path, sizeof path,
                                  asBytes(INS_ODBCINST_FILENAME)) == 0)
        return 0;
    const int written = writeDriverOf(dsn, driver);
    if (written == 0)
        return 0;
    return writeDataSourceFile(dsn, asBytes(INS_ODBCINI_DRIVER), path);
}

int OdbcIns::jxSQLRemoveDSNFromIni(unsigned char* dsn) {
    // A null name would delete the whole list of data sources.
    if (dsn == nullptr)
        return 0;
    // Deliberate: only the exact spelling "Default" is the default data source here; "default" is an ordinary name.
    const bool isDefault = jx::rules::trimmed(jx::asChars(dsn)) == INS_ODBCINI_DEFAULT;
    const int removed = isDefault ? writeDriverFile(asBytes(INS_ODBCINI_DEFAULT), nullptr, nullptr)
                                  : writeDataSourceFile(asBytes(INS_ODBCINI_DS), dsn, nullptr);
    return removed == 0 ? 0 : writeDataSourceFile(dsn, nullptr, nullptr);
}

int OdbcIns::jxSQLValidDSN(const char* dsn) {
    ResetData(ResetKeepAddedFlag);
    GetDataSourceNames();
    for (std::uint32_t row = 0; dsn != nullptr && row < entryCount; ++row) {
        if (BUTSTCMP(asBytes(dsn), entries[row].name) == 0)
            return 1;
    }
    unsigned char text[255] = {};
    JXW_LoadString(BJXHINST, kUnknownDataSourceText, text, sizeof text);
    jx::showMessage(/*owner=*/0, text, MB_OK | MB_ICONSTOP);
    return 0;
}

short OdbcIns::SQLRemoveDefaultDataSource() {
    // Deliberate: this writes an empty key, which the store takes as done. It removes nothing; programs that call it
    // before they enter a new default rely on the old one being there until then.
    return static_cast<short>(writeDataSourceFile(asBytes(INS_ODBCINI_DEFAULT), asBytes(""), asBytes("")));
}
