// The owner of one open file.
#pragma once

#include <cerrno>
#include <utility>

#include "jxutl/ini/file_ops.h"

namespace jx::ini {

// Descriptor: closes its file when it is destroyed; below 0 it has none. Closing keeps errno. Its errors are ignored:
// nothing is read any more, and what was written was flushed or is thrown away.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int fd) : fd_(fd) {}
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        if (this != &other) {
            close();
            fd_ = std::exchange(other.fd_, -1);
        }
        return *this;
    }
    ~Descriptor() { close(); }

    explicit operator bool() const { return fd_ >= 0; }
    int get() const { return fd_; }

    void close() noexcept {
        if (fd_ < 0)
            return;
        const int kept = errno;
        files().closeFile(std::exchange(fd_, -1));
        errno = kept;
    }

private:
    int fd_ = -1;
};

}  // namespace jx::ini
