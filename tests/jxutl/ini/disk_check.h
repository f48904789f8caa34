// Checks of a directory and of this process: stray files, open descriptors, modes, identity.
#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace jx::ini::test {

// How many files this process has open, each time with the one opened for counting.
inline std::size_t openDescriptors() {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd"))
        ++count;
    return count;
}

inline struct stat stateOf(const std::string& path) {
    struct stat state = {};
    if (::lstat(path.c_str(), &state) != 0)
        state = {};
    return state;
}

inline mode_t modeOf(const std::string& path) {
    return stateOf(path).st_mode & 07777;
}

inline std::string textOf(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return "(absent)";
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

inline void putText(const std::string& path, const std::string& text, mode_t mode = 0600) {
    std::ofstream(path, std::ios::binary | std::ios::trunc)
        .write(text.data(), static_cast<std::streamsize>(text.size()));
    ::chmod(path.c_str(), mode);
}

// Identity: what must stay when a file is not touched.
struct Identity {
    explicit Identity(const std::string& path) : state(stateOf(path)) {}
    bool operator==(const Identity& other) const {
        const auto same = [](const timespec& left, const timespec& right) {
            return left.tv_sec == right.tv_sec && left.tv_nsec == right.tv_nsec;
        };
        return state.st_dev == other.state.st_dev && state.st_ino == other.state.st_ino &&
               state.st_size == other.state.st_size && state.st_mode == other.state.st_mode &&
               same(state.st_mtim, other.state.st_mtim) && same(state.st_ctim, other.state.st_ctim);
    }
    struct stat state;
};

// Umask: sets the process's umask while it exists.
class Umask {
public:
    explicit Umask(mode_t mask) : old_(::umask(mask)) {}
    Umask(const Umask&) = delete;
    Umask& operator=(const Umask&) = delete;
    ~Umask() { ::umask(old_); }

private:
    mode_t old_;
};

}  // namespace jx::ini::test
