// Text operations: lengths, copies, comparisons, searches, decimal numbers.
#include <jxtext.h>

#include <gtest/gtest.h>

#include <climits>
#include <clocale>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

namespace {

const unsigned char* bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

const char* chars(const unsigned char* text) {
    return reinterpret_cast<const char*>(text);
}

int sign(int value) {
    return (value > 0) - (value < 0);
}

// A buffer filled with a byte that no call writes.
template <std::size_t size>
struct Buffer {
    unsigned char room[size];

    Buffer() { std::memset(room, '#', size); }
    explicit Buffer(const char* text) : Buffer() { std::memcpy(room, text, std::strlen(text) + 1); }
    std::string all() const { return {chars(room), size}; }
    std::string text() const { return chars(room); }
};

using namespace std::string_literals;

TEST(Text, LengthCountsBytesBeforeTheNul) {
    EXPECT_EQ(BUTSTLEN(bytes("")), 0U);
    EXPECT_EQ(BUTSTLEN(bytes("abc\0d")), 3U);
    EXPECT_EQ(BUTSTLEN(bytes("\xc3\xa9")), 2U);
    EXPECT_EQ(BUTSTLEN(bytes(std::string(70000, 'x').c_str())), 70000U);
}

TEST(Text, NullHasLengthZero) {
    EXPECT_EQ(BUTSTLEN(nullptr), 0U);
}

TEST(Text, CopyIncludesTheNulAndNoMore) {
    Buffer<6> buffer;
    EXPECT_EQ(BUTSTCPY(buffer.room, bytes("abc")), buffer.room);
    EXPECT_EQ(buffer.all(), "abc\0##"s);
    BUTSTCPY(buffer.room, bytes(""));
    EXPECT_EQ(buffer.all(), "\0bc\0##"s);
}

TEST(Text, CopyMayOverlap) {
    Buffer<8> buffer("abcdef");
    BUTSTCPY(buffer.room, buffer.room + 2);
    EXPECT_EQ(buffer.text(), "cdef");
    BUTSTCPY(buffer.room + 1, buffer.room);
    EXPECT_EQ(buffer.text(), "ccdef");
}

TEST(Text, AppendContinuesAtTheEnd) {
    Buffer<8> buffer("ab");
    EXPECT_EQ(BUTSTCAT(buffer.room, bytes("cd")), buffer.room);
    EXPECT_EQ(buffer.all(), "abcd\0###"s);
    BUTSTCAT(buffer.room, bytes(""));
    EXPECT_EQ(buffer.text(), "abcd");
}

TEST(Text, AppendTakesAPartOfItself) {
    Buffer<10> buffer("abc");
    BUTSTCAT(buffer.room, buffer.room + 1);
    EXPECT_EQ(buffer.text(), "abcbc");
}

struct Pair {
    const char* left;
    const char* right;
    int exact;
    int withoutCase;
};

TEST(Text, ComparesByBytesAndWithoutAsciiCase) {
    constexpr Pair kPairs[] = {
        {"", "", 0, 0},        {"", "a", -1, -1},        {"a", "", 1, 1},
        {"abc", "abc", 0, 0},  {"abc", "abd", -1, -1},   {"abc", "ab", 1, 1},
        {"ABC", "abc", -1, 0}, {"abc", "ABC", 1, 0},     {"ABC", "abd", -1, -1},
        {"Z", "a", -1, 1},     {"_", "a", -1, -1},       {"_", "A", 1, -1},  // letters count as their lower-case forms
        {"@", "`", -1, -1},    {"[", "{", -1, -1},       {"\x7f", "\x80", -1, -1},
        {"\xff", "a", 1, 1},   {"\xc9", "\xe9", -1, -1},  // a letter in Latin-1, but none in ASCII
    };
    for (const Pair& pair : kPairs) {
        SCOPED_TRACE(std::string(pair.left) + " and " + pair.right);
        EXPECT_EQ(sign(BUTSTCMP(bytes(pair.left), bytes(pair.right))), pair.exact);
        EXPECT_EQ(sign(strCompareCi(bytes(pair.left), bytes(pair.right))), pair.withoutCase);
    }
}

TEST(Text, CaseDoesNotDependOnTheLocale) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* locale : {"C", "tr_TR.ISO8859-9", "de_DE.ISO8859-1", "C.UTF-8"}) {
        std::setlocale(LC_ALL, locale);
        EXPECT_EQ(strCompareCi(bytes("INI"), bytes("ini")), 0) << locale;
        EXPECT_NE(strCompareCi(bytes("\xc4"), bytes("\xe4")), 0) << locale;
    }
    std::setlocale(LC_ALL, before.c_str());
}

