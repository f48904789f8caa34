// Comparing, splitting and showing texts.
#include "odbcadmin/cli/text.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "rules/names.h"
#include "rules/utf8.h"

namespace jx::admin {

std::optional<std::pair<std::string, std::string>> splitPair(std::string_view text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos || rules::trimmed(text.substr(0, equals)).empty())
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
    return text.size() - static_cast<std::size_t>(std::count_if(text.begin(), text.end(), rules::isContinuation));
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
