// Draws the numbers of this process's hashes.
#include "jxutl/ini/name_hash.h"

#include <sys/auxv.h>

#include <cstring>
#include <ctime>

namespace jx::ini {

namespace {

// The kernel's sixteen random bytes for this program; asking for more could fail.
std::array<std::uint64_t, 2> seed() {
    std::array<std::uint64_t, 2> drawn{};
    const auto address = getauxval(AT_RANDOM);
    if (address != 0) {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): getauxval gives every value as a number
        std::memcpy(drawn.data(), reinterpret_cast<const void*>(address), sizeof drawn);
        return drawn;
    }
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return {static_cast<std::uint64_t>(now.tv_nsec), static_cast<std::uint64_t>(now.tv_sec)};
}

// Numbers in which each bit depends on all bits of the seed.
class Numbers {
public:
    std::uint64_t next() {
        state_[0] += 0x9E3779B97F4A7C15U;
        state_[1] += state_[0] ^ state_[0] >> 31U;
        std::uint64_t number = (state_[0] ^ state_[1] >> 30U) * 0xBF58476D1CE4E5B9U;
        number = (number ^ number >> 27U) * 0x94D049BB133111EBU + state_[1];
        return number ^ number >> 31U;
    }

private:
    std::array<std::uint64_t, 2> state_ = seed();
};

NameHashKeys draw() {
    Numbers numbers;
    NameHashKeys keys{};
    keys.start = numbers.next();
    keys.size = numbers.next();
    keys.before[0] = numbers.next();
    keys.before[1] = numbers.next();
    for (std::uint64_t& key : keys.words)
        key = numbers.next();
    return keys;
}

}  // namespace

const NameHashKeys nameHashKeys = draw();

}  // namespace jx::ini
