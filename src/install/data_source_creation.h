// The data sources a driver asks for when it is installed.
#pragma once

namespace jx::install {

// Enters each name of the comma-separated dataSourceList as a data source of the driver whose section of .odbcinst.ini
// is driverName, replacing an older section of that name; a name of one of the lists is passed over. Afterwards the
// list holds blanks where its commas stood; null is an empty list. Failed reads and writes are not reported: a data
// source whose driver's library cannot be read gets none.
void CreateDataSources(unsigned char* dataSourceList, const unsigned char* driverName);

}  // namespace jx::install
