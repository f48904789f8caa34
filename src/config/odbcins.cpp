// The installer object: how it begins, ends and is cleared.
#include <odbcins.h>

#include <cstring>

#include "config/data_source_list.h"

// Every field gets a value, although only the list and the flag must: a host that calls members out of their order then
// meets null pointers, which are refused, instead of whatever its stack held.
OdbcIns::OdbcIns()
    : dataSourceName{},
      driverName{},
      pfnConfigDSN(nullptr),
      pfnConfigTranslator(nullptr),
      hSetupLib(nullptr),
      selectedIndex(0),
      dataSourceAdded(0),
      entryCount(0),
      entries(nullptr),
      hasDefault(0) {}

// Deliberate: frees neither the list nor a setup library; the members that made them release them.
OdbcIns::~OdbcIns() = default;

unsigned int OdbcIns::ResetData(ResetDataType type) {
    selectedIndex = 0;
    std::memset(dataSourceName, 0, sizeof dataSourceName);
    std::memset(driverName, 0, sizeof driverName);
    if (entryCount != 0) {
        // Deliberate: entries and hasDefault keep their values; the count alone says that the list is empty.
        jx::releaseRows(entries, entryCount);
        entryCount = 0;
    }
    if (type != ResetKeepAddedFlag)
        dataSourceAdded = 0;
    return 0;
}
