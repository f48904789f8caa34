// The files of an installation's components, as the script lists them.
#pragma once

#include <cstdint>

#include "install/install_record.h"

namespace jx::install {

// Reads the files of every component; 0 whatever became of the single ones.
unsigned int GetTheOdbcInfEntriesForEachItem(_Install* install);

// Reads the files of one component from its section of the script that the record names, replacing what it had. There
// is one entry for every key of the section; that of a key without a value is empty. A line with too few commas ends
// the reading with a message that names the missing one, and the entries behind it are empty. Result  0; 1 for such a
// line and for a section without keys; 1, and no entry at all, when memory is short or a line
//         could not be read, since a component is not to be installed in part.
unsigned int GetDataFromObdcInf(_Install* install, std::uint32_t index);

}  // namespace jx::install
