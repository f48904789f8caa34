// Data source lists of an OdbcIns, made by hand.
#pragma once

#include <jxmemory.h>
#include <odbcins.h>

#include <initializer_list>
#include <utility>

namespace jx::test {

// A copy as lists own them; null stays null.
inline unsigned char* heapCopy(const char* text) {
    return ramAllocStr(reinterpret_cast<const unsigned char*>(text));
}

// Gives ins a list of rows with names and drivers (null stays null).
inline void setRows(OdbcIns& ins, std::initializer_list<std::pair<const char*, const char*>> rows) {
    ins.entries = static_cast<DataSourceEntry*>(ramAllocZ(rows.size() * sizeof(DataSourceEntry)));
    ins.entryCount = 0;
    for (const auto& [name, driver] : rows) {
        ins.entries[ins.entryCount].name = heapCopy(name);
        ins.entries[ins.entryCount].driver = heapCopy(driver);
        ++ins.entryCount;
    }
}

}  // namespace jx::test
