// What an installed file leaves in .odbcinst.ini.
#pragma once

#include "install/install_record.h"

namespace jx::install {

// Records file fileIndex of item itemIndex, which lies at installedPath: a driver's or translator's library with its
// list entry, its setup library and its capabilities; then creates the data sources the driver asks for (its CreateDSN
// text is changed as CreateDataSources does). An older section of the driver or translator is replaced. Files of other
// roles record nothing, nor does an item that is named like one of the lists. Failed reads and writes are not reported;
// a list that cannot be read is left as it is.
void UpdateOdbcIniAndOdbcInstIni(_Install* install, unsigned long itemIndex, unsigned long fileIndex,
                                 unsigned char* installedPath);

}  // namespace jx::install
