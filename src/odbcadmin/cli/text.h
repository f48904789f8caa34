// Small questions about texts: comparing names, splitting KEY=VALUE, what may go to a terminal.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace jx::admin {

// "KEY=VALUE" at its first "="; nothing without one or with an empty key.
std::optional<std::pair<std::string, std::string>> splitPair(std::string_view text);

// The name in a key of an installation script, where keys stand between double quotes.
std::string withoutQuotes(std::string_view key);

// The text with every control character shown as "?": a file's bytes must not steer a terminal.
std::string printable(std::string_view text);

// UTF-8 characters; other bytes count one each.
std::size_t characterCount(std::string_view text);

// "a, b, c"
std::string joined(const std::vector<std::string>& texts, std::string_view between = ", ");

// "1 driver", "2 drivers"
std::string counted(std::size_t count, const std::string& word);

// The path made absolute against the current directory, without looking at the disk; a name without a slash stays,
// since the loader looks such libraries up by itself.
std::string absoluteLibrary(const std::string& path);

// The path made absolute against the current directory.
std::string absolutePath(const std::string& path);

}  // namespace jx::admin
