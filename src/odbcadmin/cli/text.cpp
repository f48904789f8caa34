// Comparing, splitting and showing texts.
#include "odbcadmin/cli/text.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace jx::admin {

namespace {

char small(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// The bytes that follow a first byte of a character; nothing for a byte that begins none.
std::optional<std::size_t> followers(unsigned char first) {
    if (first < 0x80)
        return 0;
    if (first >= 0xC2 && first <= 0xDF)
        return 1;
    if ((first & 0xF0U) == 0xE0)
        return 2;
    if (first >= 0xF0 && first <= 0xF4)
        return 3;
    return std::nullopt;
}

// Too long forms, halves of surrogate pairs and what lies beyond the last character show in the second byte.
bool isSecondByteAllowed(unsigned char first, unsigned char second) {
    switch (first) {
        case 0xE0:
            return second >= 0xA0;
        case 0xED:
            return second < 0xA0;
        case 0xF0:
            return second >= 0x90;
        case 0xF4:
            return second < 0x90;
        default:
            return true;
    }
}

}  // namespace

bool sameName(std::string_view left, std::string_view right) {
    return left.size() == right.size() &&
           std::equal(left.begin(), left.end(), right.begin(), [](char a, char b) { return small(a) == small(b); });
}

std::string foldedName(std::string_view name) {
    std::string folded(name);
    std::transform(folded.begin(), folded.end(), folded.begin(), small);
    return folded;
}

std::string_view trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(" \t");
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

std::optional<std::pair<std::string, std::string>> splitPair(std::string_view text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos || trimmed(text.substr(0, equals)).empty())
        return std::nullopt;
    return std::pair(std::string(text.substr(0, equals)), std::string(text.substr(equals + 1)));
}

std::string withoutQuotes(std::string_view key) {
    if (key.starts_with('"'))
        key.remove_prefix(1);
    return std::string(key.substr(0, key.find('"')));
}

std::string printable(std::string_view text) {
    std::string shown(text);
    for (char& byte : shown)
        if (static_cast<unsigned char>(byte) < ' ' || byte == '\x7F')
            byte = '?';
    return shown;
}

std::size_t characterCount(std::string_view text) {
    return text.size() - static_cast<std::size_t>(std::count_if(text.begin(), text.end(), isContinuation));
}

bool isUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto first = static_cast<unsigned char>(text[at]);
        const std::optional<std::size_t> count = followers(first);
        if (!count || text.size() - at <= *count)
            return false;
        if (*count > 0 && !isSecondByteAllowed(first, static_cast<unsigned char>(text[at + 1])))
            return false;
        for (std::size_t i = 0; i < *count; ++i)
            if (!isContinuation(text[++at]))
                return false;
    }
    return true;
}

std::string joined(const std::vector<std::string>& texts, std::string_view between) {
    std::string all;
    for (const std::string& text : texts)
        all.append(all.empty() ? "" : between).append(text);
    return all;
}

std::string absolutePath(const std::string& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute.lexically_normal().string();
}

std::string counted(std::size_t count, const std::string& word) {
    return std::to_string(count) + " " + word + (count == 1 ? "" : "s");
}

std::string absoluteLibrary(const std::string& path) {
    return path.find('/') == std::string::npos ? path : absolutePath(path);
}

}  // namespace jx::admin
