// Recognising and masking secrets.
#include "odbcadmin/cli/secrets.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "odbcadmin/cli/text.h"

namespace jx::admin {

namespace {

// The letters of a key, small: "SSL-Key_Password" becomes "sslkeypassword".
std::string lettersOf(std::string_view key) {
    std::string letters;
    for (const char letter : foldedName(key))
        if (std::isalnum(static_cast<unsigned char>(letter)) != 0)
            letters.push_back(letter);
    return letters;
}

constexpr std::array<std::string_view, 13> kSecretParts{"password",   "passwd", "passphrase", "passcode",   "secret",
                                                        "token",      "apikey", "authkey",    "privatekey", "accesskey",
                                                        "credential", "sslpwd", "proxypwd"};
constexpr std::array<std::string_view, 4> kSecretNames{"pwd", "pass", "pw", "pin"};

// Keys that name a file of secrets, or say how long or where to ask, show nothing that is one.
constexpr std::array<std::string_view, 4> kHarmlessEnds{"file", "path", "timeout", "prompt"};

std::string maskedConnectionString(std::string_view value) {
    std::string shown;
    while (!value.empty()) {
        const std::size_t end = std::min(value.find(';'), value.size());
        const std::string_view item = value.substr(0, end);
        const std::size_t equals = item.find('=');
        const bool hides = equals != std::string_view::npos && equals + 1 < item.size() &&
                           isSecretKey(trimmed(item.substr(0, equals)));
        shown.append(hides ? item.substr(0, equals + 1) : item).append(hides ? kMask : "");
        shown.append(end < value.size() ? ";" : "");
        value.remove_prefix(std::min(end + 1, value.size()));
    }
    return shown;
}

}  // namespace

bool isSecretKey(std::string_view key) {
    const std::string letters = lettersOf(key);
    const auto isName = [&](std::string_view name) { return letters == name; };
    const auto isInside = [&](std::string_view part) { return letters.find(part) != std::string::npos; };
    const auto isEnd = [&](std::string_view end) { return letters.ends_with(end); };
    if (std::any_of(kHarmlessEnds.begin(), kHarmlessEnds.end(), isEnd))
        return false;
    return std::any_of(kSecretNames.begin(), kSecretNames.end(), isName) ||
           std::any_of(kSecretParts.begin(), kSecretParts.end(), isInside) || letters.ends_with("pwd");
}

std::string masked(std::string_view key, std::string_view value) {
    if (value.empty())
        return {};
    return isSecretKey(key) ? std::string(kMask) : maskedConnectionString(value);
}

std::string maskedLine(std::string_view line) {
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos)
        return std::string(line);
    std::size_t value = equals + 1;
    while (value < line.size() && (line[value] == ' ' || line[value] == '\t'))
        ++value;
    std::size_t end = line.size();
    while (end > value && (line[end - 1] == '\r' || line[end - 1] == '\n'))
        --end;
    std::string shown(line.substr(0, value));
    // A key that was commented out is no less secret.
    std::string_view key = line.substr(0, equals);
    while (!key.empty() && (key.front() == ';' || key.front() == '#' || key.front() == ' ' || key.front() == '\t'))
        key.remove_prefix(1);
    return shown.append(masked(trimmed(key), line.substr(value, end - value))).append(line.substr(end));
}

}  // namespace jx::admin
