// A buffer for a call under test, with guard bytes on both sides.
#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace jx::test {

// GuardedBuffer: sizeInBytes bytes that begin as '?'; what is written around them shows in isGuarded.
class GuardedBuffer {
public:
    explicit GuardedBuffer(std::size_t sizeInBytes) : size_(sizeInBytes), bytes_(sizeInBytes + 2 * kGuard, kGuardByte) {
        std::fill_n(bytes_.begin() + kGuard, size_, '?');
    }

    char* data() { return bytes_.data() + kGuard; }
    unsigned char* bytes() { return reinterpret_cast<unsigned char*>(data()); }

    // Everything in the buffer, NULs too.
    std::string all() const { return {bytes_.data() + kGuard, size_}; }

    // The text up to the first NUL.
    std::string text() const { return all().substr(0, all().find('\0')); }

    // The bytes behind the first count.
    std::string behind(std::size_t count) const { return all().substr(count); }

    bool isUntouched() const { return isGuarded() && all() == std::string(size_, '?'); }

    bool isGuarded() const {
        const auto isGuard = [](char byte) { return byte == kGuardByte; };
        return std::all_of(bytes_.begin(), bytes_.begin() + kGuard, isGuard) &&
               std::all_of(bytes_.end() - kGuard, bytes_.end(), isGuard);
    }

private:
    static constexpr std::ptrdiff_t kGuard = 256;
    static constexpr char kGuardByte = '\xA5';

    std::size_t size_;
    std::vector<char> bytes_;
};

// A list of names as it lies in a buffer: each with its NUL, without the final one.
inline std::string listBytes(std::initializer_list<std::string_view> names) {
    std::string list;
    for (const std::string_view name : names)
        list.append(name).push_back('\0');
    return list;
}

}  // namespace jx::test
