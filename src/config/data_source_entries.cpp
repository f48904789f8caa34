// Entering data sources in the two configuration files, and removing them.
#include "config/data_source_entries.h"

#include <odbcins.h>
#include <odbcinst.h>

#include <optional>

#include "config/configuration_file.h"
#include "config/configuration_run.h"
#include "config/text_bytes.h"
#include "rules/names.h"
#include "rules/sections.h"

using jx::asBytes;

namespace {

// Writes which driver a data source has: into the list of data sources, for the default one into the driver file.
int writeDriverOf(const unsigned char* dsn, const unsigned char* driver) {
    // Deliberate: here any spelling of "Default" is the default data source; removing it needs the exact spelling.
    if (jx::rules::isDefaultName(jx::asChars(dsn)))
        return jx::driverFile().write(asBytes(INS_ODBCINI_DEFAULT), asBytes(INS_ODBCINI_DRIVER), driver);
    return jx::dataSourceFile().write(asBytes(INS_ODBCINI_DS), dsn, driver);
}

// The result of the writes, or 0 when they did not arrive; without a result they are given up. What succeeded before a
// text that the store refuses is written.
template <typename Writes>
int asOneChange(Writes writes) {
    jx::ConfigurationRun run;
    if (!run.hasBegun())
        return 0;
    const std::optional<int> result = writes();
    return result && run.commit() ? *result : 0;
}

}  // namespace

int jx::replaceDataSource(OdbcIns& ins, unsigned char* dsn, unsigned char* driver) {
    return asOneChange([&] {
        // The removal below knows other spellings as ordinary names, and would lock the file of data sources first.
        if (dsn != nullptr && rules::isDefaultName(asChars(dsn)))
            driverFile().lockInRun();
        ins.jxSQLRemoveDSNFromIni(dsn);
        return ins.jxSQLWriteDSNToIni(dsn, driver);
    });
}

int OdbcIns::jxSQLWriteDSNToIni(unsigned char* dsn, unsigned char* driver) {
    // With a null driver the read would give the list of all sections; a null name would change other entries.
    if (dsn == nullptr || driver == nullptr)
        return 0;
    return asOneChange([&]() -> std::optional<int> {
        unsigned char path[1024] = {};
        if (jx::driverFile().read(driver, asBytes(INS_ODBCINI_DRIVER), path, sizeof path) == 0)
            return jx::readMayHaveMissed() ? std::nullopt : std::optional(0);
        const int written = writeDriverOf(dsn, driver);
        return written == 0 ? 0 : jx::dataSourceFile().write(dsn, asBytes(INS_ODBCINI_DRIVER), path);
    });
}

int OdbcIns::jxSQLRemoveDSNFromIni(unsigned char* dsn) {
    // A null name would delete the whole list of data sources.
    if (dsn == nullptr)
        return 0;
    // Deliberate: here only the exact spelling "Default" is the default data source; "default" is an ordinary name.
    const bool isDefault = jx::rules::trimmed(jx::asChars(dsn)) == INS_ODBCINI_DEFAULT;
    return asOneChange([&] {
        const int removed = isDefault ? jx::driverFile().removeSection(asBytes(INS_ODBCINI_DEFAULT))
                                      : jx::dataSourceFile().removeKey(asBytes(INS_ODBCINI_DS), dsn);
        return removed == 0 ? 0 : jx::dataSourceFile().removeSection(dsn);
    });
}

short OdbcIns::SQLRemoveDefaultDataSource() {
    // Deliberate: this writes an empty key, so nothing is removed. Programs call it before they enter a new default and
    // rely on the old one until then.
    return static_cast<short>(jx::dataSourceFile().write(asBytes(INS_ODBCINI_DEFAULT), asBytes(""), asBytes("")));
}
