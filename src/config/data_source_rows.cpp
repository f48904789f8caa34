// Releasing the rows of a data source list.
#include "config/data_source_rows.h"

#include <jxmemory.h>
#include <odbcins.h>

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
