// The installer object: constructor, destructor, and ResetData.
#include <odbcins.h>

#include <cstring>

#include "config/data_source_list.h"

// Only the list and the flag need values. The other fields get them too: if a host calls the members in a wrong order,
// they find null pointers, which they refuse.
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

// Deliberate: releases neither the list nor a setup library. ResetData and the members that load a library do that.
OdbcIns::~OdbcIns() = default;

unsigned int OdbcIns::ResetData(ResetDataType type) {
    selectedIndex = 0;
    std::memset(dataSourceName, 0, sizeof dataSourceName);
    std::memset(driverName, 0, sizeof driverName);
    if (entryCount != 0) {
        // Deliberate: entries and hasDefault keep their values. A count of 0 alone means that the list is empty.
        jx::releaseRows(entries, entryCount);
        entryCount = 0;
    }
    if (type != ResetKeepAddedFlag)
        dataSourceAdded = 0;
    return 0;
}
