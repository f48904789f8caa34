// Turning an installation script into the components of a record.
//
// Every call reads the script the record names (a null name reads nothing) with the limits of ProfileText: a value or a
// list of names that is longer is cut. The calls that return a status give 0 when done and 1 when memory was short or
// the script is there and could not be read, with what was read so far in the record.
#pragma once

#include <cstdint>

#include "install/install_record.h"

namespace jx::install {

// Adds a driver for every text of the list drivers, which ends with an empty text. Each text is cut at its first '='
// and stays so: the list must be writable. A leading double quote is dropped, a closing one belongs to the name.
unsigned int PlaceDriversToBeInstalledInInstallStruct(_Install* install, unsigned char* drivers);

// Adds every translator the script lists: the text between the double quotes of its key. 1 also for an empty list.
unsigned int PlaceTranslatorsToBeInstalledInInstallStruct(_Install* install);

// Reads the capabilities of every driver from the section of its name followed by "-Keys".
unsigned int GetTheDriverKeys(_Install* install);

// Adds each core component the script has a section for.
unsigned int GetTheNonDriverItems(_Install* install);

// Reads the files of every component; 0 whatever became of the single ones.
unsigned int GetTheOdbcInfEntriesForEachItem(_Install* install);

// Reads the files of one component from its section, replacing what it had. There is one entry for every key of the
// section; that of a key without a value is empty. A line with too few commas ends the reading with a message that
// names the missing one, and the entries not reached are empty. 1 then, and when the section has no keys; 1 with no
// entry at all when memory is short or a line could not be read, since a component is not to be installed in part.
unsigned int GetDataFromObdcInf(_Install* install, std::uint32_t index);

}  // namespace jx::install
