// Comparing, showing and judging what a user typed for a data source.
#include "setup/data_source_form.h"

#include <algorithm>
#include <array>
#include <span>

namespace jx::setup {

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kLineBreaks = "\r\n";

std::string lowerCase(std::string text) {
    for (char& character : text) {
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    }
    return text;
}

// text in lower case and without what parts its words: "API_Key" and "api key" are one name.
std::string joinedWords(const std::string& text) {
    std::string joined = lowerCase(text);
    std::erase_if(joined,
                  [](char character) { return std::string_view(" \t_-.").find(character) != std::string_view::npos; });
    return joined;
}

bool holdsOneOf(std::string_view text, std::span<const std::string_view> words) {
    return std::any_of(words.begin(), words.end(),
                       [&](std::string_view word) { return text.find(word) != std::string_view::npos; });
}

bool holdsLineBreak(std::string_view text) {
    return text.find_first_of(kLineBreaks) != std::string_view::npos;
}

}  // namespace

std::size_t placeOf(const std::vector<Attribute>& attributes, const std::string& keyword) {
    const std::string wanted = lowerCase(keyword);
    std::size_t at = 0;
    while (at < attributes.size() && lowerCase(attributes[at].keyword) != wanted)
        ++at;
    return at;
}

void overlay(std::vector<Attribute>& attributes, const std::vector<Attribute>& changes) {
    for (const Attribute& change : changes) {
        const std::size_t at = placeOf(attributes, change.keyword);
        if (at == attributes.size() && !change.value.empty())
            attributes.push_back(change);
        else if (at < attributes.size() && change.value.empty())
            attributes.erase(attributes.begin() + static_cast<std::ptrdiff_t>(at));
        else if (at < attributes.size())
            attributes[at].value = change.value;
    }
}

std::vector<KeyChange> changesBetween(const std::vector<Attribute>& before, const std::vector<Attribute>& now) {
    std::vector<KeyChange> changes;
    for (const Attribute& old : before) {
        if (placeOf(now, old.keyword) == now.size())
            changes.push_back({old.keyword, std::nullopt});
    }
    for (const Attribute& item : now) {
        const std::size_t at = placeOf(before, item.keyword);
        if (at == before.size() || before[at].value != item.value)
            changes.push_back({item.keyword, item.value});
    }
    return changes;
}

bool isSecret(const std::string& keyword) {
    constexpr std::array<std::string_view, 9> kWords{"pwd",   "passw",      "passphrase", "passcode",  "secret",
                                                     "token", "credential", "apikey",     "privatekey"};
    const std::string name = joinedWords(keyword);
    return name.ends_with("pass") || holdsOneOf(name, kWords);
}

std::string rowText(const Attribute& attribute) {
    constexpr std::array<std::string_view, 2> kInConnectStrings{"pwd=", "password="};
    const bool hidden = (isSecret(attribute.keyword) && !attribute.value.empty()) ||
                        holdsOneOf(joinedWords(attribute.value), kInConnectStrings);
    return attribute.keyword + " = " + (hidden ? "********" : attribute.value);
}

std::string trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos)
        return {};
    return std::string(text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1));
}

const char* objectionToName(std::string_view name) {
    if (name.empty())
        return "Give the data source a name.";
    if (isReservedName(name))
        return "This name has another meaning in the configuration files. Choose another one.";
    if (!isNameForNewDataSource(name) || holdsLineBreak(name) || name.front() == '#' || trimmed(name) != name)
        return "A data source's name has at most 32 characters and none of []{}(),;?*=!@\\ and does not begin with #.";
    return nullptr;
}

const char* objectionToKeyword(const std::string& keyword) {
    constexpr std::string_view kBeginnings = "[;#";  // of lines that are no keys
    if (keyword.empty())
        return "Type a key first.";
    if (lowerCase(keyword) == "dsn" || lowerCase(keyword) == "driver")
        return "DSN and Driver are set by the data source's name and its driver.";
    if (keyword.find('=') != std::string::npos || holdsLineBreak(keyword) ||
        kBeginnings.find(keyword[0]) != kBeginnings.npos)
        return "A key holds no = and does not begin with [, ; or #.";
    return nullptr;
}

const char* objectionToValue(std::string_view value) {
    if (holdsLineBreak(value))
        return "A value is one line.";
    if (trimmed(value) != value)
        return "A value cannot begin or end with a blank: the configuration file does not keep it.";
    return nullptr;
}

}  // namespace jx::setup
