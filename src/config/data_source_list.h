// The rows behind the data source list of an OdbcIns.
#pragma once

#include <cstddef>

struct DataSourceEntry;

namespace jx {

// Releases count rows with their texts and then the array itself; null is allowed.
void releaseRows(DataSourceEntry* rows, std::size_t count);

}  // namespace jx
