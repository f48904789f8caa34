// UTF-8 and the UTF-16 of wide driver functions.
#include "odbcadmin/trial/wide_text.h"

#include <gtest/gtest.h>

namespace jx::trial {
namespace {

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
        {std::string("a\0b", 3), std::u16string(u"a\0b", 3)},
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

}  // namespace
}  // namespace jx::trial
