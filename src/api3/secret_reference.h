// Keys whose value lies elsewhere: KEY@file, KEY@env and KEY@credential.
//
//     const Secret secret = readSecret(Reference::file, "/run/secrets/password");
//     if (!secret.refusal.empty()) ...   // "/run/secrets/password: Permission denied"
#pragma once

#include <cstddef>
#include <string>

#include "rules/references.h"

namespace jx::api3 {

using rules::Reference;

inline constexpr std::size_t kLongestSecret = std::size_t{64} << 10;

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
