// Modes and owners as text.
#include "odbcadmin/doctor/file_rights.h"

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string_view>

namespace jx::doctor {

namespace {

char typeLetter(mode_t mode) {
    if (S_ISDIR(mode))
        return 'd';
    if (S_ISLNK(mode))
        return 'l';
    if (S_ISFIFO(mode))
        return 'p';
    return S_ISREG(mode) ? '-' : '?';
}

std::string userName(uid_t user) {
    const passwd* account = ::getpwuid(user);
    return account != nullptr ? account->pw_name : std::to_string(user);
}

std::string groupName(gid_t group) {
    const struct group* found = ::getgrgid(group);
    return found != nullptr ? found->gr_name : std::to_string(group);
}

// "-rw-r-----" for a mode.
std::string modeText(mode_t mode) {
    std::string text(1, typeLetter(mode));
    constexpr std::string_view kLetters = "rwxrwxrwx";
    constexpr unsigned kFirst = 0400;
    for (std::size_t i = 0; i < kLetters.size(); ++i)
        text.push_back((mode & (kFirst >> i)) != 0 ? kLetters[i] : '-');
    return text;
}

}  // namespace

std::string rightsText(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return {};
    return modeText(status.st_mode) + " " + userName(status.st_uid) + ":" + groupName(status.st_gid);
}

std::string readersText(const std::string& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return {};
    if ((status.st_mode & S_IROTH) != 0)
        return "everybody";
    if ((status.st_mode & S_IRGRP) != 0)
        return userName(status.st_uid) + " and group " + groupName(status.st_gid);
    return (status.st_mode & S_IRUSR) != 0 ? userName(status.st_uid) + " only" : "nobody";
}

std::string thisUserText() {
    const uid_t user = ::geteuid();
    return "user " + userName(user) + " (" + std::to_string(user) + ")";
}

}  // namespace jx::doctor
