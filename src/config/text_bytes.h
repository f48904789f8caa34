// Conversions between the two character types of texts: char in exported functions, unsigned char in the utility
// library.
#pragma once

#include <cstddef>
#include <string_view>

namespace jx {

// The same text as the other type; null stays null.
inline const unsigned char* asBytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}
inline unsigned char* asBytes(char* text) {
    return reinterpret_cast<unsigned char*>(text);
}
inline const char* asChars(const unsigned char* text) {
    return reinterpret_cast<const char*>(text);
}

// For members that take a writable text and do not write to it.
inline unsigned char* asReadOnlyArgument(const char* text) {
    return asBytes(const_cast<char*>(text));
}

// A text as a view. Null gives an empty one, whose data() is not null.
inline std::string_view viewOf(const unsigned char* text) {
    return text == nullptr ? std::string_view("") : std::string_view(asChars(text));
}

// The text in a buffer: up to its first NUL, or all of it.
inline std::string_view textInside(const unsigned char* buffer, std::size_t sizeInBytes) {
    const std::string_view whole(asChars(buffer), sizeInBytes);
    return whole.substr(0, whole.find('\0'));
}

}  // namespace jx
