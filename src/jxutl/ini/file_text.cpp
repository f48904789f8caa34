// Reads a whole file and judges its times.
#include "jxutl/ini/file_text.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <utility>

#include "jxutl/ini/descriptor.h"
#include "jxutl/ini/file_ops.h"
#include "jxutl/ini/ini_place.h"
#include "jxutl/ini/whole_file.h"
#include "jxutl/thread/failure.h"

namespace jx::ini {

namespace {

constexpr int kMostReadings = 5;
constexpr int kMostReadsBeyond = 1000;
constexpr std::size_t kPart = std::size_t{32} << 10;

constexpr std::int64_t kSecond = 1'000'000'000;
constexpr std::int64_t kFineStep = kSecond / 50;
constexpr std::int64_t kCoarseStep = 2 * kSecond + kFineStep;
constexpr time_t kLongAgoInSeconds = 10;  // and no product below overflows

bool isOldEnough(const timespec& time, const timespec& now) {
    if (time.tv_sec > now.tv_sec || time.tv_sec < now.tv_sec - kLongAgoInSeconds)
        return time.tv_sec < now.tv_sec;
    const std::int64_t age = (std::int64_t{now.tv_sec} - time.tv_sec) * kSecond + now.tv_nsec - time.tv_nsec;
    return age > (time.tv_nsec == 0 ? kCoarseStep : kFineStep);
}

bool fail(JxIniStep step, const std::string& path, int error) {
    noteFailure(step, path, error);
    return false;
}

bool isTooLarge(off_t size) {
    return size >= static_cast<off_t>(kTooManyBytes);
}

}  // namespace

bool isSettled(const FileStamp& stamp, const timespec& now) {
    return isOldEnough(stamp.written, now) && isOldEnough(stamp.changed, now);
}

FileText::Outcome FileText::read(const std::string& path, const struct stat& state) {
    settled_ = false;
    same_ = holds_;
    FileStamp stamp = stampOf(state);
    bool agrees = false;
    for (int count = 0; count < kMostReadings && !agrees; ++count) {
        // The time is taken before the reading: a change from here on must get a later time than the stamp's.
        const timespec begun = files().fileClock();
        Descriptor file;
        if (!openToRead(path, leavesAccessTime_, file))
            return Outcome::none;
        if (!file) {
            noteSuccess();
            return Outcome::none;
        }
        if (!readOnce(file.get(), path, stamp, agrees))
            return Outcome::none;
        settled_ = agrees && isSettled(stamp, begun);
    }
    stamp_ = stamp;
    holds_ = true;
    if (!same_)
        giveBackRoom();
    return same_ ? Outcome::same : Outcome::other;
}

// stamp comes as the file's before the reading and becomes the one after it. They agree when the file was not changed
// or replaced in between.
bool FileText::readOnce(int fd, const std::string& path, FileStamp& stamp, bool& agrees) {
    if (isTooLarge(stamp.size))
        return fail(JxIniStepRead, path, EFBIG);
    same_ = same_ && stamp == stamp_;
    if (!fill(fd, path, static_cast<std::size_t>(stamp.size)))
        return false;
    struct stat state;
    if (uninterrupted([&] { return files().lookAtOpen(fd, &state); }) != 0)
        return fail(JxIniStepLook, path, errno);
    if (!S_ISREG(state.st_mode))
        return fail(JxIniStepOpen, path, ENOTSUP);
    const FileStamp before = std::exchange(stamp, stampOf(state));
    agrees = stamp == before && static_cast<std::size_t>(stamp.size) == size_;
    return true;
}

// Reads up to the expected size, or to the end of a file that grew or shrank meanwhile; gives up on one that keeps
// growing. As long as the bytes are those of the text, they are only compared: an index of the text stays valid then.
bool FileText::fill(int fd, const std::string& path, std::size_t expected) {
    std::unique_ptr<char[]> part;
    if (same_)
        part = std::make_unique_for_overwrite<char[]>(kPart);
    std::size_t filled = 0;
    int readsBeyond = 0;
    do {
        const std::span<char> room = same_ ? std::span(part.get(), kPart) : roomFrom(filled, expected);
        const ssize_t count = uninterrupted([&] { return files().readSome(fd, room); });
        if (count < 0)
            return fail(JxIniStepRead, path, errno);
        if (count == 0)
            break;
        if (same_)
            takeOver(filled, room.first(static_cast<std::size_t>(count)), expected);
        filled += static_cast<std::size_t>(count);
        if (filled >= kTooManyBytes)
            return fail(JxIniStepRead, path, EFBIG);
        readsBeyond += filled > expected ? 1 : 0;
    } while (filled != expected && readsBeyond < kMostReadsBeyond);
    same_ = same_ && filled == size_;
    size_ = filled;
    return true;
}

// Room to read into. From here until it is filled, the text is not complete.
std::span<char> FileText::roomFrom(std::size_t filled, std::size_t expected) {
    holds_ = false;
    if (filled == 0)
        makeRoom(expected + 1, 0);
    else if (filled == room_)
        makeRoom(filled + std::max(filled, kPart), filled);
    return {bytes_.get() + filled, room_ - filled};
}

// Compares a part that was read with the text, and stores it from the first difference on.
void FileText::takeOver(std::size_t filled, std::span<const char> part, std::size_t expected) {
    const std::string_view held = view().substr(std::min(filled, size_), part.size());
    if (held == std::string_view(part.data(), part.size()))
        return;
    same_ = false;
    holds_ = false;
    makeRoom(std::max(expected + 1, filled + part.size()), filled);
    std::memcpy(bytes_.get() + filled, part.data(), part.size());
}

void FileText::makeRoom(std::size_t room, std::size_t kept) {
    if (room <= room_)
        return;
    const std::size_t wanted = room + room / 16;  // a file that grows by a line need not move
    if (kept == 0)
        bytes_.reset();
    room_ = kept == 0 ? 0 : room_;
    auto bytes = std::make_unique_for_overwrite<char[]>(wanted);
    if (kept > 0)
        std::memcpy(bytes.get(), bytes_.get(), kept);
    bytes_ = std::move(bytes);
    room_ = wanted;
}

// A file that became much smaller.
void FileText::giveBackRoom() {
    constexpr std::size_t kWorthIt = std::size_t{1} << 20;
    if (room_ < kWorthIt || room_ / 4 < size_)
        return;
    auto bytes = std::make_unique_for_overwrite<char[]>(size_ + 1);
    std::memcpy(bytes.get(), bytes_.get(), size_);
    bytes_ = std::move(bytes);
    room_ = size_ + 1;
}

}  // namespace jx::ini
