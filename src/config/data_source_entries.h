// Entering data sources in the two configuration files.
#pragma once

#include <odbcins.h>

namespace jx {

// Removes a data source and enters it for the driver, as one change of each file: the work behind SQLWriteDSNToIni,
// whose comment in odbcinst.h says what it takes. Not 0: entered.
int replaceDataSource(OdbcIns& ins, unsigned char* dsn, unsigned char* driver);

}  // namespace jx
