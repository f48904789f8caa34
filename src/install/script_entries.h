// The files of an installation's components, as the script lists them.
#pragma once

#include <cstdint>

#include "install/install_record.h"

namespace jx::install {

// Reads the files of every component. Always returns 0, even when some could not be read.
unsigned int GetTheOdbcInfEntriesForEachItem(_Install* install);

// Reads the files of one component from its section of the record's script, in place of those it had. Each key of the
// section gives one entry; a key without a value gives an empty one.
// A line with too few commas is reported in a message box and ends the reading: the entries behind it are empty, and
// the result is 1. It is also 1 for a section without keys, and when memory is short or a line cannot be read; the
// component then has no entries at all, so that it is not installed in part. Else the result is 0.
unsigned int GetDataFromObdcInf(_Install* install, std::uint32_t index);

}  // namespace jx::install
