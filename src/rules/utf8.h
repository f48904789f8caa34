// Characters of texts in UTF-8.
//
//     for (std::size_t at = 0; at < text.size(); at += rules::characterAt(text, at).length) ...
//
// Any bytes can be walked: a byte that does not begin a character counts as one. Nothing is read beyond the end.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace jx::rules {

// Character: a code point and its number of bytes; kNoCharacter is one byte that does not begin a character.
inline constexpr char32_t kNoCharacter = 0xFFFFFFFF;

struct Character {
    char32_t code = kNoCharacter;
    std::size_t length = 1;
};

constexpr bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// How many bytes a character has that begins with this one; 1 also for a byte that does not begin one.
constexpr std::size_t lengthFrom(unsigned char first) {
    if (first < 0xC2 || first > 0xF4)
        return 1;
    return first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

// The character that begins at a place inside the text. Overlong forms, surrogates and code points above 0x10FFFF are
// refused: a careless terminal could read an overlong form as a control character.
constexpr Character characterAt(std::string_view text, std::size_t at) {
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const auto first = static_cast<unsigned char>(text[at]);
    const std::size_t length = lengthFrom(first);
    if (length == 1)
        return first < 0x80 ? Character{first, 1} : Character{};
    if (text.size() - at < length)
        return {};
    char32_t code = first & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if (!isContinuation(text[at + i]))
            return {};
        code = code << 6U | (static_cast<unsigned char>(text[at + i]) & 0x3FU);
    }
    const bool isSurrogate = code >= 0xD800 && code < 0xE000;
    return code < kSmallest[length] || isSurrogate || code > 0x10FFFF ? Character{} : Character{code, length};
}

constexpr bool isUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const Character next = characterAt(text, at);
        if (next.code == kNoCharacter)
            return false;
        at += next.length;
    }
    return true;
}

// The number of characters in a text.
constexpr std::size_t characterCount(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size(); at += characterAt(text, at).length)
        ++count;
    return count;
}

// The beginning of a text in at most so many bytes that ends inside no character.
constexpr std::string_view cutAtCharacter(std::string_view text, std::size_t longest) {
    if (text.size() <= longest)
        return text;
    for (std::size_t back = 1; back <= 3 && back <= longest; ++back)
        if (characterAt(text, longest - back).length > back)
            return text.substr(0, longest - back);
    return text.substr(0, longest);
}

// Whether it is a control character: below 32 or from 127 to 159, as a single byte or in UTF-8.
constexpr bool isControl(Character character, char byte) {
    const char32_t code = character.code == kNoCharacter ? static_cast<unsigned char>(byte) : character.code;
    return code < 0x20 || (code >= 0x7F && code < 0xA0);
}

// Appends a code point; kNoCharacter as the replacement character.
inline void appendCharacter(std::string& text, char32_t code) {
    const auto tail = [&](unsigned shift) { text.push_back(static_cast<char>(0x80U | ((code >> shift) & 0x3FU))); };
    if (code == kNoCharacter)
        code = 0xFFFD;
    if (code < 0x80) {
        text.push_back(static_cast<char>(code));
    } else if (code < 0x800) {
        text.push_back(static_cast<char>(0xC0U | (code >> 6U)));
        tail(0);
    } else if (code < 0x10000) {
        text.push_back(static_cast<char>(0xE0U | (code >> 12U)));
        tail(6);
        tail(0);
    } else {
        text.push_back(static_cast<char>(0xF0U | (code >> 18U)));
        tail(12);
        tail(6);
        tail(0);
    }
}

}  // namespace jx::rules
