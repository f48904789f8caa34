// The system's calls, and the object in use.
#include "jxutl/ini/file_ops.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/file.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdio>

#include "jxutl/thread/lasting.h"

namespace jx::ini {

namespace {

// PosixFiles: each member makes one system call.
class PosixFiles final : public FileOps {
public:
    int openFile(int directory, const char* path, int flags, mode_t mode) override {
        return ::openat(directory, path, flags, mode);
    }
    int openWithoutLinks(const char* path, int flags) override {
        open_how how{};
        how.flags = static_cast<std::uint64_t>(flags);
        how.resolve = RESOLVE_NO_SYMLINKS;
        return static_cast<int>(::syscall(SYS_openat2, AT_FDCWD, path, &how, sizeof how));
    }
    int closeFile(int fd) override { return ::close(fd); }
    ssize_t readSome(int fd, std::span<char> bytes) override { return ::read(fd, bytes.data(), bytes.size()); }
    ssize_t writeSome(int fd, std::span<const char> bytes) override { return ::write(fd, bytes.data(), bytes.size()); }
    int lookAt(const char* path, struct stat* state) override { return ::stat(path, state); }
    int lookAtName(int directory, const char* name, struct stat* state) override {
        return ::fstatat(directory, name, state, AT_SYMLINK_NOFOLLOW);
    }
    int lookAtOpen(int fd, struct stat* state) override { return ::fstat(fd, state); }
    ssize_t readLink(int link, std::span<char> target) override {
        return ::readlinkat(link, "", target.data(), target.size());
    }
    int lockFile(int fd, int operation) override { return ::flock(fd, operation); }
    int setMode(int fd, mode_t mode) override { return ::fchmod(fd, mode); }
    int setOwner(int fd, uid_t owner, gid_t group) override { return ::fchown(fd, owner, group); }
    int flush(int fd) override { return ::fsync(fd); }
    int rename(int directory, const char* from, const char* to, unsigned flags) override {
        return ::renameat2(directory, from, directory, to, flags);
    }
    int removeFile(int directory, const char* name) override { return ::unlinkat(directory, name, 0); }

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
