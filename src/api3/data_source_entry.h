// Entering a data source and removing it, as setup routines do.
//
//     return enterDataSource(state, "Sales", "SQLite3");
#pragma once

#include <string>

#include "api3/file_places.h"

namespace jx::api3 {

struct ThreadState;

// Whether a new data source can be called so; no record tells why not.
bool isValidDsn(const char* name);

// Replaces an older data source of that name in the file that the thread's mode names: its entry in the list, and a
// section with the driver's library. The default data source is in no list; its driver's name stands in the section of
// its name in the file of drivers. False with a record, and nothing written.
bool enterDataSource(ThreadState& state, const char* name, const char* driver);

// Removes list entry and section from that file; true when there was neither.
bool removeDataSource(ThreadState& state, const char* name);

// The file in which the section of the default data source's driver is written: that of a user's file which has it,
// else the system's. Null, with a record, when the user's cannot be read.
const Place* writtenDefaultDriver(ThreadState& state);

}  // namespace jx::api3
