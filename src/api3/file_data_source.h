// File data sources: a file for each, with the suffix .dsn.
//
//     return readFileDataSource(state, {"sales", "ODBC", "Server"}, output, pcbString);
#pragma once

#include <optional>
#include <string>

#include <jxodbc3/odbcinst.h>
#include "api3/text_output.h"

namespace jx::api3 {

struct ThreadState;

struct FileDataSourceKey {
    const char* file;
    const char* section;
    const char* key;
};

// The path that a name stands for: an absolute one as it is, else below ODBCDataSources in the system's directory,
// never in the current one; with .dsn when that is missing. Nothing for a null or empty name, and for a relative one
// that leads out of there.
std::optional<std::string> fileDataSourcePath(const char* name);

// Puts a value in; a null key gives the keys of the section, a null section and key the sections, with semicolons
// between. False with a record, also when it is cut.
bool readFileDataSource(ThreadState& state, const FileDataSourceKey& key, const TextOutput& output, WORD* length);

// A null value deletes the key, a null key the section. The directory is made when it is missing. False with a record.
bool writeFileDataSource(ThreadState& state, const FileDataSourceKey& key, const char* value);

}  // namespace jx::api3
