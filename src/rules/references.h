// Keys whose value lies elsewhere: KEY@file, KEY@env and KEY@credential.
//
//     if (const std::string_view key = rules::referredKey(entry.key); !key.empty()) ...
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "rules/names.h"
#include "rules/sections.h"

namespace jx::rules {

enum class Reference : std::uint8_t { file, variable, credential };

// The suffixes in the order in which they are looked for, each at its Reference's place.
inline constexpr std::array<std::string_view, 3> kReferenceSuffixes{"@file", "@env", "@credential"};

// The KEY of a reference's name, whose suffix may be in any case; empty when the name is no reference.
inline std::string_view referredKey(std::string_view name) {
    for (const std::string_view suffix : kReferenceSuffixes)
        if (name.size() > suffix.size() && sameName(name.substr(name.size() - suffix.size()), suffix))
            return trimmed(name.substr(0, name.size() - suffix.size()));
    return {};
}

// Of a name that referredKey has a key for.
inline Reference referenceOf(std::string_view name) {
    for (std::size_t i = 0; i < kReferenceSuffixes.size(); ++i)
        if (sameName(name.substr(name.size() - std::min(name.size(), kReferenceSuffixes[i].size())),
                     kReferenceSuffixes[i]))
            return static_cast<Reference>(i);
    return Reference::file;
}

// Whether the value of a key of that name, in any case, may lie elsewhere. Not that of a key which names code to load
// or counts: the environment could then choose what a program loads.
inline bool mayBeReferred(std::string_view key) {
    constexpr std::array<std::string_view, 4> kNever{kDriver, kSetup, kTranslator, kUsageCount};
    return referredKey(key).empty() &&
           std::none_of(kNever.begin(), kNever.end(), [key](std::string_view each) { return sameName(key, each); });
}

}  // namespace jx::rules
