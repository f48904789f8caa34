// The base of the tests' disks: it forwards every call and reports it.
#pragma once

#include <array>
#include <cerrno>
#include <string>
#include <string_view>

#include "jxutl/ini/file_ops.h"

namespace jx::ini::test {

// The calls that touch a disk, under the names that traces show.
enum class Call {
    open,
    close,
    read,
    write,
    look,
    lookAtName,
    lookAtOpen,
    readLink,
    lock,
    setMode,
    setOwner,
    flush,
    rename,
    remove
};

inline const char* nameOf(Call call) {
    constexpr std::array kNames = {"open",     "close", "read",    "write",    "look",  "lookAtName", "lookAtOpen",
                                   "readLink", "lock",  "setMode", "setOwner", "flush", "rename",     "remove"};
    return kNames.at(static_cast<std::size_t>(call));
}

// InUse: makes the store use a disk while it exists.
class InUse {
public:
    explicit InUse(FileOps& filling) { useFiles(&filling); }
    InUse(const InUse&) = delete;
    InUse& operator=(const InUse&) = delete;
    ~InUse() { useFiles(nullptr); }
};

// WatchedFiles: forwards to the real disk. before is called before each call that touches a disk and makes it fail by
// returning an errno; a close is made all the same, as the system does. A flush is reported but not made: it takes time
// and no test can see its effect. Waiting takes no time: its clock advances by the pauses, and a little with each look,
// so that no loop is endless.
class WatchedFiles : public FileOps {
public:
    WatchedFiles() : inner_(files()) {}

    int openFile(int directory, const char* path, int flags, mode_t mode) override {
        return refuse(Call::open, path) ? -1 : inner_.openFile(directory, path, flags, mode);
    }
    int openWithoutLinks(const char* path, int flags) override {
        return refuse(Call::open, path) ? -1 : inner_.openWithoutLinks(path, flags);
    }
    int closeFile(int fd) override {
        const bool refused = refuse(Call::close, {});
        const int error = errno;
        const int result = inner_.closeFile(fd);
        errno = error;
        return refused ? -1 : result;
    }
    ssize_t readSome(int fd, std::span<char> bytes) override {
        return refuse(Call::read, {}) ? -1 : inner_.readSome(fd, bytes);
    }
    ssize_t writeSome(int fd, std::span<const char> bytes) override {
        return refuse(Call::write, {}) ? -1 : inner_.writeSome(fd, bytes);
    }
    int lookAt(const char* path, struct stat* state) override {
        return refuse(Call::look, path) ? -1 : inner_.lookAt(path, state);
    }
    int lookAtName(int directory, const char* name, struct stat* state) override {
        return refuse(Call::lookAtName, name) ? -1 : inner_.lookAtName(directory, name, state);
    }
    int lookAtOpen(int fd, struct stat* state) override {
        return refuse(Call::lookAtOpen, {}) ? -1 : inner_.lookAtOpen(fd, state);
    }
    ssize_t readLink(int link, std::span<char> target) override {
        return refuse(Call::readLink, {}) ? -1 : inner_.readLink(link, target);
    }
    int lockFile(int fd, int operation) override {
        return refuse(Call::lock, {}) ? -1 : inner_.lockFile(fd, operation);
    }
    int setMode(int fd, mode_t mode) override { return refuse(Call::setMode, {}) ? -1 : inner_.setMode(fd, mode); }
    int setOwner(int fd, uid_t owner, gid_t group) override {
        return refuse(Call::setOwner, {}) ? -1 : inner_.setOwner(fd, owner, group);
    }
    int flush(int /*fd*/) override { return refuse(Call::flush, {}) ? -1 : 0; }
    int rename(int directory, const char* from, const char* to, unsigned flags) override {
        return refuse(Call::rename, from) ? -1 : inner_.rename(directory, from, to, flags);
    }
    int removeFile(int directory, const char* name) override {
        return refuse(Call::remove, name) ? -1 : inner_.removeFile(directory, name);
    }

    timespec fileClock() override { return inner_.fileClock(); }
    std::int64_t waitingClockInMilliseconds() override { return ++now_; }
    void pause(std::int64_t milliseconds) override { now_ += milliseconds; }

protected:
    // 0 lets the call happen. path is empty for a call on an open file.
    virtual int before(Call, std::string_view /*path*/) { return 0; }

    FileOps& inner() { return inner_; }

private:
    bool refuse(Call call, std::string_view path) {
        const int error = before(call, path);
        if (error != 0)
            errno = error;
        return error != 0;
    }

    FileOps& inner_;
    std::int64_t now_ = 0;
};

}  // namespace jx::ini::test
