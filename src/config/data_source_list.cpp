// The data source list: names, drivers, and the texts that dialogs show.
#include "config/data_source_list.h"

#include <jxmemory.h>
#include <jxtext.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

#include <text_ids.h>
#include "config/configuration_file.h"
#include "config/key_list.h"
#include "config/message_box.h"
#include "config/text_bytes.h"

using jx::asBytes;

namespace jx {

void releaseRows(DataSourceEntry* rows, std::size_t count) {
    if (rows == nullptr)
        return;
    for (std::size_t row = 0; row < count; ++row) {
        ramFree(rows[row].name);
        ramFree(rows[row].driver);
        ramFree(rows[row].display);
    }
    ramFree(rows);
}

}  // namespace jx

namespace {

constexpr int kDriverSize = 1024;

// Reads the driver of the default data source, cut at sizeInBytes - 1 bytes; returns its length.
int readDefaultDriver(unsigned char* buffer, int sizeInBytes) {
    return jx::driverFile().read(asBytes(INS_ODBCINI_DEFAULT), asBytes(INS_ODBCINI_DRIVER), buffer, sizeInBytes);
}

bool defaultExists() {
    unsigned char driver[50] = {};
    return readDefaultDriver(driver, sizeof driver) != 0;
}

// Fills in the names of the rows, the default data source's last if there is one; false when memory is short.
bool fillNames(DataSourceEntry* rows, jx::KeyList& names, bool hasDefault) {
    for (const unsigned char* name = names.next(); name != nullptr; name = names.next(), ++rows) {
        rows->name = ramAllocStr(name);
        if (rows->name == nullptr)
            return false;
    }
    return !hasDefault || (rows->name = ramAllocStr(asBytes(INS_ODBCINI_DEFAULT))) != nullptr;
}

// Replaces the driver of a row by a heap copy of driver.
void setDriver(DataSourceEntry& row, const unsigned char* driver) {
    ramFree(row.driver);
    row.driver = ramAllocStr(driver);
}

// "name (driver)" as a new heap block; null when memory is short. Null texts are empty.
unsigned char* displayText(const unsigned char* name, const unsigned char* driver) {
    auto* display = static_cast<unsigned char*>(ramAllocZ(BUTSTLEN(name) + BUTSTLEN(driver) + 5));
    if (display == nullptr)
        return nullptr;
    for (const unsigned char* part : {name, asBytes(" ("), driver, asBytes(")")}) {
        if (part != nullptr)
            BUTSTCAT(display, part);
    }
    return display;
}

}  // namespace

unsigned int OdbcIns::GetDataSourceNames() {
    jx::KeyList names(asBytes(INS_ODBCINI_DS), "", jx::dataSourceFile().name(), jx::LastKey::whole);
    const std::size_t named = names.names().count();
    entryCount = 0;
    // Deliberate: without other data sources the default one is not listed either, and hasDefault is not changed.
    if (named == 0)
        return 1;
    hasDefault = defaultExists() ? 1 : 0;
    const std::size_t count = named + hasDefault;
    auto* rows = static_cast<DataSourceEntry*>(ramAllocZ(count * sizeof(DataSourceEntry)));
    if (rows == nullptr)
        return 1;
    if (!fillNames(rows, names, hasDefault != 0)) {
        jx::releaseRows(rows, count);
        return 1;
    }
    entries = rows;
    entryCount = static_cast<std::uint32_t>(count);
    return 0;
}

unsigned int OdbcIns::GetDriverNames() {
    // hasDefault may be left from an earlier list.
    if (entryCount == 0 || entries == nullptr)
        return 0;
    const auto named = static_cast<std::uint16_t>(entryCount - (hasDefault != 0 ? 1 : 0));
    unsigned char driver[kDriverSize];
    for (std::uint16_t row = 0; row < named; ++row) {
        // With a null name the read would give the list of all data sources.
        if (entries[row].name == nullptr)
            continue;
        std::memset(driver, 0, sizeof driver);
        jx::dataSourceFile().read(asBytes(INS_ODBCINI_DS), entries[row].name, driver, kDriverSize);
        setDriver(entries[row], driver);
    }
    if (hasDefault != 0) {
        std::memset(driver, 0, sizeof driver);
        readDefaultDriver(driver, kDriverSize);
        setDriver(entries[named], driver);
    }
    return 0;
}

unsigned int OdbcIns::ConcatenateNames() {
    for (std::uint32_t row = 0; entries != nullptr && row < entryCount; ++row) {
        // Deliberate: an earlier display text is not released, since a caller may still use it.
        entries[row].display = displayText(entries[row].name, entries[row].driver);
    }
    return 0;
}

int OdbcIns::jxSQLValidDSN(const char* dsn) {
    ResetData(ResetKeepAddedFlag);
    GetDataSourceNames();
    for (std::uint32_t row = 0; dsn != nullptr && row < entryCount; ++row) {
        if (BUTSTCMP(asBytes(dsn), entries[row].name) == 0)
            return 1;
    }
    unsigned char text[255] = {};
    JXW_LoadString(BJXHINST, JxTextUnknownDataSource, text, sizeof text);
    jx::showMessage(/*owner=*/0, text, MB_OK | MB_ICONSTOP);
    return 0;
}
