// What an installed file leaves in the two configuration files.
#pragma once

#include "install/install_record.h"

namespace jx::install {

// Records file fileIndex of item itemIndex, which lies at installedPath, in .odbcinst.ini: a driver's or translator's
// library with its list entry, its setup library and its capabilities; then creates the data sources the driver asks
// for. An older section of the driver or translator is replaced. Files of other roles record nothing, nor does an item
// that is named like one of the lists. Failed reads and writes are not reported; a list that cannot be read is left as
// it is. The item's CreateDSN text is changed as CreateDataSources tells.
void UpdateOdbcIniAndOdbcInstIni(_Install* install, unsigned long itemIndex, unsigned long fileIndex,
                                 unsigned char* installedPath);

// Enters each name of the comma-separated dataSourceList as a data source of the driver whose section of .odbcinst.ini
// is driverName, replacing an older section of that name; a name of one of the lists is passed over. Failed reads and
// writes are not reported: a data source whose driver's library cannot be read gets none. Afterwards the list holds
// blanks where its commas stood.
void CreateDataSources(unsigned char* dataSourceList, const unsigned char* driverName);

}  // namespace jx::install
