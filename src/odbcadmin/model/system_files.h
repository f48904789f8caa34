// Where the files are that all users share, by the variables that libodbcinst.so.2 goes by.
#pragma once

#include <string>

#include "odbcadmin/model/config_file.h"

namespace jx::model {

// ODBCSYSINI when it is a full path, else /etc.
std::string systemDirectory();

// odbc.ini or odbcinst.ini in that directory. ODBCINSTINI moves the second: a full path is the file, a bare name is a
// file of that directory, anything else counts as not set.
std::string systemPath(FileKind kind);

// Whether both scopes have the same file of that kind, as ODBCINSTINI with a full path makes it for drivers: the older
// library takes it for the user's own, the newer one for the system's.
bool isOneFile(FileKind kind);

}  // namespace jx::model
