// Reads, edits and replaces one INI file.
#include "jxutl/ini/ini_change.h"

#include <fcntl.h>

#include <array>
#include <cerrno>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "jxutl/ini/descriptor.h"
#include "jxutl/ini/file_ops.h"
#include "jxutl/ini/ini_target.h"
#include "jxutl/ini/whole_file.h"
#include "jxutl/thread/failure.h"

namespace jx::ini {

namespace {

constexpr mode_t kAllModeBits = 07777;
constexpr mode_t kPrivateMode = 0600;
constexpr mode_t kSharedMode = 0666;

// Read from /proc: umask() would change it for every other thread meanwhile.
std::optional<mode_t> currentUmask() {
    const Descriptor status(
        uninterrupted([] { return files().openFile("/proc/thread-self/status", O_RDONLY | O_CLOEXEC | O_NOCTTY, 0); }));
    if (!status)
        return std::nullopt;
    std::array<char, 512> room;
    const ssize_t length = uninterrupted([&] { return files().readSome(status.get(), room); });
    constexpr std::string_view kName = "\nUmask:\t";
    const std::string_view text(room.data(), length < 0 ? 0 : static_cast<std::size_t>(length));
    std::size_t at = text.find(kName);
    if (at == std::string_view::npos)
        return std::nullopt;
    mode_t mask = 0;
    for (at += kName.size(); at < text.size() && text[at] >= '0' && text[at] <= '7'; ++at)
        mask = mask * 8 + static_cast<mode_t>(text[at] - '0');
    return mask;
}

// Without a known umask the file is for its owner only.
mode_t modeOfNewFile(bool shared) {
    const std::optional<mode_t> mask = shared ? currentUmask() : std::nullopt;
    return mask ? kSharedMode & ~*mask : kPrivateMode;
}

// Whether the group's bits differ from the bits of all others.
bool groupMatters(mode_t mode) {
    return (mode >> 3 & 07) != (mode & 07);
}

bool writeAll(int fd, std::span<const char> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = uninterrupted([&] { return files().writeSome(fd, bytes); });
        if (count < 0)
            return false;
        if (count == 0) {
            errno = EIO;
            return false;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return true;
}

bool flushNow(int fd) {
    return uninterrupted([fd] { return files().flush(fd); }) == 0;
}

// A directory that may not be read counts as flushed, and so does one on a file system that cannot flush directories.
bool flushDirectory(const Descriptor& directory) {
    if (!directory || flushNow(directory.get()))
        return true;
    return errno == EINVAL || errno == ENOTSUP || errno == ENOSYS || errno == EROFS;
}

// Too many open files or too little memory, not a property of the directory.
bool isShortage(int error) {
    return error == EMFILE || error == ENFILE || error == ENOMEM;
}

}  // namespace

bool IniChange::fail(JxIniStep step, const std::string& path, int error) {
    noteFailure(step, path, error);
    lock_.discard();
    holdsLock_ = false;
    return false;
}

bool IniChange::find(const IniLocation& where) {
    if (where.path.empty())
        return fail(JxIniStepLocate, where.path, errno);
    shared_ = where.shared;
    if (!findTarget(where.path, target_))
        return false;
    directory_ = directoryOf(target_);
    return true;
}

bool IniChange::begin(const IniLocation& where) {
    if (!find(where) || !lock_.take(target_))
        return false;
    holdsLock_ = true;
    return readTarget();
}

bool IniChange::preview(const IniLocation& where) {
    return find(where) && readTarget();
}

bool IniChange::readTarget() {
    std::string bytes;
    const Whole outcome = readWhole(target_, bytes, old_);
    present_ = outcome == Whole::read;
    text_ = IniText(std::move(bytes));
    if (outcome != Whole::failed)
        return true;
    lock_.discard();
    holdsLock_ = false;
    return false;
}

Edit IniChange::apply(const char* section, const char* key, const char* value) {
    const Edit edit = text_.apply(section, key, value);
    changed_ = changed_ || edit == Edit::changed;
    if (edit == Edit::refused)
        noteRefusal(target_, section, key, value);
    return edit;
}

bool IniChange::discard() {
    return !std::exchange(holdsLock_, false) || lock_.withdraw();
}

bool IniChange::commit() {
    if (!holdsLock_)
        return fail(JxIniStepArgument, target_, EPERM);
    if (!changed_)
        return discard();
    const Descriptor directory(
        uninterrupted([this] { return files().openFile(directory_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0); }));
    if (!directory && isShortage(errno))
        return fail(JxIniStepOpen, directory_, errno);
    holdsLock_ = false;
    if (!writeNewFile() || !lock_.moveOver(target_))
        return false;
    if (flushDirectory(directory))
        return true;
    noteFailure(JxIniStepFlushDirectory, directory_, errno, /*afterRename=*/true);
    return false;
}

bool IniChange::writeNewFile() {
    const std::string& bytes = text_.bytes();
    if (bytes.size() >= kTooManyBytes)
        return fail(JxIniStepWrite, target_, EFBIG);
    // The owner first: if this writer is killed, the target's owner can reuse the file. The mode last: writing clears
    // the set-user-id and set-group-id bits.
    if (!keepOwner())
        return false;
    if (!writeAll(lock_.file(), bytes))
        return fail(JxIniStepWrite, lock_.path(), errno);
    if (!keepMode())
        return false;
    return flushNow(lock_.file()) || fail(JxIniStepFlush, lock_.path(), errno);
}

bool IniChange::keepOwner() {
    const bool sameOwner = !present_ || old_.st_uid == lock_.state().st_uid;
    const bool sameGroup = !present_ || old_.st_gid == lock_.state().st_gid;
    if (sameOwner && sameGroup)
        return true;
    const uid_t owner = sameOwner ? static_cast<uid_t>(-1) : old_.st_uid;
    if (files().setOwner(lock_.file(), owner, old_.st_gid) == 0)
        return true;
    // A user may own a file whose group they are not in. Nothing is lost when that group has no rights of its own.
    if (sameOwner && errno == EPERM && !groupMatters(old_.st_mode))
        return true;
    return fail(JxIniStepOwner, lock_.path(), errno);
}

bool IniChange::keepMode() {
    const mode_t mode = present_ ? old_.st_mode & kAllModeBits : modeOfNewFile(shared_);
    if (mode == kPrivateMode)
        return true;
    return files().setMode(lock_.file(), mode) == 0 || fail(JxIniStepMode, lock_.path(), errno);
}

}  // namespace jx::ini
