// Makes, locks, checks, renames and removes NAME.lock.
#include "jxutl/ini/ini_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

#include "jxutl/ini/file_ops.h"
#include "jxutl/thread/failure.h"

namespace jx::ini {

namespace {

constexpr mode_t kAllModeBits = 07777;
constexpr mode_t kOwnerOnly = 0600;

// O_NONBLOCK: there may be a FIFO at the path, and opening it must not wait.
constexpr int kOpenFlags = O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

bool isSameFile(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

// Whether a file that another writer left can become the new file: no other user can have it open or reach it.
bool isOurs(const struct stat& state) {
    return state.st_uid == ::geteuid() && state.st_nlink == 1 && (state.st_mode & kAllModeBits) == kOwnerOnly;
}

int lockAtOnce(int fd) {
    return uninterrupted([fd] { return files().lockFile(fd, LOCK_EX | LOCK_NB); });
}

}  // namespace

bool IniLock::take(const std::string& target) {
    path_ = target + ".lock";
    std::int64_t end = 0;
    for (bool waited = false;; waited = true) {
        const Attempt outcome = attempt();
        if (outcome == Attempt::taken || outcome == Attempt::failed)
            return outcome == Attempt::taken;
        const std::int64_t now = files().waitingClockInMilliseconds();
        if (!waited)
            end = now + kLongestWaitInMilliseconds;
        if (now >= end) {
            noteFailure(JxIniStepLock, path_, outcome == Attempt::busy ? waitError_ : ETIMEDOUT);
            return false;
        }
        if (outcome == Attempt::busy)
            files().pause(kAskAgainInMilliseconds);
    }
}

IniLock::Attempt IniLock::attempt() {
    using Step = Attempt (IniLock::*)();
    constexpr Step kSteps[] = {&IniLock::open, &IniLock::lock, &IniLock::checkPath, &IniLock::checkTrust,
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
    const int fd = uninterrupted(
        [this] { return files().openFile(path_.c_str(), kOpenFlags | O_RDWR | O_CREAT | O_EXCL, kOwnerOnly); });
    made_ = writable_ = fd >= 0;
    if (!made_)
        return errno == EEXIST ? openExisting() : fail(JxIniStepLock, errno);
    file_ = Descriptor(fd);
    return Attempt::taken;
}

IniLock::Attempt IniLock::openExisting() {
    const auto openFor = [this](int access) {
        return uninterrupted([&] { return files().openFile(path_.c_str(), kOpenFlags | access, 0); });
    };
    int fd = openFor(O_RDWR);
    writable_ = fd >= 0;
    // Left by a writer that was killed after it set the mode of a read-only target. A descriptor for reading is enough
    // to lock it, and it will be replaced.
    if (fd < 0 && errno == EACCES)
        fd = openFor(O_RDONLY);
    if (fd >= 0) {
        file_ = Descriptor(fd);
        return Attempt::taken;
    }
    if (errno == ENOENT)
        return Attempt::again;
    // Another user's: that writer may be at work, so wait as for any other.
    if (errno == EACCES) {
        waitError_ = EACCES;
        return Attempt::busy;
    }
    return fail(JxIniStepLock, errno);
}

IniLock::Attempt IniLock::lock() {
    if (files().lookAtOpen(file_.get(), &state_) != 0)
        return fail(JxIniStepLock, errno);
    if (!S_ISREG(state_.st_mode))
        return fail(JxIniStepLock, ENOTSUP);
    if (lockAtOnce(file_.get()) == 0)
        return Attempt::taken;
    if (errno != EWOULDBLOCK)
        return fail(JxIniStepLock, errno);
    waitError_ = ETIMEDOUT;
    return unlock(Attempt::busy);
}

// From here on the file keeps its name as long as we hold the lock: a writer renames or removes only what it locked.
IniLock::Attempt IniLock::checkPath() {
    struct stat there;
    if (files().lookAtLink(path_.c_str(), &there) != 0)
        return errno == ENOENT ? unlock(Attempt::again) : fail(JxIniStepLock, errno);
    if (!isSameFile(state_, there))
        return unlock(Attempt::again);
    state_ = there;
    return Attempt::taken;
}

IniLock::Attempt IniLock::checkTrust() {
    if (made_ || (writable_ && isOurs(state_)))
        return Attempt::taken;
    if (files().removeFile(path_.c_str()) != 0)
        return fail(JxIniStepLock, errno);
    return unlock(Attempt::again);
}

IniLock::Attempt IniLock::prepare() {
    // A umask may have taken bits from a new file.
    if ((state_.st_mode & kAllModeBits) != kOwnerOnly) {
        if (files().setMode(file_.get(), kOwnerOnly) != 0)
            return fail(JxIniStepMode, errno);
        state_.st_mode = S_IFREG | kOwnerOnly;
    }
    if (state_.st_size != 0 && uninterrupted([this] { return files().emptyFile(file_.get()); }) != 0)
        return fail(JxIniStepEmpty, errno);
    return Attempt::taken;
}

IniLock::Attempt IniLock::unlock(Attempt outcome) {
    file_.close();
    return outcome;
}

IniLock::Attempt IniLock::fail(JxIniStep step, int error) {
    noteFailure(step, path_, error);
    discard();
    return Attempt::failed;
}

// If our file was removed by hand, NAME.lock may be another writer's, half written: it must not become the target.
int IniLock::lookAgain() const {
    struct stat there;
    if (files().lookAtLink(path_.c_str(), &there) != 0)
        return errno;
    return isSameFile(state_, there) ? 0 : ESTALE;
}

bool IniLock::moveOver(const std::string& target) {
    int error = lookAgain();
    if (error == 0 && files().renameOver(path_.c_str(), target.c_str()) != 0)
        error = errno;
    if (error != 0)
        return fail(JxIniStepRename, error) == Attempt::taken;
    file_.close();
    return true;
}

bool IniLock::withdraw() {
    int error = lookAgain();
    // Removed while still locked: after that the file of that name could be the next writer's.
    if (error == 0 && files().removeFile(path_.c_str()) != 0)
        error = errno;
    if (error != 0 && error != ENOENT && error != ESTALE)
        return fail(JxIniStepRemove, error) == Attempt::taken;
    file_.close();
    return true;
}

void IniLock::discard() noexcept {
    if (!file_)
        return;
    // Any step may have failed before: remove only a file that is still at the path and that no other writer has
    // locked. Where locking itself fails, no other writer can be at work.
    struct stat own;
    struct stat there;
    const bool removable = files().lookAtOpen(file_.get(), &own) == 0 && S_ISREG(own.st_mode) &&
                           (lockAtOnce(file_.get()) == 0 || errno != EWOULDBLOCK) &&
                           files().lookAtLink(path_.c_str(), &there) == 0 && isSameFile(own, there);
    if (removable)
        files().removeFile(path_.c_str());
    file_.close();
}

}  // namespace jx::ini
