// UTF-8 and the UTF-16 of wide driver functions.
#include <gtest/gtest.h>

#include <string>
#include <vector>

extern "C" {
#include "odbcadmin/trial/helper/wide_text.h"
}

namespace jx::trial {
namespace {

constexpr std::size_t kRoom = 100;

std::u16string wideText(const std::string& text) {
    char16_t wide[kRoom];
    widen(text.c_str(), wide, kRoom);
    return wide;
}

std::string narrowText(const std::u16string& text) {
    char narrowed[kRoom];
    narrow(text.c_str(), narrowed, kRoom);
    return narrowed;
}

TEST(WideText, GoesThereAndBack) {
    const struct {
        std::string narrow;
        std::u16string wide;
    } rows[] = {
        {"", u""},
        {"Sales", u"Sales"},
        {"M\xC3\xBCller", u"M\u00FCller"},
        {"\xE2\x82\xAC", u"\u20AC"},
        {"\xEF\xBF\xBD", u"\uFFFD"},
        {"\xF0\x9F\x98\x80", u"\U0001F600"},
        {"\xF0\x90\x80\x80", u"\U00010000"},
        {"\xF4\x8F\xBF\xBF", u"\U0010FFFF"},
        {"\xEE\x80\x80", u"\uE000"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.narrow);
        EXPECT_EQ(wideText(row.narrow), row.wide);
        EXPECT_EQ(narrowText(row.wide), row.narrow);
    }
}

TEST(WideText, WhatIsNotValidBecomesTheReplacementCharacter) {
    for (const char* bad : {"\xFF", "\xC3", "\xED\xA0\x80", "\xC0\x80", "\x80"}) {
        SCOPED_TRACE(bad);
        EXPECT_EQ(wideText(std::string(bad) + "x").back(), u'x');
        EXPECT_EQ(wideText(bad).front(), u'\uFFFD');
    }
    const std::u16string high(1, char16_t{0xD800});
    const std::u16string low(1, char16_t{0xDC00});
    EXPECT_EQ(narrowText(high), "\xEF\xBF\xBD");
    EXPECT_EQ(narrowText(low), "\xEF\xBF\xBD");
    EXPECT_EQ(narrowText(high + u"x"), "\xEF\xBF\xBDx");
    EXPECT_EQ(narrowText(low + high), "\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(narrowText(high + high + low), "\xEF\xBF\xBD\xF0\x90\x80\x80");
}

TEST(WideText, WhatDoesNotFitIsCutBeforeACharacter) {
    const struct {
        std::size_t size;
        std::string narrowed;
    } rows[] = {
        {1, ""}, {2, "a"}, {3, "a"}, {4, "a\xC3\xB6"}, {5, "a\xC3\xB6"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.size);
        // Exactly as large as told, so that a byte beyond is found.
        std::vector<char> text(row.size);
        narrow(u"a\u00F6\U0001F600", text.data(), text.size());
        EXPECT_EQ(text.data(), row.narrowed);
    }
    std::vector<char16_t> units(4);
    widen("a\xC3\xB6\xF0\x9F\x98\x80", units.data(), units.size());
    EXPECT_EQ(std::u16string(units.data()), u"a\u00F6");
    units.resize(5);
    widen("a\xC3\xB6\xF0\x9F\x98\x80", units.data(), units.size());
    EXPECT_EQ(std::u16string(units.data()), u"a\u00F6\U0001F600");
}

}  // namespace
}  // namespace jx::trial