TEST(Text, MemoryCopyCountsBytesNotText) {
    Buffer<6> buffer;
    EXPECT_EQ(BUTMEMCP(buffer.room, "a\0b", 3), buffer.room);
    EXPECT_EQ(buffer.all(), "a\0b###"s);
}

TEST(Text, MemoryCopyMayOverlap) {
    Buffer<7> buffer("abcdef");
    BUTMEMCP(buffer.room + 1, buffer.room, 5);
    EXPECT_EQ(buffer.text(), "aabcde");
    BUTMEMCP(buffer.room, buffer.room + 1, 5);
    EXPECT_EQ(buffer.text(), "abcdee");
}

TEST(Text, MemoryCopyOfNothingTouchesNothing) {
    EXPECT_EQ(BUTMEMCP(nullptr, nullptr, 0), nullptr);
}

std::optional<std::ptrdiff_t> offset(const char* text, const unsigned char* place) {
    return place != nullptr ? std::optional(chars(place) - text) : std::nullopt;
}

TEST(Text, FindsTheFirstAndTheLastByte) {
    const char* text = "a=b=c\xff";
    EXPECT_EQ(offset(text, strFind(bytes(text), '=')), 1);
    EXPECT_EQ(offset(text, strFindReverse(bytes(text), '=')), 3);
    EXPECT_EQ(offset(text, strFind(bytes(text), 0xff)), 5);
    EXPECT_EQ(offset(text, strFindReverse(bytes(text), 0xff)), 5);
    EXPECT_EQ(offset(text, strFind(bytes(text), 'x')), std::nullopt);
    EXPECT_EQ(offset(text, strFindReverse(bytes(text), 'x')), std::nullopt);
}

TEST(Text, ASearchForZeroFindsTheNul) {
    constexpr unsigned char kEnd = 0;
    const char* text = "abc";
    EXPECT_EQ(offset(text, strFind(bytes(text), kEnd)), 3);
    EXPECT_EQ(offset(text, strFindReverse(bytes(text), kEnd)), 3);
}

TEST(Text, FindsTheFirstPart) {
    const char* text = "Sample Driver Driver";
    EXPECT_EQ(offset(text, strFind(bytes(text), bytes("Driver"))), 7);
    EXPECT_EQ(offset(text, strFind(bytes(text), bytes(""))), 0);
    EXPECT_EQ(offset(text, strFind(bytes(text), bytes("driver"))), std::nullopt);
    EXPECT_EQ(offset(text, strFind(bytes(text), bytes("Driver Driver "))), std::nullopt);
    const char* empty = "";
    EXPECT_EQ(offset(empty, strFind(bytes(empty), bytes(""))), 0);
    EXPECT_EQ(offset(empty, strFind(bytes(empty), bytes("x"))), std::nullopt);
}

struct Cut {
    const char* source;
    std::size_t size;
    const char* text;
};

TEST(Text, SizedCopyCutsAndAlwaysAddsANul) {
    constexpr Cut kCuts[] = {{"abc", 1, ""},    {"abc", 2, "a"}, {"abc", 3, "ab"}, {"abc", 4, "abc"},
                             {"abc", 5, "abc"}, {"", 1, ""},     {"", 5, ""}};
    for (const Cut& cut : kCuts) {
        SCOPED_TRACE(cut.size);
        Buffer<6> buffer;
        EXPECT_EQ(strCopy(buffer.room, bytes(cut.source), cut.size), std::strlen(cut.text));
        const std::string whole = buffer.all();
        EXPECT_EQ(buffer.text(), cut.text);
        EXPECT_EQ(whole.substr(cut.size), std::string(6 - cut.size, '#'));
    }
}

