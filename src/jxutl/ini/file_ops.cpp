// The system's calls, and the object in use.
#include "jxutl/ini/file_ops.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cstdio>

#include "jxutl/thread/lasting.h"

namespace jx::ini {

namespace {

// PosixFiles: each member makes one system call.
class PosixFiles final : public FileOps {
public:
    int openFile(const char* path, int flags, mode_t mode) override { return ::open(path, flags, mode); }
    int closeFile(int fd) override { return ::close(fd); }
    ssize_t readSome(int fd, std::span<char> bytes) override { return ::read(fd, bytes.data(), bytes.size()); }
    ssize_t writeSome(int fd, std::span<const char> bytes) override { return ::write(fd, bytes.data(), bytes.size()); }
    int lookAt(const char* path, struct stat* state) override { return ::stat(path, state); }
    int lookAtLink(const char* path, struct stat* state) override { return ::lstat(path, state); }
    int lookAtOpen(int fd, struct stat* state) override { return ::fstat(fd, state); }
    ssize_t readLink(const char* path, std::span<char> target) override {
        return ::readlink(path, target.data(), target.size());
    }
    int lockFile(int fd, int operation) override { return ::flock(fd, operation); }
    int emptyFile(int fd) override { return ::ftruncate(fd, 0); }
    int setMode(int fd, mode_t mode) override { return ::fchmod(fd, mode); }
    int setOwner(int fd, uid_t owner, gid_t group) override { return ::fchown(fd, owner, group); }
    int flush(int fd) override { return ::fsync(fd); }
    int renameOver(const char* from, const char* to) override { return ::rename(from, to); }
    int removeFile(const char* path) override { return ::unlink(path); }

    // The kernel stamps files with its coarse clock; the fine one would run ahead of it.
    timespec fileClock() override {
        timespec now{};
        ::clock_gettime(CLOCK_REALTIME_COARSE, &now);
        return now;
    }

    std::int64_t waitingClockInMilliseconds() override {
        timespec now{};
        ::clock_gettime(CLOCK_MONOTONIC, &now);
        return static_cast<std::int64_t>(now.tv_sec) * 1000 + now.tv_nsec / 1'000'000;
    }

    // A signal may end the pause early; callers ask the clock.
    void pause(std::int64_t milliseconds) override {
        timespec length{};
        length.tv_sec = static_cast<time_t>(milliseconds / 1000);
        length.tv_nsec = static_cast<long>(milliseconds % 1000 * 1'000'000);
        ::nanosleep(&length, nullptr);
    }
};

constinit Lasting<PosixFiles> systemsOwn;
FileOps* inUse = &systemsOwn.object;

}  // namespace

FileOps& files() {
    return *inUse;
}

void useFiles(FileOps* replacement) {
    inUse = replacement != nullptr ? replacement : &systemsOwn.object;
}

}  // namespace jx::ini
