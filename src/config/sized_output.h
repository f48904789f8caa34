// Handing results to callers who gave a buffer, its size and a place for the length.
#pragma once

#include <jxtext.h>

#include <cstddef>
#include <cstring>

namespace jx {

// Stores length where the caller asked for it; null asks for nothing.
inline void storeLength(unsigned short* place, std::size_t length) {
    if (place != nullptr)
        *place = static_cast<unsigned short>(length);
}

// Copies a list of total bytes (without its final NUL) into a buffer of size bytes, which must not be 0; the rest of
// the buffer is zeroed. A list that leaves no room for that final NUL is cut at size - 1 bytes, perhaps inside a name.
inline void handOutList(const unsigned char* list, std::size_t total, unsigned char* buffer, unsigned short size,
                        unsigned short* lengthOut) {
    std::memset(buffer, 0, size);
    const std::size_t copied = total < size ? total : std::size_t{size} - 1;
    std::memcpy(buffer, list, copied);
    storeLength(lengthOut, copied);
}

// Copies text into a buffer of size bytes, cut at size - 1, and stores how much was copied. A null buffer or one of
// size 0 receives nothing: the length is 0.
inline void handOutText(const unsigned char* text, unsigned char* buffer, unsigned short size,
                        unsigned short* lengthOut) {
    storeLength(lengthOut, buffer == nullptr ? 0 : strCopy(buffer, text, size));
}

}  // namespace jx