TEST(Text, SizedCopyIntoNothingWritesNothing) {
    Buffer<2> buffer;
    EXPECT_EQ(strCopy(buffer.room, bytes("abc"), 0), 0U);
    EXPECT_EQ(buffer.all(), "##");
}

TEST(Text, SizedCopyReadsNoFurtherThanTheSize) {
    const unsigned char unended[] = {'a', 'b', 'c'};
    Buffer<3> buffer;
    EXPECT_EQ(strCopy(buffer.room, unended, 3), 2U);
    EXPECT_EQ(buffer.all(), "ab\0"s);
}

struct Number {
    const char* text;
    int whole;
    unsigned long value;
};

TEST(Convert, ReadsTheDigitsAtTheStart) {
    constexpr Number kNumbers[] = {
        {"0", 1, 0},
        {"1", 1, 1},
        {"007", 1, 7},
        {" \t42 \t", 1, 42},
        {"65536", 1, 65536},
        {"4294967294", 1, 4294967294UL},
        {"4294967295", 1, 4294967295UL},
        {"4294967296", 1, 4294967295UL},
        {"99999999999999999999999999999999", 1, 4294967295UL},
        {"", 0, 0},
        {"   ", 0, 0},
        {"yes", 0, 0},
        {"1x", 0, 1},
        {"1 2", 0, 1},
        {"1\n", 0, 1},
        {"-1", 0, 0},
        {"+1", 0, 0},
        {"0x10", 0, 0},
    };
    for (const Number& number : kNumbers) {
        SCOPED_TRACE(number.text);
        unsigned long value = 77;
        EXPECT_EQ(convert(bytes(number.text), &value), number.whole);
        EXPECT_EQ(value, number.value);
    }
}

TEST(Convert, ReadsNothingFromNull) {
    unsigned long value = 77;
    EXPECT_EQ(convert(nullptr, &value), 0);
    EXPECT_EQ(value, 0UL);
    EXPECT_EQ(convert(bytes("1"), nullptr), 0);
}

struct Written {
    unsigned long value;
    unsigned int width;
    const char* text;
};

TEST(Convert, WritesDecimalDigitsUpToAWidth) {
    constexpr Written kWritten[] = {
        {0, 0, "0"},     {0, 1, "0"},         {1, 1, "1"},   {12, 1, "12"},
        {12, 4, "0012"}, {65535, 5, "65535"}, {0, 3, "000"}, {4294967295UL, 0, "4294967295"}};
    for (const Written& written : kWritten) {
        SCOPED_TRACE(written.text);
        Buffer<21> buffer;
        EXPECT_EQ(convert(buffer.room, sizeof buffer.room, written.value, written.width), std::strlen(written.text));
        EXPECT_EQ(buffer.text(), written.text);
    }
}

TEST(Convert, TheLargestNumberFitsTwentyOneBytes) {
    Buffer<21> buffer;
    const std::string digits = std::to_string(ULONG_MAX);
    EXPECT_EQ(convert(buffer.room, sizeof buffer.room, ULONG_MAX, 0), digits.size());
    EXPECT_EQ(buffer.text(), digits);
    EXPECT_EQ(convert(buffer.room, sizeof buffer.room, ULONG_MAX, 20), 20U);
    EXPECT_EQ(buffer.text(), std::string(20 - digits.size(), '0') + digits);
}

TEST(Convert, WritesWholeNumbersOrNothing) {
    Buffer<5> buffer;
    EXPECT_EQ(convert(buffer.room, 4, 1234UL, 0), 0U);
    EXPECT_EQ(convert(buffer.room, 0, 1UL, 0), 0U);
    EXPECT_EQ(convert(buffer.room, 1, 0UL, 0), 0U);
    EXPECT_EQ(convert(buffer.room, 5, 1UL, 5), 0U);
    EXPECT_EQ(convert(buffer.room, 5, 1UL, UINT_MAX), 0U);
    EXPECT_EQ(buffer.all(), "#####");
    EXPECT_EQ(convert(buffer.room, 5, 1234UL, 0), 4U);
    EXPECT_EQ(buffer.all(), "1234\0"s);
}

TEST(Convert, WritesNothingIntoNull) {
    EXPECT_EQ(convert(nullptr, 10, 1UL, 1), 0U);
}

}  // namespace
