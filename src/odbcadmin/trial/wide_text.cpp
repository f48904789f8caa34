// Converting between UTF-8 and UTF-16.
#include "odbcadmin/trial/wide_text.h"

#include <cstddef>

#include "rules/utf8.h"

namespace jx::trial {

namespace {

constexpr char32_t kFirstBeyond = 0x10000;

rules::Character characterAt(std::u16string_view text, std::size_t at) {
    const char32_t first = text[at];
    if (first < 0xD800 || first >= 0xE000)
        return {first, 1};
    if (first >= 0xDC00 || at + 1 == text.size() || text[at + 1] < 0xDC00 || text[at + 1] >= 0xE000)
        return {};
    return {kFirstBeyond + ((first - 0xD800) << 10U) + (text[at + 1] - char32_t{0xDC00}), 2};
}

void append(std::u16string& wide, char32_t code) {
    if (code == rules::kNoCharacter)
        code = 0xFFFD;
    if (code < kFirstBeyond) {
        wide.push_back(static_cast<char16_t>(code));
        return;
    }
    wide.push_back(static_cast<char16_t>(0xD800 + ((code - kFirstBeyond) >> 10U)));
    wide.push_back(static_cast<char16_t>(0xDC00 + ((code - kFirstBeyond) & 0x3FFU)));
}

}  // namespace

std::u16string wideText(std::string_view utf8) {
    std::u16string wide;
    for (std::size_t at = 0; at < utf8.size();) {
        const rules::Character next = rules::characterAt(utf8, at);
        append(wide, next.code);
        at += next.length;
    }
    return wide;
}

std::string narrowText(std::u16string_view utf16) {
    std::string narrow;
    for (std::size_t at = 0; at < utf16.size();) {
        const rules::Character next = characterAt(utf16, at);
        rules::appendCharacter(narrow, next.code);
        at += next.length;
    }
    return narrow;
}

}  // namespace jx::trial
