// Makes, locks, checks and removes .NAME.jxlock.
#include "jxutl/ini/ini_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <climits>
#include <string_view>

#include "jxutl/ini/file_ops.h"
#include "jxutl/ini/whole_file.h"
#include "jxutl/thread/failure.h"
#include "jxutl/thread/thread_data.h"

namespace jx::ini {

namespace {

constexpr mode_t kAllModeBits = 07777;
constexpr mode_t kOwnerOnly = 0600;
constexpr std::string_view kLine = "jxodbc lock\n";

int lockAtOnce(int fd) {
    return uninterrupted([fd] { return files().lockFile(fd, LOCK_EX | LOCK_NB); });
}

int lookAtOpen(int fd, struct stat& state) {
    return uninterrupted([&] { return files().lookAtOpen(fd, &state); });
}

int lookAtName(const IniPlace& place, const std::string& name, struct stat& state) {
    return uninterrupted([&] { return files().lookAtName(place.directory(), name.c_str(), &state); });
}

int removeName(const IniPlace& place, const std::string& name) {
    return uninterrupted([&] { return files().removeFile(place.directory(), name.c_str()); });
}

std::string hidden(const std::string& name) {
    return name.starts_with('.') ? name : '.' + name;
}

std::string nameOfNew(const std::string& name, ino_t number) {
    std::array<char, 16> digits;
    char* const end = std::to_chars(digits.begin(), digits.end(), std::uint64_t{number}, 16).ptr;
    return hidden(name) + ".jxnew-" + std::string(digits.begin(), end);
}

// Whether a lock of the store can look like that. A file whose mode lacks bits is being made, under a umask that takes
// them.
bool isLock(const struct stat& state) {
    const mode_t mode = state.st_mode & kAllModeBits;
    const bool isBeingMade = state.st_size == 0 && (mode & ~kOwnerOnly) == 0;
    return S_ISREG(state.st_mode) && state.st_nlink == 1 && (mode == kOwnerOnly || isBeingMade);
}

// Whether a lock of the store can begin so. A power cut may have left a part of the line, or zeros.
bool isLineOrPart(std::string_view bytes) {
    const bool isZeros =
        bytes.size() <= kLine.size() && std::ranges::all_of(bytes, [](char byte) { return byte == 0; });
    return isZeros || kLine.starts_with(bytes.substr(0, kLine.size()));
}

std::int64_t waitOfThread() {
    const ThreadData* data = existingThreadData();
    return data != nullptr ? data->lockWaitInMilliseconds : kLongestWaitInMilliseconds;
}

}  // namespace

bool IniLock::take(const IniPlace& place) {
    place_ = &place;
    name_ = hidden(place.name()) + ".jxlock";
    if (place.missing() != 0)
        return fail(place.missing()) == Attempt::taken;
    if (nameOfNew(place.name(), ~ino_t{0}).size() > NAME_MAX)
        return fail(ENAMETOOLONG) == Attempt::taken;
    std::int64_t begin = 0;
    for (bool waited = false;; waited = true) {
        const Attempt outcome = attempt();
        if (outcome == Attempt::taken || outcome == Attempt::failed)
            return outcome == Attempt::taken;
        const std::int64_t now = files().waitingClockInMilliseconds();
        if (!waited)
            begin = now;
        // Without time to wait it is still tried again when the other writer has just let go.
        const std::int64_t longest =
            outcome == Attempt::busy ? waitOfThread() : std::max(waitOfThread(), kLongestWaitInMilliseconds);
        if (now - begin >= longest) {
            noteFailure(JxIniStepLock, place.pathOf(name_), outcome == Attempt::busy ? waitError_ : ETIMEDOUT);
            return false;
        }
        if (outcome == Attempt::busy)
            files().pause(kAskAgainInMilliseconds);
    }
}

IniLock::Attempt IniLock::attempt() {
    using Step = Attempt (IniLock::*)();
    constexpr Step kSteps[] = {&IniLock::open, &IniLock::lock, &IniLock::checkName, &IniLock::checkLine,
                               &IniLock::prepare};
    for (const Step step : kSteps) {
        const Attempt outcome = (this->*step)();
        if (outcome != Attempt::taken)
            return outcome;
    }
    return Attempt::taken;
}

// O_EXCL shows whether the file was made here; its owner does not: on some file systems that is another user.
IniLock::Attempt IniLock::open() {
    const int fd = uninterrupted([this] {
        return files().openFile(place_->directory(), name_.c_str(), kOpenFlags | O_RDWR | O_CREAT | O_EXCL, kOwnerOnly);
    });
    made_ = known_ = fd >= 0;
    if (!made_)
        return errno == EEXIST ? openExisting() : fail(errno);
    file_ = Descriptor(fd);
    return Attempt::taken;
}

IniLock::Attempt IniLock::openExisting() {
    struct stat there;
    if (lookAtName(*place_, name_, there) != 0)
        return errno == ENOENT ? Attempt::again : fail(errno);
    // Looked at in the moment in which its holder removed it.
    if (there.st_nlink == 0)
        return Attempt::again;
    if (!isLock(there))
        return refuse();
    file_ = Descriptor(
        uninterrupted([this] { return files().openFile(place_->directory(), name_.c_str(), kOpenFlags | O_RDWR, 0); }));
    if (file_)
        return Attempt::taken;
    if (errno == ENOENT)
        return Attempt::again;
    // Another user's: that writer may be at work, so wait as for any other.
    if (errno == EACCES) {
        waitError_ = EACCES;
        return Attempt::busy;
    }
    return fail(errno);
}

IniLock::Attempt IniLock::lock() {
    if (lookAtOpen(file_.get(), state_) != 0)
        return fail(errno);
    if (state_.st_nlink == 0)
        return unlock(Attempt::again);
    if (!made_ && !isLock(state_))
        return refuse();
    if (lockAtOnce(file_.get()) == 0)
        return Attempt::taken;
    if (errno != EWOULDBLOCK)
        return fail(errno);
    waitError_ = ETIMEDOUT;
    return unlock(Attempt::busy);
}

// From here on the file keeps its name as long as we hold the lock: a writer removes only what it locked.
IniLock::Attempt IniLock::checkName() {
    struct stat there;
    if (lookAtName(*place_, name_, there) != 0)
        return errno == ENOENT ? unlock(Attempt::again) : fail(errno);
    if (!isSameFile(state_, there))
        return unlock(Attempt::again);
    state_ = there;
    newName_ = nameOfNew(place_->name(), state_.st_ino);
    return Attempt::taken;
}

IniLock::Attempt IniLock::checkLine() {
    if (made_)
        return Attempt::taken;
    std::array<char, kLine.size() + 1> room;
    const ssize_t count = uninterrupted([&] { return files().readSome(file_.get(), room); });
    if (count < 0)
        return fail(errno);
    if (!isLineOrPart({room.data(), static_cast<std::size_t>(count)}))
        return refuse();
    // The writer that was killed may have left its new file, under a name that only the number of its lock file gives.
    known_ = removeName(*place_, newName_) == 0 || errno == ENOENT;
    return Attempt::taken;
}

IniLock::Attempt IniLock::prepare() {
    // A umask may have taken bits from a new file.
    if ((state_.st_mode & kAllModeBits) != kOwnerOnly &&
        uninterrupted([this] { return files().setMode(file_.get(), kOwnerOnly); }) != 0)
        return fail(errno);
    if (!made_)
        return Attempt::taken;
    giveToOwnerOfDirectory();
    return writeAll(file_.get(), kLine) ? Attempt::taken : fail(errno);
}

// If root's writer is killed, the owner of the directory can take up the lock it leaves. Where that is not possible
// nothing is lost but this help.
void IniLock::giveToOwnerOfDirectory() {
    struct stat directory;
    if (::geteuid() != 0 || lookAtOpen(place_->directory(), directory) != 0 || directory.st_uid == state_.st_uid)
        return;
    (void)uninterrupted([&] { return files().setOwner(file_.get(), directory.st_uid, static_cast<gid_t>(-1)); });
}

IniLock::Attempt IniLock::unlock(Attempt outcome) {
    file_.close();
    return outcome;
}

IniLock::Attempt IniLock::fail(int error) {
    noteFailure(JxIniStepLock, place_->pathOf(name_), error);
    discard();
    return Attempt::failed;
}

IniLock::Attempt IniLock::refuse() {
    known_ = false;
    return fail(EEXIST);
}

// If our file was removed by hand, the one at its name may be another writer's. Ours is removed while still locked:
// after that the file of that name could be the next writer's.
int IniLock::removeOwn() const {
    struct stat there;
    if (!file_ || !known_)
        return 0;
    if (lookAtName(*place_, name_, there) != 0)
        return errno == ENOENT ? 0 : errno;
    return !isSameFile(state_, there) || removeName(*place_, name_) == 0 ? 0 : errno;
}

void IniLock::letGo() noexcept {
    (void)removeOwn();  // one that stays is taken up by the next writer
    file_.close();
}

bool IniLock::withdraw() {
    const int error = removeOwn();
    if (error != 0) {
        noteFailure(JxIniStepRemove, place_->pathOf(name_), error);
        discard();
        return false;
    }
    file_.close();
    return true;
}

void IniLock::discard() noexcept {
    if (!file_)
        return;
    // Any step may have failed before: remove only a file that is still at its name and that no other writer has
    // locked. Where locking itself fails, no other writer can be at work.
    struct stat own;
    struct stat there;
    const bool removable = known_ && lookAtOpen(file_.get(), own) == 0 &&
                           (lockAtOnce(file_.get()) == 0 || errno != EWOULDBLOCK) &&
                           lookAtName(*place_, name_, there) == 0 && isSameFile(own, there);
    if (removable)
        removeName(*place_, name_);
    file_.close();
}

}  // namespace jx::ini
