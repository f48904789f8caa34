// The components of an installation: those a caller lists, and those a script does.
//
// Each call adds to the record; a name that is there already is added again. The script is the record's infFile; a null
// one gives nothing.
// Result  0; 1 when memory was short or the script is there and could not be read (what was read until then is in the
//         record).
#pragma once

#include "install/install_record.h"

namespace jx::install {

// Adds a driver for each text of the list drivers, which an empty text ends. The list must be writable: each text is
// cut at its first "=". A leading double quote is dropped; a closing one stays part of the name.
unsigned int PlaceDriversToBeInstalledInInstallStruct(_Install* install, unsigned char* drivers);

// Adds every translator the script lists, under the name between the quotes of its key. An empty list gives 1.
unsigned int PlaceTranslatorsToBeInstalledInInstallStruct(_Install* install);

// Reads the capabilities of every driver from its section "NAME-Keys".
unsigned int GetTheDriverKeys(_Install* install);

// Adds each core component the script has a section for.
unsigned int GetTheNonDriverItems(_Install* install);

}  // namespace jx::install
