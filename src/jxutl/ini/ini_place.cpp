// Walks a path, directory by directory, judging each symbolic link.
#include "jxutl/ini/ini_place.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <string_view>
#include <utility>
#include <vector>

#include "jxutl/ini/file_ops.h"
#include "jxutl/thread/failure.h"

namespace jx::ini {

namespace {

// As many links as the kernel follows in one path.
constexpr int kMostLinks = 40;

constexpr int kPathOnly = O_PATH | O_CLOEXEC;

bool fail(JxIniStep step, const std::string& path, int error) {
    noteFailure(step, path, error);
    return false;
}

// Whether openat2 said that it cannot tell: there is a link, or an old kernel or a filter of calls refuses it.
bool needsWalk(int error) {
    return error == ELOOP || error == ENOSYS || error == EPERM || error == EINVAL || error == E2BIG;
}

bool isThisUserOrRoot(uid_t owner) {
    return owner == ::geteuid() || owner == 0;
}

bool look(int fd, struct stat& state) {
    return uninterrupted([&] { return files().lookAtOpen(fd, &state); }) == 0;
}

Descriptor openPath(int directory, const char* name) {
    return Descriptor(uninterrupted([=] { return files().openFile(directory, name, kPathOnly | O_NOFOLLOW, 0); }));
}

// What a link in a directory may lead to.
enum class Trust { anything, ownersFiles, nothing };

// The rule for links of a sticky directory is the kernel's, which it applies only where fs.protected_symlinks is set.
// It alone would let the owner of such a directory lead root anywhere, so the general rule holds as well.
Trust judge(const struct stat& directory, const struct stat& link) {
    constexpr mode_t kWritableByOthers = S_IWGRP | S_IWOTH;
    constexpr mode_t kShared = S_ISVTX | S_IWOTH;
    if (isThisUserOrRoot(directory.st_uid) && (directory.st_mode & kWritableByOthers) == 0)
        return Trust::anything;
    if ((directory.st_mode & kShared) == kShared && link.st_uid != ::geteuid() && link.st_uid != directory.st_uid)
        return Trust::nothing;
    return isThisUserOrRoot(link.st_uid) ? Trust::anything : Trust::ownersFiles;
}

}  // namespace

// PlaceWalk: one walk along a path. A link is opened before it is looked at and read: all three concern the same link.
class PlaceWalk {
public:
    PlaceWalk(IniPlace& place, const std::string& path) : place_(place), whole_(path), rest_(path) {}

    bool go();

private:
    enum class Step { goOn, arrived, failed };

    bool start();
    Step step();
    Step arrive(const struct stat* state);
    Step enter(Descriptor next);
    Step follow(const Descriptor& link, const struct stat& state);
    Step stopAbsent(int error);
    bool takeTarget(const Descriptor& link);
    bool endLinks();
    Step stop(JxIniStep step, const std::string& path, int error);
    std::string takeName();

    // A link whose target is being walked; that ends when no more than so many bytes are left of the path.
    struct Open {
        std::size_t restAfter;
        uid_t owner;
        std::string path;
    };

