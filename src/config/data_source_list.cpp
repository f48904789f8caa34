// Building the data source list: names, then drivers.
#include <jxmemory.h>
#include <jxprofile.h>
#include <jxtext.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "config/data_source_rows.h"
#include "config/key_list.h"
#include "config/text_bytes.h"

using jx::asBytes;

namespace {

// A heap copy of text; null when memory is short.
unsigned char* heapCopy(std::string_view text) {
    auto* copy = static_cast<unsigned char*>(ramAllocZ(text.size() + 1));
    if (copy != nullptr)
        std::memcpy(copy, text.data(), text.size());
    return copy;
}

// Reads the default data source's driver description, cut at size - 1 bytes; returns its length.
int readDefaultDriver(unsigned char* buffer, int size) {
    return jxGetPrivateProfileString(asBytes(INS_ODBCINI_DEFAULT), asBytes(INS_ODBCINI_DRIVER), asBytes(""), buffer,
                                     size, asBytes(INS_ODBCINST_FILENAME));
}

bool defaultExists() {
    unsigned char driver[50] = {};
    return readDefaultDriver(driver, sizeof driver) != 0;
}

// Fills the rows' names from items that may be keys or key=value; false when memory is short.
bool fillNames(DataSourceEntry* rows, jx::NameList items) {
    for (std::string_view item = items.next(); !item.empty(); item = items.next(), ++rows) {
        rows->name = heapCopy(item.substr(0, item.find('=')));
        if (rows->name == nullptr)
            return false;
    }
    return true;
}

// Puts a heap copy of driver into a row in place of what it held.
void setDriver(DataSourceEntry& row, const unsigned char* driver) {
    ramFree(row.driver);
    row.driver = ramAllocStr(driver);
}

}  // namespace

unsigned int OdbcIns::GetDataSourceNames() {
    const jx::KeyList keys(asBytes(INS_ODBCINI_DS), "", asBytes(INS_ODBCINI_FILENAME));
    const std::size_t named = keys.names().count();
    entryCount = 0;
    // Deliberate: a default data source alone is not listed, and hasDefault is then left as it was.
    if (named == 0)
        return 1;
    hasDefault = defaultExists() ? 1 : 0;
    const std::size_t count = named + hasDefault;
    auto* rows = static_cast<DataSourceEntry*>(ramAllocZ(count * sizeof(DataSourceEntry)));
    if (rows == nullptr)
        return 1;
    bool complete = fillNames(rows, keys.names());
    if (complete && hasDefault != 0)
        complete = (rows[named].name = heapCopy(INS_ODBCINI_DEFAULT)) != nullptr;
    if (!complete) {
        jx::releaseRows(rows, count);
        return 1;
    }
    entries = rows;
    entryCount = static_cast<std::uint32_t>(count);
    return 0;
}

unsigned int OdbcIns::GetDriverNames() {
    // An empty list may stand beside a hasDefault of an earlier one.
    if (entryCount == 0 || entries == nullptr)
        return 0;
    const auto named = static_cast<std::uint16_t>(entryCount - (hasDefault != 0 ? 1 : 0));
    unsigned char driver[1024];
    for (std::uint16_t row = 0; row < named; ++row) {
        // Without a name the read would give the list of all data sources.
        if (entries[row].name == nullptr)
            continue;
        std::memset(driver, 0, sizeof driver);
        jxGetPrivateProfileString(asBytes(INS_ODBCINI_DS), entries[row].name, asBytes(""), driver, sizeof driver,
                                  asBytes(INS_ODBCINI_FILENAME));
        setDriver(entries[row], driver);
    }
    if (hasDefault != 0) {
        std::memset(driver, 0, sizeof driver);
        readDefaultDriver(driver, sizeof driver);
        setDriver(entries[named], driver);
    }
    return 0;
}
