// Calls that a signal may cut short, made again.
#pragma once

#include <cerrno>

namespace jx::ini {

// Signals that arrive faster than a call can be made must not hold it for ever.
inline constexpr int kMostInterruptions = 1000;

// Makes call again while it fails with EINTR; its result is the last one's. Not for close, which must never be made
// twice, nor for rename and unlink, which signals do not cut short.
template <typename Call>
auto uninterrupted(Call call) {
    auto result = call();
    for (int count = 0; result == -1 && errno == EINTR && count < kMostInterruptions; ++count)
        result = call();
    return result;
}

}  // namespace jx::ini
