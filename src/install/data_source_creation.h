// The data sources a driver asks for when it is installed.
#pragma once

namespace jx::install {

// Creates a data source for each name in the comma-separated dataSourceList (null is an empty list), for the driver
// whose section of .odbcinst.ini is driverName. An older section of that name is replaced; names of reserved sections
// are skipped. Afterwards the list holds blanks in place of its commas.
// All of them are one change, part of the thread's run. If the driver's library cannot be read, the run is given up.
void CreateDataSources(unsigned char* dataSourceList, const unsigned char* driverName);

}  // namespace jx::install
