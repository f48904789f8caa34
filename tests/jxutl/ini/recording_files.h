// A disk that records every call, as a trace to compare and as a log to replay.
#pragma once

#include <fcntl.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "watched_files.h"

namespace jx::ini::test {

// One change of the disk. A file is identified by the number of the open call that made it, or by its name.
struct DiskChange {
    enum class Kind { create, write, empty, setMode, flushFile, flushDirectory, rename, remove };
    Kind kind;
    std::string name;   // of the file, without its directory
    std::string to;     // rename
    std::string bytes;  // write
    mode_t mode = 0;    // create, setMode
};

// RecordingFiles: makes every call and records it: in trace() as "write .odbc.ini.lock", in changes() with everything
// needed to make it again.
class RecordingFiles : public WatchedFiles {
public:
    using Kind = DiskChange::Kind;

    const std::vector<std::string>& trace() const { return trace_; }
    const std::vector<DiskChange>& changes() const { return changes_; }

    int openFile(const char* path, int flags, mode_t mode) override {
        struct stat ignored;
        const bool present = inner().lookAtLink(path, &ignored) == 0;
        const int fd = WatchedFiles::openFile(path, flags, mode);
        note(fd >= 0 ? "open" : "open!", baseName(path));
        if (fd >= 0) {
            names_[fd] = baseName(path);
            isDirectory_[fd] = (flags & O_DIRECTORY) != 0;
            if (!present)
                changes_.push_back({Kind::create, names_[fd], {}, {}, mode});
        }
        return fd;
    }
    int closeFile(int fd) override {
        note("close", names_[fd]);
        return WatchedFiles::closeFile(fd);
    }
    ssize_t readSome(int fd, std::span<char> bytes) override {
        note("read", names_[fd]);
        return WatchedFiles::readSome(fd, bytes);
    }
    ssize_t writeSome(int fd, std::span<const char> bytes) override {
        note("write", names_[fd]);
        const ssize_t count = WatchedFiles::writeSome(fd, bytes);
        if (count > 0)
            changes_.push_back(
                {Kind::write, names_[fd], {}, std::string(bytes.data(), static_cast<std::size_t>(count)), 0});
        return count;
    }
    int lookAt(const char* path, struct stat* state) override {
        note("look", baseName(path));
        return WatchedFiles::lookAt(path, state);
    }
    int lookAtLink(const char* path, struct stat* state) override {
        note("lookAtLink", baseName(path));
        return WatchedFiles::lookAtLink(path, state);
    }
    int lookAtOpen(int fd, struct stat* state) override {
        note("lookAtOpen", names_[fd]);
        return WatchedFiles::lookAtOpen(fd, state);
    }
    ssize_t readLink(const char* path, std::span<char> target) override {
        note("readLink", baseName(path));
        return WatchedFiles::readLink(path, target);
    }
    int lockFile(int fd, int operation) override {
        note("lock", names_[fd]);
        return WatchedFiles::lockFile(fd, operation);
    }
    int emptyFile(int fd) override {
        note("empty", names_[fd]);
        return kept(WatchedFiles::emptyFile(fd), {Kind::empty, names_[fd], {}, {}, 0});
    }
    int setMode(int fd, mode_t mode) override {
        note("setMode", names_[fd]);
        return kept(WatchedFiles::setMode(fd, mode), {Kind::setMode, names_[fd], {}, {}, mode});
    }
    int setOwner(int fd, uid_t owner, gid_t group) override {
        note("setOwner", names_[fd]);
        return WatchedFiles::setOwner(fd, owner, group);
    }
    int flush(int fd) override {
        note("flush", names_[fd]);
        const Kind kind = isDirectory_[fd] ? Kind::flushDirectory : Kind::flushFile;
        return kept(WatchedFiles::flush(fd), {kind, names_[fd], {}, {}, 0});
    }
    int renameOver(const char* from, const char* to) override {
        note("rename", baseName(from) + " " + baseName(to));
        return kept(WatchedFiles::renameOver(from, to), {Kind::rename, baseName(from), baseName(to), {}, 0});
    }
    int removeFile(const char* path) override {
        note("remove", baseName(path));
        return kept(WatchedFiles::removeFile(path), {Kind::remove, baseName(path), {}, {}, 0});
    }

private:
    static std::string baseName(std::string_view path) {
        const std::size_t slash = path.rfind('/');
        return std::string(slash == std::string_view::npos ? path : path.substr(slash + 1));
    }

    void note(const std::string& call, const std::string& name) { trace_.push_back(call + " " + name); }

    int kept(int result, DiskChange change) {
        if (result == 0)
            changes_.push_back(std::move(change));
        return result;
    }

    std::vector<std::string> trace_;
    std::vector<DiskChange> changes_;
    std::map<int, std::string> names_;
    std::map<int, bool> isDirectory_;
};

}  // namespace jx::ini::test
