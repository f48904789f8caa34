// A disk that records every call, as a trace to compare and as a log to replay.
#pragma once

#include <fcntl.h>

#include <cstdio>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "watched_files.h"

namespace jx::ini::test {

// One change of the disk. A file is identified by the number of the open call that made it, or by its name.
struct DiskChange {
    enum class Kind { create, write, setMode, flushFile, flushDirectory, rename, exchange, remove };
    Kind kind;
    std::string name;   // of the file, without its directory
    std::string to;     // rename, exchange
    std::string bytes;  // write
    mode_t mode = 0;    // create, setMode
};

// RecordingFiles: makes every call and records it: in trace() as "write .odbc.ini.jxlock", in changes() with everything
// needed to make it again.
class RecordingFiles : public WatchedFiles {
public:
    using Kind = DiskChange::Kind;

    // The last name of a path; the number at the end of a new file's name is another in each run.
    static std::string nameOf(std::string path) {
        constexpr std::string_view kNew = ".jxnew-";
        if (path.ends_with('/') && path.size() > 1)
            path.pop_back();
        const std::size_t number = path.rfind(kNew);
        if (number != std::string::npos)
            path.replace(number + kNew.size(), std::string::npos, "N");
        const std::size_t slash = path.rfind('/');
        return slash == std::string::npos ? path : path.substr(slash + 1);
    }

    const std::vector<std::string>& trace() const { return trace_; }
    const std::vector<DiskChange>& changes() const { return changes_; }

    int openFile(int directory, const char* path, int flags, mode_t mode) override {
        struct stat ignored;
        const bool present = inner().lookAtName(directory, path, &ignored) == 0;
        return noteOpen(WatchedFiles::openFile(directory, path, flags, mode), path, flags, present ? 0 : mode);
    }
    int openWithoutLinks(const char* path, int flags) override {
        return noteOpen(WatchedFiles::openWithoutLinks(path, flags), path, flags, 0);
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
        note("look", nameOf(path));
        return WatchedFiles::lookAt(path, state);
    }
    int lookAtName(int directory, const char* name, struct stat* state) override {
        note("lookAtName", nameOf(name));
        return WatchedFiles::lookAtName(directory, name, state);
    }
    int lookAtOpen(int fd, struct stat* state) override {
        note("lookAtOpen", names_[fd]);
        return WatchedFiles::lookAtOpen(fd, state);
    }
    ssize_t readLink(int link, std::span<char> target) override {
        note("readLink", names_[link]);
        return WatchedFiles::readLink(link, target);
    }
    int lockFile(int fd, int operation) override {
        note("lock", names_[fd]);
        return WatchedFiles::lockFile(fd, operation);
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
    int rename(int directory, const char* from, const char* to, unsigned flags) override {
        const bool isExchange = (flags & RENAME_EXCHANGE) != 0;
        note(isExchange ? "exchange" : "rename", nameOf(from) + " " + nameOf(to));
        const Kind kind = isExchange ? Kind::exchange : Kind::rename;
        return kept(WatchedFiles::rename(directory, from, to, flags), {kind, nameOf(from), nameOf(to), {}, 0});
    }
    int removeFile(int directory, const char* name) override {
        note("remove", nameOf(name));
        return kept(WatchedFiles::removeFile(directory, name), {Kind::remove, nameOf(name), {}, {}, 0});
    }

private:
    int noteOpen(int fd, const char* path, int flags, mode_t mode) {
        note(fd >= 0 ? "open" : "open!", nameOf(path));
        if (fd < 0)
            return fd;
        names_[fd] = nameOf(path);
        isDirectory_[fd] = (flags & O_DIRECTORY) != 0;
        if (mode != 0)
            changes_.push_back({Kind::create, names_[fd], {}, {}, mode});
        return fd;
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
