// Reads, edits and replaces one INI file.
#include "jxutl/ini/ini_change.h"

#include <fcntl.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "jxutl/ini/descriptor.h"
#include "jxutl/ini/file_ops.h"
#include "jxutl/ini/whole_file.h"
#include "jxutl/thread/failure.h"
#include "jxutl/thread/thread_data.h"
#include "rules/names.h"
#include "rules/storable.h"

namespace jx::ini {

namespace {

constexpr mode_t kPrivateMode = 0600;
constexpr mode_t kSharedMode = 0666;

// Read from /proc: umask() would change it for every other thread meanwhile.
std::optional<mode_t> currentUmask() {
    const Descriptor status(uninterrupted(
        [] { return files().openFile(AT_FDCWD, "/proc/thread-self/status", O_RDONLY | O_CLOEXEC | O_NOCTTY, 0); }));
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
    return place_.find(where.path);
}

bool IniChange::begin(const IniLocation& where) {
    if (!find(where) || !lock_.take(place_))
        return false;
    holdsLock_ = true;
    return readTarget();
}

bool IniChange::preview(const IniLocation& where) {
    return find(where) && readTarget();
}

bool IniChange::readTarget() {
    const Whole outcome = readWhole(place_, before_, old_);
    present_ = outcome == Whole::read;
    text_ = IniText(before_);
    if (outcome != Whole::failed)
        return true;
    lock_.discard();
    holdsLock_ = false;
    return false;
}

Edit IniChange::apply(const char* section, const char* key, const char* value) {
    const Edit edit = text_.apply(section, key, value);
    if (edit == Edit::changed) {
        changed_ = true;
        ++version_;
    }
    if (edit == Edit::refused)
        noteRefusal(place_.path(), section, key, value);
    return edit;
}

Edit IniChange::applyAll(std::span<const Setting> settings) {
    const Edit edit = text_.applyAll(settings);
    changed_ = changed_ || edit == Edit::changed;
    for (const Setting& each : settings)
        if (edit == Edit::refused &&
            rules::refusalOf(rules::argument(each.section), rules::argument(each.key), rules::argument(each.value))) {
            noteRefusal(place_.path(), each.section, each.key, each.value);
            break;
        }
    return edit;
}

void IniChange::replaceText(std::string bytes) {
    changed_ = changed_ || bytes != text_.bytes();
    text_ = IniText(std::move(bytes));
}

bool IniChange::discard() {
    return !std::exchange(holdsLock_, false) || lock_.withdraw();
}

bool IniChange::isAt(const IniPlace& place) const {
    const auto look = [](const IniPlace& there, struct stat& state) {
        return uninterrupted([&] { return files().lookAtOpen(there.directory(), &state); }) == 0;
    };
    struct stat own;
    struct stat other;
    return place_.name() == place.name() && look(place_, own) && look(place, other) && isSameFile(own, other);
}

void IniChange::look(const IniChange& other) {
    before_ = other.text();
    text_ = IniText(before_);
}

void IniChange::join(const std::shared_ptr<IniChange>& outer) {
    look(*outer);
    joined_ = true;
    outer_ = outer;
}

bool IniChange::commitToOuter() {
    const std::shared_ptr<IniChange> outer = outer_.lock();
    if (outer == nullptr || !outer->holdsLock_)
        return fail(JxIniStepArgument, {}, EPERM);
    if (outer->text() != before_)
        return fail(JxIniStepRename, outer->place_.path(), ESTALE);
    outer->changed_ = outer->changed_ || changed_;
    outer->text_ = std::move(text_);
    ++outer->version_;
    return true;
}

bool IniChange::commit(Undone undone) {
    if (joined_)
        return commitToOuter();
    if (!holdsLock_)
        return fail(JxIniStepArgument, place_.path(), EPERM);
    const bool makesFile = undone == Undone::makesTheFile && !present_;
    if (!changed_ || (before_ == text_.bytes() && !makesFile))
        return discard();
    const std::int64_t end = files().waitingClockInMilliseconds() + kLongestWaitInMilliseconds;
    for (;;) {
        const IniNewFile::Outcome outcome = replace();
        if (outcome != IniNewFile::Outcome::other)
            return outcome == IniNewFile::Outcome::placed;
        if (!beginAgain(end))
            return false;
    }
}

// Another file was put in the target's place meanwhile. If it holds the text that was read, the change is still right.
bool IniChange::beginAgain(std::int64_t end) {
    lock_.discard();
    holdsLock_ = false;
    if (files().waitingClockInMilliseconds() >= end)
        return fail(JxIniStepRename, place_.path(), ESTALE);
    if (!lock_.take(place_))
        return false;
    std::string now;
    const Whole outcome = readWhole(place_, now, old_);
    if (outcome == Whole::failed) {
        lock_.discard();
        return false;
    }
    holdsLock_ = true;
    if (now != before_)
        return fail(JxIniStepRename, place_.path(), ESTALE);
    present_ = outcome == Whole::read;
    return true;
}

IniNewFile::Outcome IniChange::replace() {
    using Outcome = IniNewFile::Outcome;
    const Descriptor directory(uninterrupted(
        [this] { return files().openFile(place_.directory(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0); }));
    if (!directory && isShortage(errno)) {
        fail(JxIniStepOpen, place_.directoryPath(), errno);
        return Outcome::failed;
    }
    const struct stat* old = present_ ? &old_ : nullptr;
    Outcome outcome = Outcome::failed;
    {
        IniNewFile file(place_, lock_.nameOfNewFile());
        if (file.make() && file.fill(text_.bytes(), old, present_ ? 0 : modeOfNewFile(shared_)))
            outcome = file.replace(old);
        if (outcome == Outcome::placed && !file.removeOld())
            lock_.leave();
    }
    if (outcome == Outcome::other)
        return outcome;
    holdsLock_ = false;
    lock_.letGo();
    if (outcome == Outcome::placed && !flushDirectory(directory)) {
        noteFailure(JxIniStepFlushDirectory, place_.directoryPath(), errno, /*afterRename=*/true);
        return Outcome::failed;
    }
    return outcome;
}

}  // namespace jx::ini
