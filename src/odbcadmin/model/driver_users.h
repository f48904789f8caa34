// The data sources that use a driver, in the files of both scopes.
//
//     for (const DriverUsers& each : usersOfDriver("SQLite3", Scope::system))
//         ... each.path, each.names, each.mayChange ...
#pragma once

#include <string>
#include <vector>

#include "odbcadmin/model/config_file.h"

namespace jx::model {

// Data sources of one file.
struct DriverUsers {
    Scope scope;
    std::string path;
    std::vector<std::string> names;
    bool mayChange;  // whether this process has the right to
};

// Those that mean the driver of that scope by its name: the user's file, then the system's, each only if it has any.
// Of the other scope's file those count that find no driver of the name in their own scope. The files of other users,
// whose data sources may mean the system's driver, are not looked for.
std::vector<DriverUsers> usersOfDriver(const std::string& driver, Scope scope);

}  // namespace jx::model
