// Which names a data source, a driver or a translator may have.
//
//     if (const Why why = whyNoName("A(B)", kNewDataSource)) ...   // "it holds one of []{}(),;?*=!@\\"
#pragma once

#include <algorithm>
#include <string_view>

#include "rules/sections.h"
#include "rules/storable.h"
#include "rules/utf8.h"

namespace jx::rules {

// NameRules: limits of one kind of name, besides what a file can store.
struct NameRules {
    std::size_t longest;  // in bytes
    Why whyTooLong;
    std::string_view forbidden;  // characters that it may not hold
    Why whyForbidden;
    bool mayBeDefault;  // whether "Default" is allowed
    bool wantsParenthesesInPairs;
};

inline constexpr std::size_t kAnyLength = std::string_view::npos;
inline constexpr std::size_t kLongestDataSourceName = 32;  // the standard's SQL_MAX_DSN_LENGTH
inline constexpr std::size_t kLongestDialogName = 49;      // the limit of the dialogs and of SQLConfigDataSource

// A new data source, by the standard.
inline constexpr NameRules kNewDataSource{kLongestDataSourceName,
                                          "it has more than 32 bytes",
                                          "[]{}(),;?*=!@\\",
                                          "it holds one of []{}(),;?*=!@\\",
                                          /*mayBeDefault=*/true,
                                          /*wantsParenthesesInPairs=*/false};

// A new driver or translator. The standard has no rule; these names work in connection strings (DRIVER={NAME}), in
// scripts, where names are in quotes, and in the dialogs' rows "data source (driver)".
inline constexpr NameRules kNewDriver{kLongestDialogName,
                                      "it has more than 49 bytes",
                                      "[]{};=\"\\",
                                      "it holds one of []{};=\"\\",
                                      /*mayBeDefault=*/false,
                                      /*wantsParenthesesInPairs=*/true};

// A new data source for today's drivers and programs, which count characters. Use whyNoCharacterName.
inline constexpr NameRules kNewDataSourceInCharacters{kAnyLength,
                                                      nullptr,
                                                      kNewDataSource.forbidden,
                                                      kNewDataSource.whyForbidden,
                                                      /*mayBeDefault=*/true,
                                                      /*wantsParenthesesInPairs=*/false};

// An existing one can be changed and removed under any name that a file can hold.
inline constexpr NameRules kAnyDataSource{kAnyLength, nullptr, {}, nullptr, /*mayBeDefault=*/true, false};
inline constexpr NameRules kAnyDriver{kAnyLength, nullptr, {}, nullptr, /*mayBeDefault=*/false, false};

inline bool hasParenthesesInPairs(std::string_view name) {
    std::ptrdiff_t open = 0;
    for (const char each : name) {
        open += each == '(' ? 1 : each == ')' ? -1 : 0;
        if (open < 0)
            return false;
    }
    return open == 0;
}

// Why something of that kind may not have that name, as the end of a sentence; null when it may.
inline Why whyNoName(std::string_view name, const NameRules& rules) {
    if (const Refusal refused = exactRefusalOf(name, name, {}))
        return refused.why;
    if (isReservedSection(name) || (!rules.mayBeDefault && isDefaultName(name)))
        return "the section of that name has another use";
    if (name.size() > rules.longest)
        return rules.whyTooLong;
    if (name.find_first_of(rules.forbidden) != std::string_view::npos)
        return rules.whyForbidden;
    if (rules.wantsParenthesesInPairs && !hasParenthesesInPairs(name))
        return "its parentheses are not in pairs";
    return nullptr;
}

inline bool holdsControl(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const Character next = characterAt(text, at);
        if (isControl(next, text[at]))
            return true;
        at += next.length;
    }
    return false;
}

// Why no new data source may be called so where a name is a text in UTF-8 of at most 32 characters; null when it may.
inline Why whyNoCharacterName(std::string_view name) {
    if (const Why why = whyNoName(name, kNewDataSourceInCharacters))
        return why;
    if (!isUtf8(name))
        return "it is not UTF-8";
    if (holdsControl(name))
        return "it holds a control character";
    return characterCount(name) > kLongestDataSourceName ? "it has more than 32 characters" : nullptr;
}

}  // namespace jx::rules
