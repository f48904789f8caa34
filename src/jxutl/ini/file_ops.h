// Every call that touches a file, in one place.
#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <span>

namespace jx::ini {

// FileOps: the system's calls as virtual functions, so that tests can make each of them fail, record it or stop at it.
// Results  as the system's: -1 with errno set on failure.
// Threads  one object serves every thread.
class FileOps {
public:
    FileOps() = default;
    FileOps(const FileOps&) = delete;
    FileOps& operator=(const FileOps&) = delete;
    virtual ~FileOps() = default;

    virtual int openFile(int directory, const char* path, int flags, mode_t mode) = 0;  // openat
    // The same for a path without symbolic links: ELOOP where there is one.
    virtual int openWithoutLinks(const char* path, int flags) = 0;
    virtual int closeFile(int fd) = 0;
    virtual ssize_t readSome(int fd, std::span<char> bytes) = 0;
    virtual ssize_t writeSome(int fd, std::span<const char> bytes) = 0;
    virtual int lookAt(const char* path, struct stat* state) = 0;                     // follows symbolic links
    virtual int lookAtName(int directory, const char* name, struct stat* state) = 0;  // does not
    virtual int lookAtOpen(int fd, struct stat* state) = 0;
    virtual ssize_t readLink(int link, std::span<char> target) = 0;  // of a link opened with O_PATH
    virtual int lockFile(int fd, int operation) = 0;                 // flock
    virtual int setMode(int fd, mode_t mode) = 0;
    virtual int setOwner(int fd, uid_t owner, gid_t group) = 0;
    virtual int flush(int fd) = 0;
    virtual int rename(int directory, const char* from, const char* to, unsigned flags) = 0;  // renameat2
    virtual int removeFile(int directory, const char* name) = 0;

    // The clock that file times come from, and the one for waiting.
    virtual timespec fileClock() = 0;
    virtual std::int64_t waitingClockInMilliseconds() = 0;
    virtual void pause(std::int64_t milliseconds) = 0;
};

// Whether a call failed because the file, or its directory, does not exist.
inline bool isAbsence(int error) {
    return error == ENOENT || error == ENOTDIR;
}

// Signals that arrive faster than a call can be made must not delay it without end.
inline constexpr int kMostInterruptions = 1000;

// Makes call again while it fails with EINTR; the result is that of the last call. Not for close, which must not be
// made twice.
template <typename Call>
auto uninterrupted(Call call) {
    auto result = call();
    for (int count = 0; result == -1 && errno == EINTR && count < kMostInterruptions; ++count)
        result = call();
    return result;
}

// The object in use: PosixFiles unless a test set another; null sets PosixFiles again. Do not set it while another
// thread uses the store.
FileOps& files();
void useFiles(FileOps* replacement);

}  // namespace jx::ini
