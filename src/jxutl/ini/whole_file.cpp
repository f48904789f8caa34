// Reads and writes whole files.
#include "jxutl/ini/whole_file.h"

#include <cerrno>
#include <csignal>
#include <span>

#include "jxutl/ini/descriptor.h"
#include "jxutl/ini/file_ops.h"
#include "jxutl/thread/failure.h"
#include "jxutl/thread/held_signal.h"

namespace jx::ini {

namespace {

Whole fail(JxIniStep step, const std::string& path, int error) {
    noteFailure(step, path, error);
    return Whole::failed;
}

// Room for a few more lines, so that an edit does not move a long text.
constexpr std::size_t kRoomForEdits = 4096;

// Reads to the end, which may have moved: a program may be editing the file in place.
Whole readAll(int fd, const std::string& path, std::size_t expected, std::string& bytes) {
    bytes.reserve(expected + kRoomForEdits);
    bytes.resize(expected + 1);
    std::size_t filled = 0;
    for (;;) {
        const std::span<char> room(bytes.data() + filled, bytes.size() - filled);
        const ssize_t count = uninterrupted([&] { return files().readSome(fd, room); });
        if (count < 0)
            return fail(JxIniStepRead, path, errno);
        if (count == 0)
            break;
        filled += static_cast<std::size_t>(count);
        if (filled >= kTooManyBytes)
            return fail(JxIniStepRead, path, EFBIG);
        if (filled == bytes.size())
            bytes.resize(filled * 2);
    }
    bytes.resize(filled);
    return Whole::read;
}

}  // namespace

Whole readWhole(const IniPlace& place, std::string& bytes, struct stat& state) {
    if (place.missing() != 0)
        return Whole::absent;
    const std::string path = place.path();
    const Descriptor file(uninterrupted(
        [&] { return files().openFile(place.directory(), place.name().c_str(), O_RDONLY | kOpenFlags, 0); }));
    if (!file && isAbsence(errno))
        return place.admits(nullptr) ? Whole::absent : Whole::failed;
    if (!file)
        return fail(JxIniStepOpen, path, errno);
    if (uninterrupted([&] { return files().lookAtOpen(file.get(), &state); }) != 0)
        return fail(JxIniStepLook, path, errno);
    if (!S_ISREG(state.st_mode))
        return fail(JxIniStepOpen, path, S_ISDIR(state.st_mode) ? EISDIR : ENOTSUP);
    if (!place.admits(&state))
        return Whole::failed;
    if (state.st_size >= static_cast<off_t>(kTooManyBytes))
        return fail(JxIniStepRead, path, EFBIG);
    return readAll(file.get(), path, static_cast<std::size_t>(state.st_size), bytes);
}

bool writeAll(int fd, std::span<const char> bytes) {
    const HeldSignal held(SIGXFSZ);
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

}  // namespace jx::ini
