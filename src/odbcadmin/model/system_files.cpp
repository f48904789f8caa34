// Putting the system's paths together.
#include "odbcadmin/model/system_files.h"

#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace jx::model {

namespace {

std::string_view systemVariable(const char* name) {
    const char* value = ::secure_getenv(name);
    return value != nullptr ? value : "";
}

bool isBareName(std::string_view name) {
    return !name.empty() && name.find('/') == std::string_view::npos && name != "." && name != "..";
}

}  // namespace

std::string systemDirectory() {
    const std::string_view named = systemVariable("ODBCSYSINI");
    return std::string(named.starts_with('/') ? named : "/etc");
}

std::string systemPath(FileKind kind) {
    const std::string directory = systemDirectory() + (systemDirectory().ends_with('/') ? "" : "/");
    if (kind == FileKind::dataSources)
        return directory + "odbc.ini";
    const std::string_view named = systemVariable("ODBCINSTINI");
    if (named.starts_with('/'))
        return std::string(named);
    return directory + (isBareName(named) ? std::string(named) : "odbcinst.ini");
}

bool isOneFile(FileKind kind) {
    const std::string user = pathOf(nameOf(kind));
    const std::string system = systemPath(kind);
    std::error_code ignored;
    return user == system || std::filesystem::equivalent(user, system, ignored);
}

}  // namespace jx::model
