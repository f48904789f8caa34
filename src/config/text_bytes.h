// Text as the two kinds of character that meet here: char at the exported edge, unsigned char in the utility library.
#pragma once

#include <cstddef>
#include <string_view>

namespace jx {

// The same text under the other type; null stays null.
inline const unsigned char* asBytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}
inline unsigned char* asBytes(char* text) {
    return reinterpret_cast<unsigned char*>(text);
}
inline const char* asChars(const unsigned char* text) {
    return reinterpret_cast<const char*>(text);
}

// A read-only text for the members that take a writable one and do not write.
inline unsigned char* asReadOnlyArgument(const char* text) {
    return asBytes(const_cast<char*>(text));
}

// The text without its NUL; null gives an empty view, whose data() is a text too.
inline std::string_view viewOf(const unsigned char* text) {
    return text == nullptr ? std::string_view("") : std::string_view(asChars(text));
}

// The text in a buffer of sizeInBytes bytes, ended by its first NUL or the buffer's end.
inline std::string_view textInside(const unsigned char* buffer, std::size_t sizeInBytes) {
    const std::string_view whole(asChars(buffer), sizeInBytes);
    return whole.substr(0, whole.find('\0'));
}

}  // namespace jx
