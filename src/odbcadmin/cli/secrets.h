// Which values nobody should see by accident.
#pragma once

#include <string>
#include <string_view>

namespace jx::admin {

inline constexpr std::string_view kMask = "********";

// Whether the key's name says password, secret, token, passphrase, private key or the like.
bool isSecretKey(std::string_view key);

// The value, or what stands for it: all of it behind a secret key, and the part behind "PWD=" or another secret key in
// a connection string. An empty value is no secret.
std::string masked(std::string_view key, std::string_view value);

// A line of an INI file with its value masked; other lines as they are.
std::string maskedLine(std::string_view line);

}  // namespace jx::admin
