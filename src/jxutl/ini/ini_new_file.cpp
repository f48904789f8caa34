// Writes the new file and puts it in the target's place.
#include "jxutl/ini/ini_new_file.h"

#include <fcntl.h>

#include <cerrno>
#include <cstdio>

#include "jxutl/ini/file_ops.h"
#include "jxutl/ini/whole_file.h"
#include "jxutl/thread/failure.h"

namespace jx::ini {

namespace {

constexpr mode_t kAllModeBits = 07777;
constexpr mode_t kOwnerOnly = 0600;

// Whether the group's bits differ from the bits of all others.
bool groupMatters(mode_t mode) {
    return (mode >> 3 & 07) != (mode & 07);
}

int lookAtName(const IniPlace& place, const std::string& name, struct stat& state) {
    return uninterrupted([&] { return files().lookAtName(place.directory(), name.c_str(), &state); });
}

int removeName(const IniPlace& place, const std::string& name) {
    return uninterrupted([&] { return files().removeFile(place.directory(), name.c_str()); });
}

// Whether the file system, or an old kernel, does not know the flags of renameat2.
bool isUnknown(int error) {
    return error == EINVAL || error == ENOSYS || error == ENOTSUP;
}

}  // namespace

IniNewFile::~IniNewFile() {
    if (isMine_)
        removeName(place_, name_);
}

bool IniNewFile::fail(JxIniStep step, int error) const {
    noteFailure(step, place_.path(), error);
    return false;
}

IniNewFile::Outcome IniNewFile::failed(JxIniStep step, int error) const {
    fail(step, error);
    return Outcome::failed;
}

bool IniNewFile::make() {
    const auto open = [this] {
        constexpr int kFlags = kOpenFlags | O_WRONLY | O_CREAT | O_EXCL;
        return Descriptor(
            uninterrupted([this] { return files().openFile(place_.directory(), name_.c_str(), kFlags, kOwnerOnly); }));
    };
    file_ = open();
    if (!file_ && errno == EEXIST && removeName(place_, name_) == 0)
        file_ = open();
    if (!file_)
        return fail(JxIniStepWrite, errno);
    isMine_ = true;
    const bool looked = uninterrupted([this] { return files().lookAtOpen(file_.get(), &state_); }) == 0;
    return looked || fail(JxIniStepWrite, errno);
}

// The mode last: writing clears the set-user-id and set-group-id bits.
bool IniNewFile::fill(const std::string& text, const struct stat* old, mode_t mode) {
    if (text.size() >= kTooManyBytes)
        return fail(JxIniStepWrite, EFBIG);
    if (!keepOwner(old))
        return false;
    if (!writeAll(file_.get(), text))
        return fail(JxIniStepWrite, errno);
    if (!setMode(old != nullptr ? old->st_mode & kAllModeBits : mode))
        return false;
    return uninterrupted([this] { return files().flush(file_.get()); }) == 0 || fail(JxIniStepFlush, errno);
}

bool IniNewFile::keepOwner(const struct stat* old) {
    const bool sameOwner = old == nullptr || old->st_uid == state_.st_uid;
    const bool sameGroup = old == nullptr || old->st_gid == state_.st_gid;
    if (sameOwner && sameGroup)
        return true;
    const uid_t owner = sameOwner ? static_cast<uid_t>(-1) : old->st_uid;
    if (uninterrupted([&] { return files().setOwner(file_.get(), owner, old->st_gid); }) == 0)
        return true;
    // A user may own a file whose group they are not in. Nothing is lost when that group has no rights of its own.
    if (sameOwner && errno == EPERM && !groupMatters(old->st_mode))
        return true;
    return fail(JxIniStepOwner, errno);
}

bool IniNewFile::setMode(mode_t mode) {
    if (mode == (state_.st_mode & kAllModeBits))
        return true;
    return uninterrupted([&] { return files().setMode(file_.get(), mode); }) == 0 || fail(JxIniStepMode, errno);
}

IniNewFile::Outcome IniNewFile::replace(const struct stat* old) {
    struct stat there;
    const bool isThere = lookAtName(place_, place_.name(), there) == 0;
    if (!isThere && errno != ENOENT)
        return failed(JxIniStepLook, errno);
    if (isThere != (old != nullptr) || (isThere && !isSameFile(there, *old)))
        return Outcome::other;
    return old != nullptr ? exchange(*old) : renameTo(RENAME_NOREPLACE);
}

// A signal may interrupt a rename that was made: then it is made again, and our own file has come out.
IniNewFile::Outcome IniNewFile::exchange(const struct stat& old) {
    const Outcome renamed = renameTo(RENAME_EXCHANGE);
    if (renamed != Outcome::placed || !isMine_)
        return renamed;
    struct stat out;
    if (lookAtName(place_, name_, out) != 0)
        return errno == ENOENT ? Outcome::placed : exchangeBack(Outcome::failed, errno);
    if (isSameFile(out, state_))
        return Outcome::other;
    return isSameFile(out, old) ? Outcome::placed : exchangeBack(Outcome::other, ESTALE);
}

IniNewFile::Outcome IniNewFile::exchangeBack(Outcome outcome, int error) {
    if (renameTo(RENAME_EXCHANGE) == Outcome::placed) {
        fail(JxIniStepRename, error);
        return outcome;
    }
    // What came out stays under this file's name: it may be the only copy of another program's text.
    isMine_ = false;
    noteFailure(JxIniStepRename, place_.path(), error, /*afterRename=*/true);
    return Outcome::failed;
}

// Without the flags the target is replaced at once: nothing of this file's name is left to look at or to remove.
IniNewFile::Outcome IniNewFile::renameTo(unsigned flags) {
    const auto rename = [this](unsigned how) {
        return uninterrupted(
            [=, this] { return files().rename(place_.directory(), name_.c_str(), place_.name().c_str(), how); });
    };
    int result = rename(flags);
    const bool isExchange = result == 0 && flags == RENAME_EXCHANGE;
    if (result != 0 && isUnknown(errno))
        result = rename(0);
    if (result == 0) {
        isMine_ = isExchange;
        return Outcome::placed;
    }
    if (errno == ENOENT || errno == EEXIST)
        return Outcome::other;
    return failed(JxIniStepRename, errno);
}

bool IniNewFile::removeOld() {
    if (!isMine_)
        return true;
    isMine_ = false;
    return removeName(place_, name_) == 0 || errno == ENOENT;
}

}  // namespace jx::ini
