// The installer object's own operations: beginning, clearing, display texts.
#include <jxmemory.h>
#include <jxtext.h>
#include <odbcins.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "config/data_source_rows.h"

namespace {

// "name (driver)" as a new heap block; null when memory is short. Null texts are empty.
unsigned char* displayText(const unsigned char* name, const unsigned char* driver) {
    const std::size_t nameLength = BUTSTLEN(name);
    const std::size_t driverLength = BUTSTLEN(driver);
    auto* display = static_cast<unsigned char*>(ramAllocZ(nameLength + driverLength + 5));
    if (display == nullptr)
        return nullptr;
    unsigned char* end = display;
    const auto append = [&end](const void* text, std::size_t length) {
        BUTMEMCP(end, text, length);
        end += length;
    };
    if (nameLength != 0)
        append(name, nameLength);
    append(" (", 2);
    if (driverLength != 0)
        append(driver, driverLength);
    append(")", 1);
    return display;
}

}  // namespace

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

unsigned int OdbcIns::ConcatenateNames() {
    for (std::uint32_t row = 0; entries != nullptr && row < entryCount; ++row) {
        // Deliberate: an earlier display text is not released; whoever took it may still show it.
        entries[row].display = displayText(entries[row].name, entries[row].driver);
    }
    return 0;
}
