// Looking through both files.
#include "odbcadmin/model/driver_users.h"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>

#include "odbcadmin/model/configuration.h"
#include "odbcadmin/model/system_files.h"

namespace jx::model {

namespace {

Configuration configurationOf(Scope scope) {
    const Seen seen = scope == Scope::user ? Seen::user : Seen::system;
    return Configuration::read({seen, seen});
}

// A change makes a new file beside the old one and renames it.
bool mayReplace(const std::string& path) {
    std::error_code error;
    const std::filesystem::path target = std::filesystem::weakly_canonical(path, error);
    return !error && ::faccessat(AT_FDCWD, target.parent_path().c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

}  // namespace

std::vector<DriverUsers> usersOfDriver(const std::string& driver, Scope scope) {
    std::vector<DriverUsers> users;
    for (const Scope each : {Scope::user, Scope::system}) {
        if (each == Scope::system && isOneFile(FileKind::dataSources))
            break;
        const Configuration configuration = configurationOf(each);
        if (each != scope && !isOneFile(FileKind::drivers) && configuration.driver(driver))
            continue;
        const std::vector<std::string> names = namesOf(configuration.dataSourcesOf(driver));
        const std::string path = pathOf(nameOf(FileKind::dataSources), each);
        if (!names.empty())
            users.push_back({each, path, names, mayReplace(path)});
    }
    return users;
}

}  // namespace jx::model
