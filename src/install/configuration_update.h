// What an installed file leaves in .odbcinst.ini.
#pragma once

#include "install/install_record.h"

namespace jx::install {

// Records file fileIndex of item itemIndex, which lies at installedPath. What is recorded depends on the file's role:
//
//     Driver, of a driver          its list entry; its section with library and capabilities; the data sources it asks
//                                  for (CreateDataSources changes the item's CreateDSN text)
//     Translator, of a translator  its list entry and its section
//     Setup                        the setup library, in the section of the item
//
// An older section of the driver or translator is replaced. Other files record nothing, and neither does an item whose
// name is a reserved section's. A list that cannot be read is left unchanged. Failed writes are reported by the commit
// of the thread's run.
void UpdateOdbcIniAndOdbcInstIni(_Install* install, unsigned long itemIndex, unsigned long fileIndex,
                                 unsigned char* installedPath);

}  // namespace jx::install
