// Finding candidates and the winner.
#include "odbcadmin/model/config_places.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "odbcadmin/model/system_files.h"

namespace jx::model {

namespace {

constexpr const char* kSystemDirectory = "/etc";

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

ConfigPlace usersPlace(FileKind kind) {
    const std::string file = nameOf(kind);
    const char* variable = variableOf(kind);
    ConfigPlace place{kind, Scope::user, file, variable, pathOf(file), {}};
    const std::string home = variableValue("HOME");
    const std::string account = accountHome();
    add(place, variableValue(variable), std::string(variable) + " names it");
    if (!home.empty())
        add(place, home + "/" + file, "in the directory that HOME names");
    if (!account.empty())
        add(place, account + "/" + file, "in the home directory of the account; counts when HOME is not set");
    add(place, place.path, "the library says so");
    return place;
}

ConfigPlace systemsPlace(FileKind kind) {
    const std::string file = std::string(nameOf(kind)).substr(1);
    ConfigPlace place{kind, Scope::system, file, "ODBCSYSINI", systemPath(kind), {}};
    const std::string directory = systemDirectory();
    const std::string usual = directory + (directory.ends_with('/') ? "" : "/") + file;
    const std::string named = place.path == usual ? "" : place.path;
    add(place, named, "ODBCINSTINI names it");
    if (directory != kSystemDirectory)
        add(place, usual, "in the directory that ODBCSYSINI names");
    add(place, std::string(kSystemDirectory) + "/" + file, "for all users, where nothing names another");
    return place;
}

// In an image there is nothing to choose between.
ConfigPlace placeBelow(const std::string& root, ConfigPlace place) {
    place.candidates.clear();
    add(place, place.path, "below the root " + root);
    return place;
}

std::string newerUserPath(FileKind kind) {
    std::string named = variableValue("ODBCINI");
    if (kind == FileKind::dataSources && named.starts_with('/'))
        return named;
    const std::string home = variableValue("HOME");
    return (home.starts_with('/') ? home : accountHome()) + "/" + nameOf(kind);
}

}  // namespace

std::vector<ConfigPlace> configPlaces(const std::string& root) {
    std::vector<ConfigPlace> places;
    for (const FileKind kind : {FileKind::dataSources, FileKind::drivers})
        for (const ConfigPlace& place : {usersPlace(kind), systemsPlace(kind)})
            places.push_back(root.empty() ? place : placeBelow(root, place));
    return places;
}

const char* variableOf(FileKind kind) {
    return kind == FileKind::dataSources ? "ODBCINI" : "ODBCINSTINI";
}

std::vector<std::string> variablesThatMove() {
    std::vector<std::string> all;
    for (const char* name : {"ODBCINI", "ODBCINSTINI", "ODBCSYSINI"})
        if (const char* value = std::getenv(name))
            all.push_back(std::string(name) + "=" + value);
    return all;
}

std::string homeDirectory() {
    const std::string home = variableValue("HOME");
    return home.empty() ? accountHome() : home;
}

std::vector<Generation> generations() {
    const auto both = [](FileKind kind) { return std::vector<std::string>{newerUserPath(kind), systemPath(kind)}; };
    const bool isMoved = variableValue("ODBCSYSINI").starts_with('/');
    const std::string other = isMoved ? kSystemDirectory : "DIR";
    const std::string named = variableValue("ODBCINSTINI");
    return {{"libodbcinst.so.1", {pathOf(nameOf(FileKind::dataSources))}, {pathOf(nameOf(FileKind::drivers))}},
            {"libodbcinst.so.2", both(FileKind::dataSources), both(FileKind::drivers)},
            {isMoved ? "libodbcinst.so.2 without ODBCSYSINI" : "libodbcinst.so.2 with ODBCSYSINI=DIR",
             {newerUserPath(FileKind::dataSources), other + "/odbc.ini"},
             {newerUserPath(FileKind::drivers), named.starts_with('/') ? named : other + "/odbcinst.ini"}}};
}

}  // namespace jx::model
