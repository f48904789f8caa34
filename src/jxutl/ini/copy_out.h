// Texts that are handed to a caller's buffer.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

namespace jx::ini {

// Copies text into a buffer of size bytes, cut where it must be and ended with NUL; returns the text's full length. A
// null buffer or a size of 0 takes nothing.
inline std::size_t copyOut(std::string_view text, char* buffer, std::size_t size) noexcept {
    if (buffer != nullptr && size > 0) {
        const std::size_t count = text.size() < size ? text.size() : size - 1;
        if (count > 0)
            std::memcpy(buffer, text.data(), count);
        buffer[count] = '\0';
    }
    return text.size();
}

}  // namespace jx::ini
