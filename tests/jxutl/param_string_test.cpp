// Texts with numbered places.
#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

#include <jxerrors.h>
#include "allocations.h"

namespace {

using jx::test::ShortMemory;

static_assert(!std::is_copy_constructible_v<JxParamString> && !std::is_copy_assignable_v<JxParamString>);

const unsigned char* bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

std::string text(const JxParamString& string) {
    const std::string shown = reinterpret_cast<const char*>(string.text());
    EXPECT_EQ(string.length(), shown.size());
    return shown;
}

std::string filled(const std::string& pattern, const std::vector<const char*>& params) {
    JxParamString string;
    EXPECT_EQ(string.initialize(bytes(pattern.c_str())), 1);
    for (const char* param : params)
        EXPECT_EQ(string.setParam(bytes(param)), 1);
    return text(string);
}

TEST(ParamString, FillsOnePlaceAfterTheOther) {
    struct Row {
        std::string pattern;
        std::vector<const char*> params;
        std::string text;
    };
    const Row rows[] = {
        {"", {}, ""},
        {"", {"x"}, ""},
        {"no place", {"x"}, "no place"},
        {"%1", {}, "%1"},
        {"%1", {"x"}, "x"},
        {"%1", {""}, ""},
        {"%1", {nullptr}, ""},
        {"Cannot load %1.", {"/opt/lib.so"}, "Cannot load /opt/lib.so."},
        {"%1 and %2", {"a"}, "a and %2"},
        {"%1 and %2", {"a", "b"}, "a and b"},
        {"%2 and %1", {"a", "b"}, "b and a"},
        {"%1%1 %1", {"a"}, "aa a"},
        {"%3", {"a", "b"}, "%3"},
        {"%3", {"a", "b", "c"}, "c"},
        {"%1", {"a", "b"}, "a"},
        {"%1 %2", {"%2", "x"}, "%2 x"},  // what is put in is never searched again
        {"%1 %2", {"%1", "%1"}, "%1 %1"},
        {"%%1", {"a"}, "%a"},
        {"%", {"a"}, "%"},
        {"%x %s %", {"a"}, "%x %s %"},
        {"%0", {"a"}, "%0"},
        {"%01", {"a"}, "%01"},
        {"100%", {"a"}, "100%"},
        {"%1st", {"a"}, "ast"},
        {"%10", {"a"}, "%10"},
        {"%10%1", {"a", "", "", "", "", "", "", "", "", "j"}, "ja"},
        {"%999999999", {"a"}, "%999999999"},
        {"%1000000001", {"a"}, "%1000000001"},
        {"%18446744073709551617", {"a"}, "%18446744073709551617"},
        {"%1%", {"a"}, "a%"},
        {"\xff%1\x80", {"\x81"}, "\xff\x81\x80"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pattern);
        EXPECT_EQ(filled(row.pattern, row.params), row.text);
    }
}

TEST(ParamString, LongTextsAreKeptWhole) {
    const std::string path(70000, 'p');
    EXPECT_EQ(filled("<%1>", {path.c_str()}), "<" + path + ">");
}

TEST(ParamString, IsEmptyBeforeAPattern) {
    JxParamString string;
    EXPECT_EQ(text(string), "");
    EXPECT_EQ(string.setParam(bytes("x")), 1);
    EXPECT_EQ(text(string), "");
}

TEST(ParamString, ANewPatternStartsAgain) {
    JxParamString string;
    string.initialize(bytes("%1"));
    string.setParam(bytes("old"));
    EXPECT_EQ(string.initialize(bytes("%1-%2")), 1);
    EXPECT_EQ(text(string), "%1-%2");
    string.setParam(bytes("new"));
    EXPECT_EQ(text(string), "new-%2");
    EXPECT_EQ(string.initialize(nullptr), 1);
    EXPECT_EQ(text(string), "");
}

TEST(ParamString, ItsOwnTextCanBeHandedIn) {
    JxParamString string;
    string.initialize(bytes("<%1>"));
    EXPECT_EQ(string.setParam(string.text()), 1);
    EXPECT_EQ(text(string), "<<%1>>");
    EXPECT_EQ(string.initialize(string.text()), 1);
    EXPECT_EQ(text(string), "<<%1>>");
    EXPECT_EQ(string.setParam(bytes("x")), 1);
    EXPECT_EQ(text(string), "<<x>>");
}

TEST(ParamString, CopiesWhatIsHandedIn) {
    unsigned char pattern[] = "%1%2";
    unsigned char param[] = "a";
    JxParamString string;
    string.initialize(pattern);
    string.setParam(param);
    pattern[0] = 'X';
    param[0] = 'X';
    string.setParam(bytes("b"));
    EXPECT_EQ(text(string), "ab");
}

constexpr char kPattern[] = "a pattern that is too long for a short string: %1 and %2";
constexpr char kUnkept[] = "a parameter that memory is too short for, at first";
constexpr char kParam[] = "a parameter that is too long for a short string";

TEST(ParamString, WithoutMemoryAPatternLeavesAnEmptyText) {
    EXPECT_GE(jx::test::failEachAllocation([](ShortMemory& memory) {
                  memory.begin();
                  JxParamString string;
                  const int result = string.initialize(bytes(kPattern));
                  memory.end();
                  EXPECT_EQ(text(string), result == 1 ? kPattern : "");
              }),
              2);
}

TEST(ParamString, WithoutMemoryAnOldTextIsNotShownForANewPattern) {
    jx::test::failEachAllocation([](ShortMemory& memory) {
        JxParamString string;
        string.initialize(bytes("old"));
        memory.begin();
        const int result = string.initialize(bytes(kPattern));
        const bool failed = memory.end();
        EXPECT_EQ(result, failed ? 0 : 1);
        EXPECT_EQ(text(string), failed ? "" : kPattern);
    });
}

TEST(ParamString, WithoutMemoryAPlaceStaysOpen) {
    EXPECT_GE(jx::test::failEachAllocation([](ShortMemory& memory) {
                  JxParamString string;
                  string.initialize(bytes(kPattern));
                  string.setParam(bytes("first"));
                  const std::string before = text(string);
                  memory.begin();
                  const int result = string.setParam(bytes(kUnkept));
                  const bool failed = memory.end();
                  EXPECT_EQ(result, failed ? 0 : 1);
                  if (failed) {
                      EXPECT_EQ(text(string), before);
                      EXPECT_EQ(string.setParam(bytes(kParam)), 1);
                  }
                  EXPECT_EQ(text(string), std::string("a pattern that is too long for a short string: first and ") +
                                              (failed ? kParam : kUnkept));
              }),
              3);
}

TEST(ParamString, WithoutMemoryFromTheStartAPlaceCanBeFilledLater) {
    jx::test::failEachAllocation([](ShortMemory& memory) {
        memory.begin();
        JxParamString string;
        const int result = string.setParam(bytes(kParam));
        memory.end();
        EXPECT_EQ(text(string), "");
        EXPECT_TRUE(result == 0 || result == 1);
        EXPECT_EQ(string.initialize(bytes("%1")), 1);
        EXPECT_EQ(string.setParam(bytes("x")), 1);
        EXPECT_EQ(text(string), "x");
    });
}

}  // namespace
