// Converts texts character by character.
#include "api3/text_conversion.h"

namespace jx::api3 {

namespace {

// The character that begins at a place inside the units; kNoCharacter for half of a pair.
rules::Character characterAt(std::span<const SQLWCHAR> units, std::size_t at) {
    const SQLWCHAR first = units[at];
    if (isSecondOfPair(first))
        return {};
    if (!isFirstOfPair(first))
        return {first, 1};
    if (at + 1 == units.size() || !isSecondOfPair(units[at + 1]))
        return {};
    return {0x10000 + ((first & 0x3FFU) << 10U | (units[at + 1] & 0x3FFU)), 2};
}

// Appends the text, with a mark for half of a pair; false when there was one.
bool appendUtf8(std::string& text, std::span<const SQLWCHAR> units) {
    bool isWhole = true;
    text.reserve(units.size());
    for (std::size_t at = 0; at < units.size();) {
        const rules::Character next = characterAt(units, at);
        isWhole = isWhole && next.code != rules::kNoCharacter;
        rules::appendCharacter(text, next.code);
        at += next.length;
    }
    return isWhole;
}

template <typename Unit>
std::size_t lengthOf(const Unit* text) {
    std::size_t length = 0;
    while (text[length] != 0)
        ++length;
    return length;
}

template <typename Unit>
std::size_t lengthOfList(const Unit* list) {
    std::size_t length = 0;
    while (list[length] != 0)
        length += lengthOf(list + length) + 1;
    return length;
}

}  // namespace

std::span<const SQLWCHAR> unitsOf(const SQLWCHAR* text) {
    if (text == nullptr)
        return {};
    return {text, lengthOf(text)};
}

std::span<const SQLWCHAR> listUnitsOf(const SQLWCHAR* list) {
    if (list == nullptr)
        return {};
    return {list, lengthOfList(list)};
}

std::string_view listOf(const char* list) {
    if (list == nullptr)
        return {};
    return {list, lengthOfList(list)};
}

std::optional<std::string> toUtf8(std::span<const SQLWCHAR> units) {
    std::string text;
    if (!appendUtf8(text, units))
        return std::nullopt;
    return text;
}

std::string toUtf8WithMarks(std::span<const SQLWCHAR> units) {
    std::string text;
    appendUtf8(text, units);
    return text;
}

std::vector<SQLWCHAR> toUtf16(std::string_view text) {
    std::vector<SQLWCHAR> units;
    units.reserve(text.size() + 1);
    for (std::size_t at = 0; at < text.size();) {
        const rules::Character next = rules::characterAt(text, at);
        const UnitPair pair = unitPairOf(next.code);
        units.push_back(pair.first);
        if (pair.count == 2)
            units.push_back(pair.second);
        at += next.length;
    }
    units.push_back(0);
    return units;
}

std::size_t unitCount(std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < text.size();) {
        const rules::Character next = rules::characterAt(text, at);
        count += unitPairOf(next.code).count;
        at += next.length;
    }
    return count;
}

}  // namespace jx::api3
