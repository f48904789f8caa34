// What a file can store, and why not. The store refuses by these rules; programs may check them first.
//
//     if (const Refusal refused = refusalOf(section, key, value))
//         ... refused.what, refused.why ...    // Text::key, "it holds ="
#pragma once

#include <cstdint>
#include <string_view>

#include "rules/names.h"

namespace jx::rules {

// Why a text cannot be stored, as the end of a sentence ("it holds ="); null when it can.
using Why = const char*;

inline constexpr Why kHoldsLineBreak = "it holds a line break";
inline constexpr Why kIsEmpty = "it is empty";

constexpr bool holdsLineBreak(std::string_view text) {
    return text.find_first_of("\r\n") != std::string_view::npos;
}

// For a section's name. A blank and ; or # in it would be read back as the begin of a comment.
constexpr Why whyNoSection(std::string_view name) {
    if (name.empty())
        return kIsEmpty;
    if (holdsLineBreak(name))
        return kHoldsLineBreak;
    for (std::size_t at = 1; at < name.size(); ++at)
        if (beginsComment(name[at]) && isBlank(name[at - 1]))
            return name[at] == ';' ? "a blank and ; begin a comment in it" : "a blank and # begin a comment in it";
    return nullptr;
}

// For a key. Null for the empty one too: it is not stored, but storing it succeeds.
constexpr Why whyNoKey(std::string_view key) {
    if (holdsLineBreak(key))
        return kHoldsLineBreak;
    if (key.find('=') != std::string_view::npos)
        return "it holds =";
    switch (key.empty() ? '\0' : key.front()) {
        case '[':
            return "it begins with [";
        case ';':
            return "it begins with ;";
        case '#':
            return "it begins with #";
        default:
            return nullptr;
    }
}

constexpr Why whyNoValue(std::string_view value) {
    return holdsLineBreak(value) ? kHoldsLineBreak : nullptr;
}

// Why a read would not give a stored text back as it was: it drops blanks around the text and ends at a NUL. For
// programs that must store exactly what they were given.
constexpr Why whyNotGivenBack(std::string_view text) {
    if (text.find('\0') != std::string_view::npos)
        return "it holds a NUL";
    return trimmed(text).size() != text.size() ? "it begins or ends with a blank" : nullptr;
}

// Which of the texts of a write was refused.
enum class Text : std::uint8_t { section, key, value };

struct Refusal {
    Text what = Text::section;
    Why why = nullptr;

    constexpr explicit operator bool() const { return why != nullptr; }
};

// The first reason against a write of these texts, which must be trimmed; key or value are null for a deletion.
constexpr Refusal refusalOf(std::string_view section, std::string_view key, std::string_view value) {
    if (const Why why = whyNoSection(section))
        return {Text::section, why};
    if (const Why why = whyNoKey(key))
        return {Text::key, why};
    return {Text::value, whyNoValue(value)};
}

// The same for texts that must come back as they are: an empty key and blanks around a text are refused too.
constexpr Refusal exactRefusalOf(std::string_view section, std::string_view key, std::string_view value) {
    if (const Refusal refused = refusalOf(section, key, value))
        return refused;
    if (key.empty())
        return {Text::key, kIsEmpty};
    if (const Why why = whyNotGivenBack(section))
        return {Text::section, why};
    if (const Why why = whyNotGivenBack(key))
        return {Text::key, why};
    return {Text::value, whyNotGivenBack(value)};
}

}  // namespace jx::rules
