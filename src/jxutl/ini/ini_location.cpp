// Finds the user's files through the environment and the account.
#include "jxutl/ini/ini_location.h"

#include <pwd.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <vector>

#include "jxutl/thread/no_cancellation.h"
#include "rules/sections.h"

namespace jx::ini {

namespace {

// One of the user's two files, and the variable that gives it another place.
struct UsersFile {
    const char* name;
    std::string_view variable;
    bool shared;  // at the place its variable names
    int number;
};

constexpr UsersFile kDataSources{rules::kDataSourceFile, "ODBCINI", false, 0};
constexpr UsersFile kDrivers{rules::kDriverFile, "ODBCINSTINI", true, 1};

// An entry of the account list longer than this is damaged.
constexpr std::size_t kLongestAccount = std::size_t{1} << 20;

// Release builds unroll it; it then takes half the time of strcmp.
template <std::size_t sizeWithNul>
bool isText(const char* text, const char (&name)[sizeWithNul]) {
    for (std::size_t at = 0; at < sizeWithNul; ++at)
        if (text[at] != name[at])
            return false;
    return true;
}

const UsersFile* usersFile(const char* file) {
    if (isText(file, rules::kDataSourceFile))
        return &kDataSources;
    return isText(file, rules::kDriverFile) ? &kDrivers : nullptr;
}

// A variable that is set and not empty; null in a program with raised rights, whose files the caller must not choose.
const char* trustedVariable(const char* name) {
    const char* value = secure_getenv(name);
    return value != nullptr && *value != '\0' ? value : nullptr;
}

// The text after name and = when that is what variable is, else null.
const char* valueOf(const char* variable, std::string_view name) {
    for (const char character : name)
        if (*variable++ != character)
            return nullptr;
    return *variable == '=' ? variable + 1 : nullptr;
}

// Set once secure_getenv returned a variable: this program has no raised rights.
std::atomic<bool> isEnvironmentTrusted = false;

// HOME as trustedVariable returns it; null without it, and when the environment holds other. Outside the kernel a read
// of an unchanged file spends most of its time here, and one pass takes two thirds of the time of two calls of getenv.
// __environ is the C library's own: a program may define another environ, which setenv does not change.
const char* homeWithout(std::string_view other) {
    if (__environ == nullptr)
        return nullptr;
    const char* home = nullptr;
    for (char** at = __environ; const char* variable = *at; ++at) {
        if (*variable == 'H') {
            if (home == nullptr)  // of several, the first counts
                home = valueOf(variable, "HOME");
        } else if (*variable == other.front() && valueOf(variable, other) != nullptr) {
            return nullptr;
        }
    }
    if (home == nullptr || *home == '\0')
        return nullptr;
    if (!isEnvironmentTrusted.load(std::memory_order_relaxed)) {
        if (trustedVariable("HOME") == nullptr)
            return nullptr;
        isEnvironmentTrusted.store(true, std::memory_order_relaxed);
    }
    return home;
}

// The home directory of the effective user: a program with raised rights must not use files of the user who started it.
// Empty, with errno set, when there is none.
std::string accountHome() {
    const NoCancellation asking;
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
    errno = error != 0 ? error : ENOENT;
    if (found == nullptr || account.pw_dir == nullptr)
        return {};
    return account.pw_dir;
}

// home, a slash unless it ends in one, and the name; empty for an empty home.
void join(std::string& path, std::string_view home, std::string_view name) {
    path.assign(home);
    if (path.empty())
        return;
    if (path.back() != '/')
        path += '/';
    path += name;
}

}  // namespace

IniLocation locate(const char* file) {
    const UsersFile* known = file == nullptr ? nullptr : usersFile(file);
    if (known == nullptr)
        return locateAsSpelled(file);
    if (const char* named = trustedVariable(known->variable.data()); named != nullptr)
        return {named, known->shared};
    IniLocation location;
    if (const char* home = trustedVariable("HOME"); home != nullptr)
        join(location.path, home, known->name);
    else
        join(location.path, accountHome(), known->name);
    return location;
}

IniLocation locateAsSpelled(const char* file) {
    if (file != nullptr && *file != '\0')
        return {file, false};
    errno = EINVAL;
    return {};
}

IniLocator::Found IniLocator::find(const char* file) {
    const UsersFile* known = usersFile(file);
    const char* home = known == nullptr ? nullptr : homeWithout(known->variable);
    if (home == nullptr) {
        other_ = locate(file).path;
        return {other_.empty() ? nullptr : &other_};
    }
    Place& place = places_[known->number];
    if (std::strcmp(place.home.c_str(), home) != 0) {
        place.home.clear();  // if memory runs short below, the old path is not used for the new home
        join(place.path, home, known->name);
        place.home = home;
        place.number = ++numbersGiven_;
    }
    return {&place.path, place.number};
}

}  // namespace jx::ini
