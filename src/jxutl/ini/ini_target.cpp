// Follows symbolic links by hand to the file that is replaced.
#include "jxutl/ini/ini_target.h"

#include <array>
#include <cerrno>
#include <climits>

#include "jxutl/ini/file_ops.h"
#include "jxutl/thread/failure.h"

namespace jx::ini {

namespace {

// As many links as the kernel follows in one path.
constexpr int kMostLinks = 40;

bool fail(JxIniStep step, const std::string& path, int error) {
    noteFailure(step, path, error);
    return false;
}

// Replaces path, which is a symbolic link, by its target.
bool followOne(std::string& path) {
    std::array<char, PATH_MAX> room;
    const ssize_t length = files().readLink(path.c_str(), room);
    if (length < 0)
        return fail(JxIniStepLocate, path, errno);
    if (length == 0 || static_cast<std::size_t>(length) == room.size())
        return fail(JxIniStepLocate, path, ENAMETOOLONG);
    const std::size_t slash = room[0] == '/' ? std::string::npos : path.rfind('/');
    path.erase(slash == std::string::npos ? 0 : slash + 1);
    path.append(room.data(), static_cast<std::size_t>(length));
    return true;
}

}  // namespace

bool findTarget(const std::string& path, std::string& target) {
    target = path;
    for (int links = 0; links <= kMostLinks; ++links) {
        struct stat state;
        if (files().lookAtLink(target.c_str(), &state) != 0)
            return isAbsence(errno) || fail(JxIniStepLook, target, errno);
        if (S_ISREG(state.st_mode))
            return true;
        if (!S_ISLNK(state.st_mode))
            return fail(JxIniStepOpen, target, S_ISDIR(state.st_mode) ? EISDIR : ENOTSUP);
        if (!followOne(target))
            return false;
    }
    return fail(JxIniStepLocate, path, ELOOP);
}

std::string directoryOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return path.substr(0, slash == 0 ? 1 : slash);
}

}  // namespace jx::ini
