// Which values nobody should see by accident.
#pragma once

#include <string>
#include <string_view>

namespace jx::admin {

inline constexpr std::string_view kMask = "********";

// Whether the key's name says password, secret, token, passphrase, private key or the like.
bool isSecretKey(std::string_view key);

// The value, or what stands for it: all of it behind a secret key, and the part behind "PWD=" or another secret key in
// a connection string, also in braces or quotes, or the password in an URL. An empty value is no secret.
std::string masked(std::string_view key, std::string_view value);

// The secret key that is a line's first word when more than blanks follows: a key that lost its "=" has the secret in
// what is read as its name. Empty when there is none.
std::string_view secretWord(std::string_view line);

// A line of an INI file with its value masked, a comment too; without "=", what stands behind a secret key as its first
// word.
std::string maskedLine(std::string_view line);

}  // namespace jx::admin
