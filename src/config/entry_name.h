// Names of sections and keys, compared as the store compares them: blanks around them are not part of them.
#pragma once

#include <algorithm>
#include <string_view>

#include "config/text_bytes.h"

namespace jx {

inline std::string_view trimmedName(const unsigned char* name) {
    std::string_view text = asChars(name);
    constexpr std::string_view kBlanks = " \t";
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

// Without regard to ASCII case, whatever the locale.
inline bool isNameInAnyCase(const unsigned char* name, std::string_view expected) {
    constexpr auto kLower = [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    };
    const std::string_view text = trimmedName(name);
    return std::equal(text.begin(), text.end(), expected.begin(), expected.end(),
                      [&](char left, char right) { return kLower(left) == kLower(right); });
}

}  // namespace jx
