// A file descriptor that is closed when its scope is left.
#pragma once

#include <unistd.h>

#include <utility>

namespace jx::trial {

class OwnedDescriptor {
public:
    explicit OwnedDescriptor(int descriptor = -1) : descriptor_(descriptor) {}
    OwnedDescriptor(OwnedDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
    OwnedDescriptor& operator=(OwnedDescriptor&& other) noexcept {
        reset(std::exchange(other.descriptor_, -1));
        return *this;
    }
    OwnedDescriptor(const OwnedDescriptor&) = delete;
    OwnedDescriptor& operator=(const OwnedDescriptor&) = delete;
    ~OwnedDescriptor() { reset(); }

    int get() const { return descriptor_; }
    bool isOpen() const { return descriptor_ >= 0; }

    void reset(int descriptor = -1) {
        if (descriptor_ >= 0)
            ::close(descriptor_);
        descriptor_ = descriptor;
    }

private:
    int descriptor_;
};

}  // namespace jx::trial
