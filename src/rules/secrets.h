// Which values are secrets, and how to show text without them.
//
//     std::cout << key << '=' << rules::masked(key, value);
//
// The rules look at names of keys, also inside connection strings and URLs; a value alone is never judged.
#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "rules/names.h"
#include "rules/references.h"

namespace jx::rules {

inline constexpr std::string_view kMask = "********";

// Whether the key's name means a password, secret, token, passphrase, private key or the like, in any case and
// spelling: true for "SSL-Key_Password", false for "PasswordFile" and "Compass", and for "Password@env", which says
// only where the secret lies.
inline bool isSecretKey(std::string_view key);

// The value with its secrets replaced by kMask: all of it under a secret key; otherwise the part after "PWD=" or
// another secret key in a connection string or URL, also in braces or quotes, and the password of a URL. An empty value
// stays.
inline std::string masked(std::string_view key, std::string_view value);

// Whether kMask stands in the value where masked would put it, so that the value was copied from where it was hidden.
inline bool holdsMask(std::string_view key, std::string_view value);

// The first word of a line, if it is a secret key and more than blanks follow: the line is then a key that lost its
// "=", and the secret is read as part of the name. Empty otherwise.
inline std::string_view secretWord(std::string_view line);

// A line of an INI file, or a comment, with its value masked; without "=", what follows a secret key as first word.
inline std::string maskedLine(std::string_view line);

namespace secrets {

// The letters of a key, small: "SSL-Key_Password" becomes "sslkeypassword".
inline std::string lettersOf(std::string_view key) {
    std::string letters;
    for (const char letter : foldedName(key))
        if (std::isalnum(static_cast<unsigned char>(letter)) != 0)
            letters.push_back(letter);
    return letters;
}

inline constexpr std::array<std::string_view, 17> kSecretParts{"pwd",
                                                               "passw",
                                                               "passphrase",
                                                               "passcode",
                                                               "passkey",
                                                               "pswd",
                                                               "secret",
                                                               "token",
                                                               "apikey",
                                                               "authkey",
                                                               "privatekey",
                                                               "accesskey",
                                                               "accountkey",
                                                               "sharedkey",
                                                               "encryptionkey",
                                                               "credential",
                                                               "sharedaccesssignature"};
inline constexpr std::array<std::string_view, 6> kSecretNames{"pass", "pw", "pin", "sas", "sig", "authorization"};
inline constexpr std::array<std::string_view, 2> kSecretEnds{"pass", "cookie"};

// Keys that end so hold no secret, but a file's name, a time or the like.
inline constexpr std::array<std::string_view, 6> kHarmlessEnds{"file",   "path",   "timeout",
                                                               "prompt", "bypass", "compass"};

inline constexpr std::string_view kClosing = "}\"'";
inline constexpr std::string_view kGaps = " \t={(\"'?&,";

// Where the secret in an item begins, or npos. Its key may follow another word, as in "host=db1 password=x", "{PWD=x"
// and "?password=x", or be two words, as in "Private Key".
inline std::size_t secretIn(std::string_view item) {
    const auto isGap = [](char letter) { return kGaps.find(letter) != std::string_view::npos; };
    for (std::size_t equals = item.find('='); equals < item.size(); equals = item.find('=', equals + 1)) {
        const std::string_view key = trimmed(item.substr(0, equals));
        const std::string_view word = key.substr(key.find_last_of(kGaps) + 1);
        const bool isTwoWords = std::count_if(key.begin(), key.end(), isGap) == 1;
        if (equals + 1 < item.size() && (isSecretKey(word) || (isTwoWords && isSecretKey(key))))
            return equals + 1;
    }
    return std::string_view::npos;
}

// Where a secret ends: at a semicolon, unless it is in braces or quotes.
inline std::size_t secretEnd(std::string_view text, std::size_t begin) {
    const std::size_t first = std::min(text.find_first_not_of(" \t", begin), text.size());
    const std::size_t opening =
        first < text.size() ? std::string_view("{\"'").find(text[first]) : std::string_view::npos;
    if (opening == std::string_view::npos)
        return std::min(text.find(';', first), text.size());
    std::size_t close = text.find(kClosing[opening], first + 1);
    while (close < text.size() && close + 1 < text.size() && text[close + 1] == kClosing[opening])
        close = text.find(kClosing[opening], close + 2);
    return std::min(text.find(';', close), text.size());
}

// Where the password of the address that begins at begin ends, or npos. It may hold a slash; but after a port a slash
// begins the path.
inline std::size_t urlPasswordEnd(std::string_view text, std::size_t begin, std::size_t colon) {
    const std::size_t slash = std::min(text.find_first_of("/?#; \"'", begin), text.size());
    const std::size_t host = text.substr(0, slash).rfind('@');
    if (host != std::string_view::npos && host > colon)
        return host;
    const bool isPort = text.substr(0, slash).find_first_not_of("0123456789", colon + 1) == std::string_view::npos;
    const std::size_t end = std::min(text.find_first_of("; \"'", begin), text.size());
    const std::size_t late = text.substr(0, end).rfind('@');
    return isPort || late == std::string_view::npos || late < colon ? std::string_view::npos : late;
}

// "db://user:x@host": the x.
inline std::string withoutUrlPassword(std::string_view text) {
    std::string shown(text);
    for (std::size_t at = shown.find("://"); at != std::string::npos; at = shown.find("://", at + 1)) {
        const std::size_t begin = at + 3;
        const std::size_t colon = shown.find_first_of(":/?#; @", begin);
        if (colon == std::string::npos || shown[colon] != ':')
            continue;
        const std::size_t end = urlPasswordEnd(shown, begin, colon);
        if (end != std::string_view::npos && end > colon + 1)
            shown.replace(colon + 1, end - colon - 1, kMask);
    }
    return shown;
}

inline std::string maskedConnectionString(std::string_view value) {
    std::string shown;
    while (!value.empty()) {
        std::size_t end = std::min(value.find(';'), value.size());
        const std::size_t secret = secretIn(value.substr(0, end));
        if (secret != std::string_view::npos)
            end = secretEnd(value, secret);
        shown.append(value.substr(0, std::min(secret, end))).append(secret < end ? kMask : "");
        shown.append(end < value.size() ? ";" : "");
        value.remove_prefix(std::min(end + 1, value.size()));
    }
    return withoutUrlPassword(shown);
}

inline std::string maskedWord(std::string_view line) {
    const std::size_t begin = std::min(line.find_first_not_of(" \t;#"), line.size());
    const std::string_view word = secretWord(line.substr(begin));
    if (word.empty())
        return std::string(line);
    const std::size_t end = std::min(line.find_first_of("\r\n"), line.size());
    return std::string(line.substr(0, begin + word.size())).append(" ").append(kMask).append(line.substr(end));
}

}  // namespace secrets

inline bool isSecretKey(std::string_view key) {
    if (!referredKey(key).empty())
        return false;
    const std::string letters = secrets::lettersOf(key);
    const auto isName = [&](std::string_view name) { return letters == name; };
    const auto isInside = [&](std::string_view part) { return letters.find(part) != std::string::npos; };
    const auto isEnd = [&](std::string_view end) { return letters.ends_with(end); };
    if (std::any_of(secrets::kHarmlessEnds.begin(), secrets::kHarmlessEnds.end(), isEnd))
        return false;
    return std::any_of(secrets::kSecretNames.begin(), secrets::kSecretNames.end(), isName) ||
           std::any_of(secrets::kSecretParts.begin(), secrets::kSecretParts.end(), isInside) ||
           std::any_of(secrets::kSecretEnds.begin(), secrets::kSecretEnds.end(), isEnd);
}

inline std::string_view secretWord(std::string_view line) {
    const auto isPart = [](char letter) {
        return std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '_' || letter == '-' || letter == '.';
    };
    const auto end = std::find_if_not(line.begin(), line.end(), isPart);
    const std::string_view word = line.substr(0, static_cast<std::size_t>(end - line.begin()));
    const bool hasMore = line.find_first_not_of(" \t\r\n", word.size()) != std::string_view::npos;
    return hasMore && isSecretKey(word) ? word : std::string_view();
}

inline std::string masked(std::string_view key, std::string_view value) {
    if (value.empty())
        return {};
    return isSecretKey(key) ? std::string(kMask) : secrets::maskedConnectionString(value);
}

inline std::string maskedLine(std::string_view line) {
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos)
        return secrets::maskedWord(line);
    std::size_t value = equals + 1;
    while (value < line.size() && (line[value] == ' ' || line[value] == '\t'))
        ++value;
    std::size_t end = line.size();
    while (end > value && (line[end - 1] == '\r' || line[end - 1] == '\n'))
        --end;
    std::string shown(line.substr(0, value));
    // A key that was commented out is as secret as before.
    std::string_view key = line.substr(0, equals);
    while (!key.empty() && (key.front() == ';' || key.front() == '#' || key.front() == ' ' || key.front() == '\t'))
        key.remove_prefix(1);
    return shown.append(masked(trimmed(key), line.substr(value, end - value))).append(line.substr(end));
}

inline bool holdsMask(std::string_view key, std::string_view value) {
    const std::size_t at = value.find(kMask);
    if (at == std::string_view::npos)
        return false;
    std::string unmasked(value);
    unmasked.replace(at, kMask.size(), "x");
    return masked(key, unmasked) != unmasked && masked(key, value) == value;
}

}  // namespace jx::rules
