// The text of a file as it was read, and whether it still is the file's text.
#pragma once

#include <sys/stat.h>

#include <cerrno>
#include <cstddef>
#include <ctime>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "jxutl/ini/descriptor.h"

namespace jx::ini {

inline bool isSameTime(const timespec& left, const timespec& right) {
    return left.tv_sec == right.tv_sec && left.tv_nsec == right.tv_nsec;
}

// FileStamp: what tells one state of a file from another.
struct FileStamp {
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    timespec written{};  // mtime
    timespec changed{};  // ctime

    bool operator==(const FileStamp& other) const {
        return inode == other.inode && device == other.device && size == other.size &&
               isSameTime(written, other.written) && isSameTime(changed, other.changed);
    }
};

inline FileStamp stampOf(const struct stat& state) {
    return {state.st_dev, state.st_ino, state.st_size, state.st_mtim, state.st_ctim};
}

// Whether a change made at now or later must show in the stamp: both its times lie further back than the steps in which
// the file system counts. A time without sub-second part may come from one that counts in steps of up to two seconds;
// the others follow the kernel's clock, which ticks at least every ten milliseconds. A time that lies ahead tells
// nothing.
bool isSettled(const FileStamp& stamp, const timespec& now);

// FileText: the bytes of one file in memory that is used again for its next state.
// Use      while isCurrent says no, read again; then view.
// Failure  read says none, noted as the thread's failure; that the file is absent is none, and noted as success. After
//          none, and after std::bad_alloc, which may be thrown, there is nothing to view until a read succeeds.
class FileText {
public:
    enum class Outcome { none, same, other };  // same: the bytes are those that were there before

    // Whether the text is that of the file with that state, for certain.
    bool isCurrent(const struct stat& state) const { return settled_ && stamp_ == stampOf(state); }

    // Reads the file whole; state is what stat() just told of it, a regular file. It never waits, not even when another
    // thing has taken the file's place since. A file that changes meanwhile is read again, up to five times, then taken
    // as it came and not held to be current.
    Outcome read(const std::string& path, const struct stat& state);

    std::string_view view() const { return {bytes_.get(), size_}; }

    // The bytes the text takes.
    std::size_t memory() const { return room_; }

private:
    Descriptor open(const std::string& path);
    bool readOnce(int fd, const std::string& path, FileStamp& stamp, bool& agrees);
    bool fill(int fd, const std::string& path, std::size_t expected);
    std::span<char> roomFrom(std::size_t filled, std::size_t expected);
    void takeOver(std::size_t filled, std::span<const char> part, std::size_t expected);
    void makeRoom(std::size_t room, std::size_t kept);

    std::unique_ptr<char[]> bytes_;
    std::size_t size_ = 0;
    std::size_t room_ = 0;
    FileStamp stamp_;
    bool settled_ = false;  // while the stamp stays, so does the text
    bool holds_ = false;    // bytes_ are those of a whole file
    bool same_ = false;     // and so far those that are being read
    bool leavesAccessTime_ = true;
};

}  // namespace jx::ini
