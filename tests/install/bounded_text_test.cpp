// A text that is built up in a buffer of fixed size.
#include "install/bounded_text.h"

#include <gtest/gtest.h>

#include "config/text_bytes.h"

namespace {

using jx::asChars;
using jx::install::BoundedText;

TEST(BoundedText, RefusesWhatDoesNotFitAndKeepsWhatWasThere) {
    BoundedText<8> text;
    EXPECT_TRUE(text.append("abc"));
    EXPECT_FALSE(text.append("defgh"));
    EXPECT_STREQ(asChars(text.text()), "abc");
    EXPECT_TRUE(text.append("defg"));
    EXPECT_TRUE(text.append(""));
    EXPECT_FALSE(text.append("h"));
    EXPECT_STREQ(asChars(text.text()), "abcdefg");
    EXPECT_EQ(text.length(), 7U);
}

TEST(BoundedText, ReplacesItsLastCharacterButNotThatOfAnEmptyText) {
    BoundedText<8> text;
    text.replaceLast('_');
    EXPECT_STREQ(asChars(text.text()), "");
    EXPECT_TRUE(text.append("a.so"));
    text.replaceLast('_');
    EXPECT_STREQ(asChars(text.text()), "a.s_");
}

}  // namespace
