// The line that describes one file in an installation script.
#include "install/script_line.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "install/owned_text.h"
#include "install/profile_text.h"

namespace jx::install {

namespace {

std::string_view withoutLeadingBlanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return text;
}

// The columns from first to before end, as far as text reaches.
std::string_view columns(std::string_view text, std::size_t first, std::size_t end) {
    return first < text.size() ? text.substr(first, end - first) : std::string_view{};
}

// The decimal number text begins with, 0 when there is none; one too large for the type becomes the largest.
long numberIn(std::string_view text) {
    std::array<char, kProfileTextSize> digits{};
    text.copy(digits.data(), digits.size() - 1);
    return std::strtol(digits.data(), nullptr, 10);
}

void readDate(std::string_view field, InfEntry& entry) {
    entry.dateYear = numberIn(columns(field, 0, 4));
    entry.dateMonth = numberIn(columns(field, 5, 7));
    entry.dateDay = numberIn(columns(field, 8, 10));
}

void readVersion(std::string_view field, InfEntry& entry) {
    entry.version[0] = numberIn(columns(field, 0, 2));
    entry.version[1] = numberIn(columns(field, 3, 5));
    entry.version[2] = numberIn(columns(field, 6, 8));
    entry.version[3] = numberIn(columns(field, 9, field.size()));
}

// Stores a copy of text, or null for an empty one; false when memory is short.
bool storeText(std::string_view text, unsigned char*& target) {
    if (text.empty())
        return true;
    target = copyOf(text).release();
    return target != nullptr;
}

bool storeField(unsigned number, std::string_view text, InfEntry& entry) {
    const std::string_view field = withoutLeadingBlanks(text);
    switch (number) {
        case 0:
            entry.number0 = numberIn(field);
            return true;
        case 1:
            return storeText(field, entry.fileName);
        case 5:
            readDate(field, entry);
            return true;
        case 8:
            return storeText(field.empty() ? "OLDER" : field, entry.text8);
        case 14:
            return storeText(field, entry.text14);
        case 15:
            entry.number15 = numberIn(field);
            return true;
        case 19:
            readVersion(field, entry);
            return true;
        default:
            return true;
    }
}

}  // namespace

LineResult readLine(std::string_view line, InfEntry& entry) {
    for (unsigned comma = 1; comma <= kLineCommas; ++comma) {
        const std::size_t end = line.find(',');
        if (end == std::string_view::npos)
            return {LineResult::Outcome::commaMissing, comma};
        if (!storeField(comma - 1, line.substr(0, end), entry))
            return {LineResult::Outcome::memoryShort, 0};
        line.remove_prefix(end + 1);
    }
    return {LineResult::Outcome::complete, 0};
}

}  // namespace jx::install
