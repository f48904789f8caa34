// The components of an installation: those a caller lists, and those a script does.
//
// Each call adds to the record, without looking whether a component of that name is there. The script is the one that
// the record names; a null name reads nothing.
// Result  0 when done; 1 when memory was short or the script is there and could not be read, with what was read so far
//         in the record.
#pragma once

#include "install/install_record.h"

namespace jx::install {

// Adds a driver for every text of the list drivers, which ends with an empty text. Each text is cut at its first "="
// and stays so: the list must be writable. A leading double quote is dropped, a closing one belongs to the name.
unsigned int PlaceDriversToBeInstalledInInstallStruct(_Install* install, unsigned char* drivers);

// Adds every translator the script lists, by the name between the double quotes of its key. 1 also for an empty list.
unsigned int PlaceTranslatorsToBeInstalledInInstallStruct(_Install* install);

// Reads the capabilities of every driver from the section of its name followed by "-Keys".
unsigned int GetTheDriverKeys(_Install* install);

// Adds each core component the script has a section for.
unsigned int GetTheNonDriverItems(_Install* install);

}  // namespace jx::install
