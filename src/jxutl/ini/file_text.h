// The text of a file in memory, and whether the file has changed since.
#pragma once

#include <sys/stat.h>

#include <cerrno>
#include <cstddef>
#include <ctime>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace jx::ini {

inline bool isSameTime(const timespec& left, const timespec& right) {
    return left.tv_sec == right.tv_sec && left.tv_nsec == right.tv_nsec;
}

// FileStamp: identifies one state of a file.
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

// Whether a change made at now or later must show in the stamp: both its times are older than one step of the file
// system's clock. A time without a sub-second part may come from a clock with steps of up to two seconds; others follow
// the kernel's clock, which ticks at least every ten milliseconds. For a time in the future the result is false.
bool isSettled(const FileStamp& stamp, const timespec& now);

// FileText: the bytes of one file; their memory is used again for the file's next state.
// Use      when isCurrent is false, read; then view.
// Failure  read returns none and notes the thread's failure; for an absent file it returns none and notes success.
// After
//          none, and after std::bad_alloc, which may be thrown, there is nothing to view until a read succeeds.
class FileText {
public:
    enum class Outcome { none, same, other };  // same: the bytes are those of the read before

    // Whether the text is certainly that of the file with that state.
    bool isCurrent(const struct stat& state) const { return settled_ && stamp_ == stampOf(state); }

    // Whether the text was read from the file in that state.
    bool isOf(const struct stat& state) const { return holds_ && stamp_ == stampOf(state); }

    // Reads the whole file; state is its fresh stat(), that of a regular file. It never waits, even if a FIFO has
    // replaced the file since. A file that changes meanwhile is read again, up to five times; after that the text is
    // kept but is not current.
    Outcome read(const std::string& path, const struct stat& state);

    std::string_view view() const { return {bytes_.get(), size_}; }

    // The bytes the text takes.
    std::size_t memory() const { return room_; }

private:
    bool readOnce(int fd, const std::string& path, FileStamp& stamp, bool& agrees);
    bool fill(int fd, const std::string& path, std::size_t expected);
    std::span<char> roomFrom(std::size_t filled, std::size_t expected);
    void takeOver(std::size_t filled, std::span<const char> part, std::size_t expected);
    void makeRoom(std::size_t room, std::size_t kept);
    void giveBackRoom();

    std::unique_ptr<char[]> bytes_;
    std::size_t size_ = 0;
    std::size_t room_ = 0;
    FileStamp stamp_;
    bool settled_ = false;          // the text is the file's as long as the stamp is
    bool holds_ = false;            // bytes_ are a complete file
    bool same_ = false;             // the bytes read so far are those in bytes_
    bool leavesAccessTime_ = true;  // O_NOATIME was not refused yet
};

}  // namespace jx::ini
