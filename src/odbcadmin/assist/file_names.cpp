// Paths of the user's files for people.
#include "odbcadmin/assist/file_names.h"

#include <jxini.h>

#include <cstdlib>

namespace jx::assist {

std::string shownPath(const char* file) {
    std::string path(jxIniPath(file, nullptr, 0), '\0');
    if (path.empty())
        return file;
    jxIniPath(file, path.data(), path.size() + 1);
    const char* home = std::getenv("HOME");
    const std::string folder = home != nullptr ? home : "";
    if (!folder.empty() && path.starts_with(folder + "/"))
        return "~" + path.substr(folder.size());
    return path;
}

}  // namespace jx::assist
