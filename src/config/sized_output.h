// Copying results into a caller's buffer of a given size, and the length into its variable.
#pragma once

#include <jxtext.h>

#include <cstddef>
#include <cstring>

namespace jx {

// Stores a length; place may be null.
inline void storeLength(unsigned short* place, std::size_t length) {
    if (place != nullptr)
        *place = static_cast<unsigned short>(length);
}

// Copies a list of total bytes (its final NUL not counted) into a buffer of size bytes, not 0, and zeroes the rest. If
// the final NUL does not fit, the list is cut at size - 1 bytes, perhaps inside a name.
inline void handOutList(const unsigned char* list, std::size_t total, unsigned char* buffer, unsigned short size,
                        unsigned short* lengthOut) {
    std::memset(buffer, 0, size);
    const std::size_t copied = total < size ? total : std::size_t{size} - 1;
    std::memcpy(buffer, list, copied);
    storeLength(lengthOut, copied);
}

// Copies text into a buffer, cut at size - 1 bytes, and stores the length copied. With a null buffer or a size of 0
// nothing is copied, and the length is 0.
inline void handOutText(const unsigned char* text, unsigned char* buffer, unsigned short size,
                        unsigned short* lengthOut) {
    storeLength(lengthOut, buffer == nullptr ? 0 : strCopy(buffer, text, size));
}

}  // namespace jx
