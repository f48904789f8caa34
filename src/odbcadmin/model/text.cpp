// Showing, joining and completing texts.
#include "odbcadmin/model/text.h"

#include <array>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace jx::model {

std::string withoutQuotes(std::string_view key) {
    if (key.starts_with('"'))
        key.remove_prefix(1);
    return std::string(key.substr(0, key.find('"')));
}

std::string printable(std::string_view text) {
    std::string shown(text);
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const bool isControl = static_cast<unsigned char>(shown[i]) < ' ' || shown[i] == '\x7F';
        // U+0080 to U+009F: terminals take U+009B for the beginning of a command.
        const bool isControlOfTwo = shown[i] == '\xC2' && i + 1 < shown.size() &&
                                    static_cast<unsigned char>(shown[i + 1]) >= 0x80 &&
                                    static_cast<unsigned char>(shown[i + 1]) < 0xA0;
        if (isControl || isControlOfTwo)
            shown[i] = '?';
        if (isControlOfTwo)
            shown[++i] = '?';
    }
    return shown;
}

std::string shellWord(const std::string& text) {
    constexpr std::string_view kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-./+:,@%=";
    if (!text.empty() && text.find_first_not_of(kPlain) == std::string::npos)
        return text;
    std::string word = "'";
    for (const char letter : text)
        word.append(letter == '\'' ? "'\\''" : std::string(1, letter));
    return word + "'";
}

std::string joined(const std::vector<std::string>& texts, std::string_view between) {
    std::string all;
    for (const std::string& text : texts)
        all.append(all.empty() ? "" : between).append(text);
    return all;
}

std::string counted(std::size_t count, const std::string& word) {
    return std::to_string(count) + " " + word + (count == 1 ? "" : "s");
}

std::string absolutePath(const std::string& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute.lexically_normal().string();
}

std::string absoluteLibrary(const std::string& path) {
    return path.find('/') == std::string::npos ? path : absolutePath(path);
}

std::string secondsText(std::chrono::milliseconds time) {
    constexpr double kMilliseconds = 1000;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%g s", static_cast<double>(time.count()) / kMilliseconds);
    return text.data();
}

}  // namespace jx::model
