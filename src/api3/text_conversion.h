// Texts between UTF-8, which is used inside, and UTF-16, which the W functions take and give.
//
//     const std::optional<std::string> name = toUtf8(unitsOf(lpszDSN));
//     if (!name) ...   // half of a pair stands alone
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <jxodbc3/odbcinst.h>
#include "rules/utf8.h"

namespace jx::api3 {

// UnitPair: the one or two units of UTF-16 that a character takes.
struct UnitPair {
    SQLWCHAR first = 0;
    SQLWCHAR second = 0;
    std::size_t count = 1;
};

// The units of a code point; U+FFFD for rules::kNoCharacter.
constexpr UnitPair unitPairOf(char32_t code) {
    if (code == rules::kNoCharacter)
        return {0xFFFD};
    if (code < 0x10000)
        return {static_cast<SQLWCHAR>(code)};
    const char32_t above = code - 0x10000;
    return {static_cast<SQLWCHAR>(0xD800 + (above >> 10U)), static_cast<SQLWCHAR>(0xDC00 + (above & 0x3FFU)), 2};
}

constexpr bool isFirstOfPair(SQLWCHAR unit) {
    return (unit & 0xFC00U) == 0xD800U;
}

constexpr bool isSecondOfPair(SQLWCHAR unit) {
    return (unit & 0xFC00U) == 0xDC00U;
}

// The units before the NUL; empty for null.
std::span<const SQLWCHAR> unitsOf(const SQLWCHAR* text);

// A list: each text with its NUL, without the empty text that ends it. An empty view for null.
std::span<const SQLWCHAR> listUnitsOf(const SQLWCHAR* list);
std::string_view listOf(const char* list);

// The same text in UTF-8, NULs too; nothing when a half of a pair stands alone. std::bad_alloc may be thrown.
std::optional<std::string> toUtf8(std::span<const SQLWCHAR> units);

// The same with U+FFFD for each half that stands alone.
std::string toUtf8WithMarks(std::span<const SQLWCHAR> units);

// The same text in UTF-16 with a NUL at its end; bytes that are not UTF-8 become U+FFFD each. std::bad_alloc may be
// thrown.
std::vector<SQLWCHAR> toUtf16(std::string_view text);

// How many units the text takes.
std::size_t unitCount(std::string_view text);

}  // namespace jx::api3
