// Small operations on texts that more than one room needs.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace jx::model {

// The name in a key of an installation script, where keys stand between double quotes.
std::string withoutQuotes(std::string_view key);

// The text with every control character shown as "?": a file's bytes must not steer a terminal.
std::string printable(std::string_view text);

// The text as one word of a shell's line.
std::string shellWord(const std::string& text);

// "a, b, c"
std::string joined(const std::vector<std::string>& texts, std::string_view between = ", ");

// "1 driver", "2 drivers"
std::string counted(std::size_t count, const std::string& word);

// "20 s", "0.5 s"
std::string secondsText(std::chrono::milliseconds time);

// The path made absolute against the current directory, without looking at the disk.
std::string absolutePath(const std::string& path);

// The same, but a name without a slash stays, since the loader looks such libraries up by itself.
std::string absoluteLibrary(const std::string& path);

}  // namespace jx::model
