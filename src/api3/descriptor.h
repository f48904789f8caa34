// An open file that is closed when its scope is left.
//
//     const Descriptor file(open(path, O_RDONLY | O_CLOEXEC));
//     if (file.get() < 0) ...
#pragma once

#include <unistd.h>

namespace jx::api3 {

// Descriptor: owns a descriptor; a negative one is none.
class Descriptor {
public:
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor() {
        if (fd_ >= 0)
            close(fd_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int get() const { return fd_; }

private:
    int fd_;
};

}  // namespace jx::api3
