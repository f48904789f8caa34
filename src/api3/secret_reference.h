// Keys whose value lies elsewhere: KEY@file, KEY@env and KEY@credential.
//
//     const Secret secret = readSecret(Reference::file, "/run/secrets/password");
//     if (!secret.refusal.empty()) ...   // "/run/secrets/password: Permission denied"
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace jx::api3 {

enum class Reference : std::uint8_t { file, variable, credential };

inline constexpr std::size_t kLongestSecret = std::size_t{64} << 10;

// The suffixes in the order in which they are looked for, each at its Reference's place.
inline constexpr std::array<std::string_view, 3> kReferenceSuffixes{"@file", "@env", "@credential"};

// The KEY of a reference's name, whose suffix may be in any case; empty when the name is no reference.
std::string_view referredKey(std::string_view name);

// Whether the value of a key of that name, in any case, may lie elsewhere. Not that of a key which names code to load
// or counts: the environment could then choose what a program loads.
bool mayBeReferred(std::string_view key);

// Secret: what a reference leads to, or why it is not followed.
struct Secret {
    std::string text;
    std::string refusal;  // empty when text is the value; never holds a part of it
};

// Reads what a reference with that value leads to, now, without its last line end:
//   file        an absolute path of a regular file, links followed, that nobody but its owner may write (his own group
//               counts as he)
//   variable    the name of a variable that is set
//   credential  the name of such a file in CREDENTIALS_DIRECTORY
// Refused as well: more than kLongestSecret bytes, a NUL, and everything in a program with raised rights.
Secret readSecret(Reference reference, const std::string& target);

}  // namespace jx::api3
