// Finding candidates and the winner.
#include "odbcadmin/doctor/config_places.h"

#include <jxini.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "odbcadmin/doctor/file_rights.h"

namespace jx::doctor {

namespace {

std::string winnerOf(const std::string& file) {
    std::string path(jxIniPath(file.c_str(), nullptr, 0), '\0');
    jxIniPath(file.c_str(), path.data(), path.size() + 1);
    return path;
}

std::string variableValue(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::string accountHome() {
    const passwd* account = ::getpwuid(::geteuid());
    return account != nullptr && account->pw_dir != nullptr ? account->pw_dir : "";
}

void add(ConfigPlace& place, const std::string& path, const std::string& why) {
    const auto isSame = [&](const Candidate& each) { return each.path == path; };
    if (path.empty() || std::any_of(place.candidates.begin(), place.candidates.end(), isSame))
        return;
    Candidate added;
    added.path = path;
    added.why = why;
    added.wins = path == place.path;
    struct stat status {};
    added.exists = ::stat(path.c_str(), &status) == 0;
    if (added.exists) {
        added.rights = rightsText(path);
        added.readers = readersText(path);
    }
    place.candidates.push_back(added);
}

ConfigPlace placeOf(const std::string& file, const char* variable, const std::string& systemFolder) {
    ConfigPlace place{file, variable, winnerOf(file), {}};
    const std::string home = variableValue("HOME");
    const std::string account = accountHome();
    add(place, variableValue(variable), std::string(variable) + " names it");
    if (!home.empty())
        add(place, home + "/" + file, "in the directory that HOME names");
    if (!account.empty())
        add(place, account + "/" + file, "in the home directory of the account; counts when HOME is not set");
    add(place, place.path, "the library says so");
    add(place, systemFolder + "/" + file.substr(1), "other systems keep a file for all users there; it is never read");
    return place;
}

}  // namespace

std::vector<ConfigPlace> configPlaces(const std::string& systemFolder) {
    return {placeOf(".odbc.ini", "ODBCINI", systemFolder), placeOf(".odbcinst.ini", "ODBCINSTINI", systemFolder)};
}

}  // namespace jx::doctor
