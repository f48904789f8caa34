// Finding candidates and the winner.
#include "odbcadmin/model/config_places.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

namespace jx::model {

namespace {

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
    place.candidates.push_back(added);
}

ConfigPlace placeOf(FileKind kind, const std::string& systemFolder) {
    const std::string file = nameOf(kind);
    const char* variable = variableOf(kind);
    ConfigPlace place{file, variable, pathOf(file), {}};
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
    return {placeOf(FileKind::dataSources, systemFolder), placeOf(FileKind::drivers, systemFolder)};
}

const char* variableOf(FileKind kind) {
    return kind == FileKind::dataSources ? "ODBCINI" : "ODBCINSTINI";
}

}  // namespace jx::model
