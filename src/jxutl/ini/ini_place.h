// The place a path stands for: the directory that really holds a file, and the file's name in it.
#pragma once

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>

#include <optional>
#include <string>

#include <jxini.h>
#include "jxutl/ini/descriptor.h"

namespace jx::ini {

// IniPlace: a directory held open, so that nobody can put another one under the file between two calls.
// Use      find, then every call on a name in directory(); the file itself may not exist yet.
// Links    A symbolic link is followed only when its owner is this user, root, or the owner of what it leads to; in a
//          sticky directory that all may write its owner must be this user or the directory's owner as well. In a
//          directory that only root and this user may write every link is followed.
// Threads  an object belongs to one thread.
// Failure  false, noted as the thread's failure; std::bad_alloc may be thrown.
class IniPlace {
public:
    // Follows path to its end. False for a directory, FIFO or device, none of which is opened; for a chain of more than
    // 40 links; for a link that must not be followed (EACCES, with the link's path).
    bool find(const std::string& path);

    // 0, or the errno that says why there is no directory: then the file is absent and nothing can be written.
    int missing() const { return missing_; }

    int directory() const { return directory_.get(); }
    const std::string& name() const { return name_; }

    // For messages: the file, its directory, and another name in it. Links on the way are replaced by what they hold.
    const std::string& path() const { return path_; }
    const std::string& directoryPath() const { return directoryPath_; }
    std::string pathOf(const std::string& name) const { return prefix_ + name; }

    // Whether the links that led here may lead to a file in that state, or, for null, to one that does not exist;
    // EACCES with the link's path is noted if not.
    bool admits(const struct stat* state) const;

private:
    friend class PlaceWalk;

    enum class Direct { found, hasLinks, failed };

    Direct findDirectly(const std::string& path);
    static Direct stop(JxIniStep step, const std::string& path, int error);
    bool accept(const struct stat& state) const;
    void split(const std::string& path);
    std::string spelled() const { return prefix_ + name_; }

    Descriptor directory_;
    std::string prefix_;  // the directory's path as spelled, with a slash at its end; empty for the current directory
    std::string name_;
    std::string path_;
    std::string directoryPath_;
    int missing_ = 0;
    std::optional<uid_t> owner_;  // whom the file must belong to, because of the link below
    std::string link_;
};

// Opens the file at path for reading, following links as IniPlace does. True with no descriptor when there is no file;
// false, noted as the thread's failure, when it cannot be opened. O_NOATIME, which only the file's owner may use, is
// left out once it was refused: updating the access time costs more than reading a small file.
bool openToRead(const std::string& path, bool& leavesAccessTime, Descriptor& file);

// For every opening of a file in an IniPlace. O_NONBLOCK: opening a FIFO must not wait.
inline constexpr int kOpenFlags = O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

inline bool isSameFile(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

}  // namespace jx::ini