    IniPlace& place_;
    const std::string whole_;
    std::string rest_;
    int links_ = 0;
    std::vector<Open> open_;
};

bool PlaceWalk::go() {
    if (!start())
        return false;
    Step outcome = Step::goOn;
    while (outcome == Step::goOn)
        outcome = endLinks() ? step() : Step::failed;
    return outcome == Step::arrived;
}

PlaceWalk::Step PlaceWalk::stop(JxIniStep step, const std::string& path, int error) {
    fail(step, path, error);
    return Step::failed;
}

bool PlaceWalk::start() {
    const bool fromRoot = rest_.starts_with('/');
    const char* origin = fromRoot ? "/" : ".";
    place_.prefix_.assign(fromRoot ? 1 : 0, '/');
    place_.directory_ =
        Descriptor(uninterrupted([=] { return files().openFile(AT_FDCWD, origin, kPathOnly | O_DIRECTORY, 0); }));
    return place_.directory_ || fail(JxIniStepLook, whole_, errno);
}

// The next name of the path, without the slashes before it.
std::string PlaceWalk::takeName() {
    const std::size_t length = std::min(rest_.find('/'), rest_.size());
    std::string name = rest_.substr(0, length);
    rest_.erase(0, length);
    return name;
}

// Skips slashes. Links whose targets end here have led to the directory in which the walk stands.
bool PlaceWalk::endLinks() {
    rest_.erase(0, std::min(rest_.find_first_not_of('/'), rest_.size()));
    struct stat directory;
    bool looked = false;
    while (!open_.empty() && !rest_.empty() && open_.back().restAfter >= rest_.size()) {
        if (!looked && !look(place_.directory(), directory))
            return fail(JxIniStepLook, place_.prefix_, errno);
        looked = true;
        if (directory.st_uid != open_.back().owner)
            return fail(JxIniStepLocate, open_.back().path, EACCES);
        open_.pop_back();
    }
    return true;
}

PlaceWalk::Step PlaceWalk::step() {
    if (rest_.empty()) {  // a slash ended the path
        place_.name_.clear();
        return stop(JxIniStepOpen, place_.spelled(), EISDIR);
    }
    place_.name_ = takeName();
    Descriptor next = openPath(place_.directory(), place_.name_.c_str());
    struct stat state;
    if (!next && isAbsence(errno))
        return stopAbsent(errno);
    if (!next || !look(next.get(), state))
        return stop(JxIniStepLook, place_.spelled(), errno);
    if (S_ISLNK(state.st_mode))
        return follow(next, state);
    if (rest_.empty())
        return arrive(&state);
    return S_ISDIR(state.st_mode) ? enter(std::move(next)) : stopAbsent(ENOTDIR);
}

// The links that are left lead to the file itself, which is absent for null.
PlaceWalk::Step PlaceWalk::arrive(const struct stat* state) {
    for (const Open& link : open_) {
        if (place_.owner_ && *place_.owner_ != link.owner)
            return stop(JxIniStepLocate, link.path, EACCES);
        place_.owner_ = link.owner;
        place_.link_ = link.path;
    }
    const bool accepted = place_.admits(state) && (state == nullptr || place_.accept(*state));
    return accepted ? Step::arrived : Step::failed;
}

PlaceWalk::Step PlaceWalk::enter(Descriptor next) {
    place_.directory_ = std::move(next);
    place_.prefix_ += place_.name_ + '/';
    return Step::goOn;
}

// Without a file this is where one can be made; without a directory nothing can be made here.
PlaceWalk::Step PlaceWalk::stopAbsent(int error) {
    if (rest_.empty())
        return arrive(nullptr);
    place_.split(place_.spelled() + rest_);
    place_.missing_ = error;
    return Step::arrived;
}

PlaceWalk::Step PlaceWalk::follow(const Descriptor& link, const struct stat& state) {
    if (++links_ > kMostLinks)
        return stop(JxIniStepLocate, whole_, ELOOP);
    struct stat directory;
    if (!look(place_.directory(), directory))
        return stop(JxIniStepLook, place_.spelled(), errno);
    const Trust trust = judge(directory, state);
    if (trust == Trust::nothing)
        return stop(JxIniStepLocate, place_.spelled(), EACCES);
    if (trust == Trust::ownersFiles) {
        const std::size_t slashes = std::min(rest_.find_first_not_of('/'), rest_.size());
        open_.push_back({rest_.size() - slashes, state.st_uid, place_.spelled()});
    }
    return takeTarget(link) ? Step::goOn : Step::failed;
}

// Puts what the link holds before the rest of the path.
bool PlaceWalk::takeTarget(const Descriptor& link) {
    std::array<char, PATH_MAX> room;
    const ssize_t length = uninterrupted([&] { return files().readLink(link.get(), room); });
    if (length < 0)
        return fail(JxIniStepLocate, place_.spelled(), errno);
    if (length == 0 || static_cast<std::size_t>(length) == room.size())
        return fail(JxIniStepLocate, place_.spelled(), ENAMETOOLONG);
    rest_.insert(0, room.data(), static_cast<std::size_t>(length));
    return room[0] != '/' || start();
}

// ---- the place ----

bool IniPlace::find(const std::string& path) {
    const Direct outcome = findDirectly(path);
    if (outcome == Direct::hasLinks)
        *this = IniPlace();
    const bool found = outcome == Direct::hasLinks ? PlaceWalk(*this, path).go() : outcome == Direct::found;
    path_ = spelled();
    directoryPath_ = prefix_.size() > 1 ? prefix_.substr(0, prefix_.size() - 1) : prefix_;
    if (prefix_.empty())
        directoryPath_.assign(1, '.');
    return found;
}

IniPlace::Direct IniPlace::stop(JxIniStep step, const std::string& path, int error) {
    noteFailure(step, path, error);
    return Direct::failed;
}

// The usual path has no links: two calls instead of some for each of its names.
IniPlace::Direct IniPlace::findDirectly(const std::string& path) {
    *this = IniPlace();
    split(path);
    const std::string parent = prefix_.empty() ? "." : prefix_;
    directory_ =
        Descriptor(uninterrupted([&] { return files().openWithoutLinks(parent.c_str(), kPathOnly | O_DIRECTORY); }));
    if (!directory_ && needsWalk(errno))
        return Direct::hasLinks;
    if (!directory_ && isAbsence(errno)) {
        missing_ = errno;
        return Direct::found;
    }
    if (!directory_)
        return stop(JxIniStepLook, path, errno);
    if (name_.empty())
        return stop(JxIniStepOpen, path, EISDIR);
    struct stat state;
    if (uninterrupted([&] { return files().lookAtName(directory(), name_.c_str(), &state); }) != 0)
        return errno == ENOENT ? Direct::found : stop(JxIniStepLook, path, errno);
    if (S_ISLNK(state.st_mode))
        return Direct::hasLinks;
    return accept(state) ? Direct::found : Direct::failed;
}

bool IniPlace::accept(const struct stat& state) const {
    return S_ISREG(state.st_mode) || fail(JxIniStepOpen, spelled(), S_ISDIR(state.st_mode) ? EISDIR : ENOTSUP);
}

void IniPlace::split(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    const std::size_t begin = slash == std::string::npos ? 0 : slash + 1;
    prefix_ = path.substr(0, begin);
    name_ = path.substr(begin);
}

bool IniPlace::admits(const struct stat* state) const {
    return !owner_ || (state != nullptr && state->st_uid == *owner_) || fail(JxIniStepLocate, link_, EACCES);
}

// ---- reading ----

namespace {

bool openInPlace(const std::string& path, int flags, Descriptor& file) {
    IniPlace place;
    if (!place.find(path))
        return false;
    if (place.missing() != 0)
        return true;
    file = Descriptor(uninterrupted(
        [&] { return files().openFile(place.directory(), place.name().c_str(), flags | O_NOFOLLOW, 0); }));
    if (!file)
        return isAbsence(errno) || fail(JxIniStepOpen, place.path(), errno);
    struct stat state;
    return look(file.get(), state) ? place.admits(&state) : fail(JxIniStepLook, place.path(), errno);
}

}  // namespace

bool openToRead(const std::string& path, bool& leavesAccessTime, Descriptor& file) {
    constexpr int kFlags = O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY;
    const auto openWith = [&path](int flags) {
        return Descriptor(uninterrupted([&] { return files().openWithoutLinks(path.c_str(), flags); }));
    };
    file = openWith(leavesAccessTime ? kFlags | O_NOATIME : kFlags);
    if (!file && errno == EPERM && leavesAccessTime) {
        leavesAccessTime = false;
        file = openWith(kFlags);
    }
    if (file || isAbsence(errno))
        return true;
    return needsWalk(errno) ? openInPlace(path, kFlags, file) : fail(JxIniStepOpen, path, errno);
}

}  // namespace jx::ini
