// The variables that name the home folder and the files.
#include "odbcadmin/model/home_folder.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "odbcadmin/model/text.h"

namespace jx::model {

std::string enterHome(const std::string& folder) {
    const std::string home = absolutePath(folder);
    struct stat state {};
    const int error = stat(home.c_str(), &state) != 0 ? errno : S_ISDIR(state.st_mode) ? 0 : ENOTDIR;
    if (error != 0)
        return "Cannot use " + home + " as home: " + std::strerror(error);
    setenv("HOME", home.c_str(), 1);
    unsetenv("ODBCINI");
    unsetenv("ODBCINSTINI");
    return {};
}

}  // namespace jx::model
