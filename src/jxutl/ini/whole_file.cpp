// Reads a whole file.
#include "jxutl/ini/whole_file.h"

#include <fcntl.h>

#include <cerrno>
#include <span>

#include "jxutl/ini/descriptor.h"
#include "jxutl/ini/file_ops.h"
#include "jxutl/thread/failure.h"

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

Whole readWhole(const std::string& path, std::string& bytes, struct stat& state) {
    constexpr int kFlags = O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    const Descriptor file(uninterrupted([&] { return files().openFile(path.c_str(), kFlags, 0); }));
    if (!file)
        return isAbsence(errno) ? Whole::absent : fail(JxIniStepOpen, path, errno);
    if (files().lookAtOpen(file.get(), &state) != 0)
        return fail(JxIniStepLook, path, errno);
    if (!S_ISREG(state.st_mode))
        return fail(JxIniStepOpen, path, S_ISDIR(state.st_mode) ? EISDIR : ENOTSUP);
    if (state.st_size >= static_cast<off_t>(kTooManyBytes))
        return fail(JxIniStepRead, path, EFBIG);
    return readAll(file.get(), path, static_cast<std::size_t>(state.st_size), bytes);
}

}  // namespace jx::ini
