// Characters, and bytes that are not characters.
#include "rules/utf8.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace jx::rules::test {
namespace {

TEST(Utf8, KnowsWhatItIs) {
    for (const char* text :
         {"", "a", "\xC3\xBC", "\xE2\x82\xAC", "\xF0\x9F\x98\x80", "\xED\x9F\xBF", "\xF4\x8F\xBF\xBF"})
        EXPECT_TRUE(isUtf8(text)) << text;
    for (const char* text : {"\x80", "\xC3", "\xC0\xAF", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                             "\xF5\x80\x80\x80", "\xE2\x82", "a\xFFz", "\xC3z"})
        EXPECT_FALSE(isUtf8(text)) << text;
}

TEST(Utf8, AnyTextIsAWalkOverCharactersAndSingleBytes) {
    const struct {
        std::string_view text;
        std::vector<std::size_t> lengths;
    } rows[] = {
        {"", {}},
        {"a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80", {1, 2, 3, 4}},
        {"\xE2\x82", {1, 1}},                // cut at its end
        {"\xC0\x80", {1, 1}},                // a longer spelling than needed
        {"\xED\xA0\x80", {1, 1, 1}},         // half a surrogate pair
        {"\xF4\x90\x80\x80", {1, 1, 1, 1}},  // beyond the last character
        {"\xE2\x82"
         "a",
         {1, 1, 1}},
        {std::string_view("\0", 1), {1}},
    };
    for (const auto& row : rows) {
        std::vector<std::size_t> lengths;
        for (std::size_t at = 0; at < row.text.size(); at += lengths.back())
            lengths.push_back(characterAt(row.text, at).length);
        EXPECT_EQ(lengths, row.lengths) << row.text;
    }
    EXPECT_EQ(characterAt("\xE2\x82\xAC", 0).code, U'\u20AC');
    EXPECT_EQ(characterAt("\xE2\x82", 0).code, kNoCharacter);
}

TEST(Utf8, CharactersAreCountedAsAWalkGoes) {
    const struct {
        std::string_view text;
        std::size_t count;
    } rows[] = {{"", 0},         {"abc", 3},  {"\xC3\xBC\xE2\x82\xAC", 2}, {"\xF0\x9F\x98\x80z", 2},
                {"\xE2\x82", 2}, {"a\xFF", 2}};
    for (const auto& row : rows)
        EXPECT_EQ(characterCount(row.text), row.count) << row.text;
}

TEST(Utf8, ACutSparesWholeCharactersOnly) {
    const struct {
        std::string_view text;
        std::size_t longest;
        std::string_view cut;
    } rows[] = {
        {"abc", 3, "abc"},
        {"abc", 2, "ab"},
        {"abc", 0, ""},
        {"", 0, ""},
        {"a\xC3\xBC", 2, "a"},
        {"a\xC3\xBC", 3, "a\xC3\xBC"},
        {"\xE2\x82\xAC", 2, ""},
        {"\xE2\x82\xAC", 1, ""},
        {"a\xF0\x9F\x98\x80", 4, "a"},
        {"a\xF0\x9F\x98\x80", 2, "a"},
        {"\xF0\x9F\x98\x80z", 4, "\xF0\x9F\x98\x80"},
        {"\xE2\x82z", 2, "\xE2\x82"},             // no character: bytes are parted as they come
        {"\x82\xAC\xAC\xAC", 3, "\x82\xAC\xAC"},  // likewise
    };
    for (const auto& row : rows)
        EXPECT_EQ(cutAtCharacter(row.text, row.longest), row.cut) << row.text << " " << row.longest;
}

TEST(Utf8, ControlCharactersAreToldAloneAndSpelledInTwoBytes) {
    const auto isOne = [](std::string_view text) { return isControl(characterAt(text, 0), text[0]); };
    for (const std::string_view text : {"\x1F", "\n", "\x7F", "\x80", "\x9B", "\xC2\x80", "\xC2\x9F"})
        EXPECT_TRUE(isOne(text)) << text;
    for (const std::string_view text : {" ", "~", "\xA0", "\xFF", "\xC2\xA0", "\xE2\x82\xAC"})
        EXPECT_FALSE(isOne(text)) << text;
}

TEST(Utf8, WhatIsAppendedIsReadBack) {
    for (const char32_t code :
         {U'\0', U'a', U'\x7F', U'\x80', U'\u07FF', U'\u0800', U'\uFFFF', U'\U00010000', U'\U0010FFFF'}) {
        std::string text;
        appendCharacter(text, code);
        EXPECT_EQ(characterAt(text, 0).code, code);
        EXPECT_EQ(characterAt(text, 0).length, text.size());
    }
    std::string text;
    appendCharacter(text, kNoCharacter);
    EXPECT_EQ(text, "\xEF\xBF\xBD");
}

}  // namespace
}  // namespace jx::rules::test
