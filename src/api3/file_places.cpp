// Puts the paths of the configuration files together.
#include "api3/file_places.h"

#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <new>
#include <vector>

namespace jx::api3 {

namespace {

constexpr std::string_view kUserDataSources = ".odbc.ini";
constexpr std::string_view kUserDrivers = ".odbcinst.ini";
constexpr std::string_view kSystemDataSources = "odbc.ini";
constexpr std::string_view kSystemDrivers = "odbcinst.ini";

// Home directories of accounts are short; an entry of the account list that is longer than this is damaged.
constexpr std::size_t kLongestAccount = std::size_t{1} << 20;

bool isAbsolute(const char* path) {
    return path != nullptr && *path == '/';
}

// A name that stands for a file of a directory.
bool isBareName(std::string_view name) {
    return !name.empty() && name.find('/') == std::string_view::npos && name != "." && name != "..";
}

// What getpwuid_r gives for an account that is in no list.
bool meansNoAccount(int error) {
    return error == 0 || error == ENOENT || error == ESRCH || error == EBADF || error == EPERM;
}

struct AccountHome {
    std::string path;  // empty when the account has none
    int error = 0;     // why that could not be found out
};

// With raised rights, the files of the user who started the program would be his choice as much as his environment.
AccountHome accountHome() {
    std::vector<char> room(1024);
    passwd account{};
    passwd* found = nullptr;
    int error = 0;
    while ((error = getpwuid_r(geteuid(), &account, room.data(), room.size(), &found)) != 0) {
        if (error != EINTR && (error != ERANGE || room.size() >= kLongestAccount))
            break;
        if (error == ERANGE)
            room.resize(room.size() * 2);
    }
    if (found == nullptr)
        return {{}, meansNoAccount(error) ? 0 : error};
    return {isAbsolute(account.pw_dir) ? account.pw_dir : "", 0};
}

}  // namespace

// directory, a slash unless it ends in one, and name; an empty name means directory itself.
bool Place::isAt(std::string_view directory, std::string_view name) const {
    if (!isThere())
        return false;
    const std::string_view path = path_;
    if (!path.starts_with(directory))
        return false;
    std::string_view rest = path.substr(directory.size());
    if (name.empty() || directory.ends_with('/'))
        return rest == name;
    return rest.size() == name.size() + 1 && rest.front() == '/' && rest.ends_with(name);
}

void Place::moveTo(std::string_view directory, std::string_view name) {
    if (isAt(directory, name))
        return;
    file_.reset();  // should memory run short in between, the old file is not taken for the new one
    error_ = 0;
    path_.assign(directory);
    if (!name.empty() && !directory.ends_with('/'))
        path_ += '/';
    path_ += name;
    file_.reset(jxPrivateProfileInit(reinterpret_cast<const unsigned char*>(path_.c_str())));
    if (file_ == nullptr)
        throw std::bad_alloc();
}

void Place::moveNowhere(int error) {
    file_.reset();
    path_.clear();
    error_ = error;
}

FilePlaces::FilePlaces() {
    for (Place* place : {&systemDataSources_, &systemDrivers_}) {
        place->scope_ = Scope::system;
        place->isShared_ = true;
    }
}

const Place& FilePlaces::find(Scope scope, FileKind kind, const Environment& environment) {
    const bool isDataSources = kind == FileKind::dataSources;
    if (scope == Scope::user)
        return isDataSources ? findUsers(userDataSources_, environment.dataSources, kUserDataSources, environment)
                             : findUsers(userDrivers_, nullptr, kUserDrivers, environment);
    return isDataSources ? findSystems(systemDataSources_, nullptr, kSystemDataSources, environment)
                         : findSystems(systemDrivers_, environment.drivers, kSystemDrivers, environment);
}

const Place& FilePlaces::find(const char* path) {
    other_.moveTo(path, {});
    return other_;
}

const Place& FilePlaces::findUsers(Place& place, const char* named, std::string_view name,
                                   const Environment& environment) {
    if (isAbsolute(named)) {
        place.moveTo(named, {});
    } else if (isAbsolute(environment.home)) {
        place.moveTo(environment.home, name);
    } else if (const AccountHome home = accountHome(); !home.path.empty()) {
        place.moveTo(home.path, name);
    } else {
        place.moveNowhere(home.error);
    }
    return place;
}

const Place& FilePlaces::findSystems(Place& place, const char* named, std::string_view name,
                                     const Environment& environment) {
    if (isAbsolute(named))
        place.moveTo(named, {});
    else if (named != nullptr && isBareName(named))
        place.moveTo(systemDirectory(environment), named);
    else
        place.moveTo(systemDirectory(environment), name);
    return place;
}

std::string_view systemDirectory(const Environment& environment) {
    return isAbsolute(environment.systemDirectory) ? environment.systemDirectory : "/etc";
}

}  // namespace jx::api3
