// Writing one key as a program asks for it: into which file it goes, and what is refused.
//
//     return writeProfile(state, {"Sales", "Server", "db.example"}, "odbc.ini");
#pragma once

#include "api3/file_places.h"
#include "api3/profile_lookup.h"

namespace jx::api3 {

struct ThreadState;

// ProfileWrite: a null value deletes the key, a null key the section.
struct ProfileWrite {
    const char* section;
    const char* key;
    const char* value;
};

// False with a record when it was not written. Deleting a key deletes its references too.
bool writeProfile(ThreadState& state, const ProfileWrite& write, const char* file);

// The file of data sources that the thread's mode has writes go to.
const Place& writtenDataSources(ThreadState& state);

// The file of drivers that such a write goes to: the user's when it has the section (of a list, the key), else the
// system's. The mode plays no part. Null, with a record, when the user's file cannot be read.
const Place* writtenDrivers(ThreadState& state, const ProfileWrite& write);

// Whether a write of that section, and that key if there is one, may go there. Not when the mode is both and only the
// system's file has the data source: one key in the user's file would hide all the others from the user. Posts that
// then, and gives false.
bool mayWriteDataSource(ThreadState& state, const Question& written);

// The same whatever the mode is: false with a record when only the system's file has that data source, or when a file
// cannot be read.
bool mayHide(ThreadState& state, const Question& written);

}  // namespace jx::api3
