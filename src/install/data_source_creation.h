// The data sources a driver asks for when it is installed.
#pragma once

namespace jx::install {

// Creates a data source for each name in the comma-separated dataSourceList (null is an empty list), for the driver
// whose section of .odbcinst.ini is driverName. An older section of that name is replaced; names of reserved sections
// are skipped. Afterwards the list holds blanks in place of its commas.
// Failed reads and writes are not reported. A data source whose driver's library cannot be read gets no "Driver" key.
void CreateDataSources(unsigned char* dataSourceList, const unsigned char* driverName);

}  // namespace jx::install
