// The line that describes one file in an installation script.
#include "install/script_line.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "config/message_box.h"
#include "config/profile_value.h"
#include "config/text_bytes.h"
#include "install/owned_text.h"

namespace jx::install {

namespace {

std::string_view withoutLeadingBlanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return text;
}

// The characters from first up to end, as far as text reaches.
std::string_view columns(std::string_view text, std::size_t first, std::size_t end) {
    return first < text.size() ? text.substr(first, end - first) : std::string_view{};
}

// The decimal number at the start of text, 0 without one. A number too large for the type becomes the largest.
long numberIn(std::string_view text) {
    std::array<char, ProfileValue::kSize> digits{};
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

}  // namespace

ScriptLine::ScriptLine(std::string_view line) {
    for (; count_ < kFields; ++count_) {
        const std::size_t comma = line.find(',');
        if (comma == std::string_view::npos)
            return;
        fields_[count_] = withoutLeadingBlanks(line.substr(0, comma));
        line.remove_prefix(comma + 1);
    }
}

bool ScriptLine::fill(InfEntry& entry) const {
    entry.number0 = numberIn(field(kNumber0));
    readDate(field(kDate), entry);
    entry.number15 = numberIn(field(kNumber15));
    readVersion(field(kVersion), entry);
    // Field 8 has a default, but only when the line reaches that far.
    const std::string_view text8 = count_ > kText8 && field(kText8).empty() ? "OLDER" : field(kText8);
    return storeText(field(kFileName), entry.fileName) && storeText(text8, entry.text8) &&
           storeText(field(kText14), entry.text14);
}

void showMissingComma(HWND owner, unsigned comma, const unsigned char* script, const unsigned char* section,
                      const unsigned char* key) {
    const auto write = [&](char* text, std::size_t size) {
        return std::snprintf(text, size, "Not able to find comma %u in File: %s Section: %s Entry: %s", comma,
                             viewOf(script).data(), viewOf(section).data(), viewOf(key).data());
    };
    const std::size_t size = static_cast<std::size_t>(std::max(write(nullptr, 0), 0)) + 1;
    const OwnedText text(static_cast<unsigned char*>(ramAlloc(size)));
    if (text == nullptr)
        return;
    write(reinterpret_cast<char*>(text.get()), size);
    showMessage(owner, text.get(), MB_OK);
}

}  // namespace jx::install
