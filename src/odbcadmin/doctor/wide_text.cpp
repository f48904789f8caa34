// Converting between UTF-8 and UTF-16.
#include "odbcadmin/doctor/wide_text.h"

#include <cstddef>
#include <cstdint>

namespace jx::doctor {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kFirstBeyond = 0x10000;

struct Decoded {
    char32_t code = kReplacement;
    std::size_t length = 1;
};

// How many bytes a character has whose first byte this is; 0 for none.
std::size_t lengthFrom(unsigned char first) {
    if (first < 0x80)
        return 1;
    if (first >= 0xC2 && first < 0xE0)
        return 2;
    if (first >= 0xE0 && first < 0xF0)
        return 3;
    return first >= 0xF0 && first < 0xF5 ? 4 : 0;
}

Decoded decode(std::string_view text) {
    const std::size_t length = lengthFrom(static_cast<unsigned char>(text[0]));
    if (length == 1)
        return {static_cast<char32_t>(text[0]), 1};
    if (length == 0 || text.size() < length)
        return {};
    char32_t code = static_cast<unsigned char>(text[0]) & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xC0U) != 0x80)
            return {};
        code = (code << 6U) | (byte & 0x3FU);
    }
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, kFirstBeyond};
    const bool isSurrogate = code >= 0xD800 && code < 0xE000;
    return code < kSmallest[length] || isSurrogate || code > 0x10FFFF ? Decoded{} : Decoded{code, length};
}

Decoded decode(std::u16string_view text) {
    const char32_t first = text[0];
    if (first < 0xD800 || first >= 0xE000)
        return {first, 1};
    if (first >= 0xDC00 || text.size() < 2 || text[1] < 0xDC00 || text[1] >= 0xE000)
        return {};
    return {kFirstBeyond + ((first - 0xD800) << 10U) + (text[1] - char32_t{0xDC00}), 2};
}

void append(std::string& text, char32_t code) {
    const auto tail = [&](unsigned shift) { text.push_back(static_cast<char>(0x80U | ((code >> shift) & 0x3FU))); };
    if (code < 0x80) {
        text.push_back(static_cast<char>(code));
    } else if (code < 0x800) {
        text.push_back(static_cast<char>(0xC0U | (code >> 6U)));
        tail(0);
    } else if (code < kFirstBeyond) {
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

}  // namespace

std::u16string wideText(std::string_view utf8) {
    std::u16string wide;
    while (!utf8.empty()) {
        const Decoded next = decode(utf8);
        if (next.code < kFirstBeyond) {
            wide.push_back(static_cast<char16_t>(next.code));
        } else {
            wide.push_back(static_cast<char16_t>(0xD800 + ((next.code - kFirstBeyond) >> 10U)));
            wide.push_back(static_cast<char16_t>(0xDC00 + ((next.code - kFirstBeyond) & 0x3FFU)));
        }
        utf8.remove_prefix(next.length);
    }
    return wide;
}

std::string narrowText(std::u16string_view utf16) {
    std::string narrow;
    while (!utf16.empty()) {
        const Decoded next = decode(utf16);
        append(narrow, next.code);
        utf16.remove_prefix(next.length);
    }
    return narrow;
}

}  // namespace jx::doctor
