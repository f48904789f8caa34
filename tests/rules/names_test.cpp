// How names are trimmed, compared and hashed.
#include "rules/names.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace jx::rules::test {
namespace {

using namespace std::string_view_literals;

char lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

// The same comparison, one byte at a time.
bool sameByBytes(std::string_view left, std::string_view right) {
    if (left.size() != right.size())
        return false;
    for (std::size_t i = 0; i < left.size(); ++i)
        if (lower(left[i]) != lower(right[i]))
            return false;
    return true;
}

TEST(Names, BlanksAroundItAreSpaceAndTabOnly) {
    EXPECT_EQ(trimmed(" \t a b\t "), "a b");
    EXPECT_EQ(trimmed("\v\fa\r"), "\v\fa\r");
    EXPECT_EQ(trimmed("\xA0"), "\xA0");
    EXPECT_EQ(trimmed(" \t"), "");
    EXPECT_EQ(trimmed(""), "");
}

TEST(Names, ANullArgumentIsNotAnEmptyOne) {
    EXPECT_EQ(argument(nullptr).data(), nullptr);
    EXPECT_NE(argument("").data(), nullptr);
    EXPECT_NE(argument("  ").data(), nullptr);
    EXPECT_TRUE(argument("  ").empty());
    EXPECT_EQ(argument("\ta b "), "a b");
}

TEST(Names, AnEmptyOneAndOneWithANulCannotBeAskedFor) {
    EXPECT_TRUE(canBeAskedFor("a"));
    EXPECT_FALSE(canBeAskedFor(""));
    EXPECT_FALSE(canBeAskedFor("a\0b"sv));
    EXPECT_FALSE(canBeAskedFor("\0"sv));
}

// Every pair of bytes, at every place of names of every length that the code treats differently.
TEST(Names, OnlyAsciiLettersHaveACase) {
    for (const std::size_t size : {1U, 2U, 3U, 4U, 7U, 8U, 9U, 15U, 16U, 17U}) {
        for (std::size_t place = 0; place < size; ++place) {
            std::string left(size, 'x');
            std::string right(size, 'X');
            for (int byte = 0; byte < 256; ++byte) {
                left[place] = static_cast<char>(byte);
                for (const int other : {byte, byte ^ 0x20, byte ^ 0x80, byte ^ 0x01, (byte + 1) & 0xFF}) {
                    right[place] = static_cast<char>(other);
                    ASSERT_EQ(sameName(left, right), sameByBytes(left, right)) << size << " " << byte << " " << other;
                }
            }
        }
    }
}

TEST(Names, NamesOfDifferentLengthAreDifferent) {
    for (std::size_t size = 0; size < 40; ++size) {
        const std::string name(size, 'n');
        EXPECT_TRUE(sameName(name, std::string(size, 'N')));
        EXPECT_FALSE(sameName(name, name + "n"));
        EXPECT_FALSE(sameName(name + "n", name));
        EXPECT_FALSE(sameName(name, name + '\0'));
    }
}

TEST(Names, EveryByteCounts) {
    for (std::size_t size = 1; size < 40; ++size) {
        const std::string name(size, 'n');
        for (std::size_t place = 0; place < size; ++place) {
            std::string other = name;
            other[place] = 'm';
            ASSERT_FALSE(sameName(name, other)) << size << " " << place;
        }
    }
}

TEST(Names, ATextBeginsWithTheNameItBeginsWith) {
    EXPECT_TRUE(beginsWithName("Driver = x", "DRIVER"));
    EXPECT_TRUE(beginsWithName("driver", "Driver"));
    EXPECT_FALSE(beginsWithName("drive", "Driver"));
    EXPECT_TRUE(beginsWithName("odbc data sources=", "ODBC Data Sources"));
    EXPECT_FALSE(beginsWithName("odbc data Source_=", "ODBC Data Sources"));
    EXPECT_TRUE(beginsWithName("", ""));
}

}  // namespace
}  // namespace jx::rules::test
