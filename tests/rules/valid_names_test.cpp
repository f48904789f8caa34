// Names of data sources, drivers and translators: accepted and refused.
#include "rules/valid_names.h"

#include <gtest/gtest.h>

#include <string>

namespace jx::rules::test {
namespace {

TEST(ValidNames, OfNewDataSourcesFollowTheStandard) {
    for (const std::string name :
         {"S", "Sales 2026", "a-b_c.d/e:f", "100%", "a'b\"c", "Verk\xC3\xA4ufe", "Default", "a b", "a#b"})
        EXPECT_EQ(whyNoName(name, kNewDataSource), nullptr) << name;
    EXPECT_EQ(whyNoName(std::string(32, 'S'), kNewDataSource), nullptr);
    EXPECT_STREQ(whyNoName(std::string(33, 'S'), kNewDataSource), "it has more than 32 bytes");
    for (const char character : std::string("[]{}(),;?*!@\\")) {
        EXPECT_STREQ(whyNoName(std::string("a") + character + "b", kNewDataSource), "it holds one of []{}(),;?*=!@\\")
            << character;
        EXPECT_NE(whyNoName(std::string(1, character), kNewDataSource), nullptr) << character;
    }
    EXPECT_STREQ(whyNoName("", kNewDataSource), "it is empty");
    EXPECT_STREQ(whyNoName("a=b", kNewDataSource), "it holds =");
    EXPECT_STREQ(whyNoName("#a", kNewDataSource), "it begins with #");
    EXPECT_STREQ(whyNoName("a\nb", kNewDataSource), "it holds a line break");
    EXPECT_STREQ(whyNoName(" a", kNewDataSource), "it begins or ends with a blank");
    EXPECT_STREQ(whyNoName("odbc drivers", kNewDataSource), "the section of that name has another use");
}

TEST(ValidNames, OfNewDataSourcesMayCountCharacters) {
    const std::string umlaut = "\xC3\xBC";
    std::string thirtyTwo;
    for (int i = 0; i < 32; ++i)
        thirtyTwo += umlaut;
    for (const std::string& name :
         {std::string("S"), std::string("Sales 2026"), std::string("a#b"), std::string("Default"), std::string(32, 'S'),
          thirtyTwo, std::string("\xF0\x9F\x98\x80")})
        EXPECT_EQ(whyNoCharacterName(name), nullptr) << name;
    EXPECT_STREQ(whyNoCharacterName(std::string(33, 'S')), "it has more than 32 characters");
    EXPECT_STREQ(whyNoCharacterName(thirtyTwo + "x"), "it has more than 32 characters");
    for (const char character : std::string("[]{}(),;?*!@\\"))
        EXPECT_STREQ(whyNoCharacterName(std::string("a") + character + "b"), "it holds one of []{}(),;?*=!@\\")
            << character;
    EXPECT_STREQ(whyNoCharacterName("a=b"), "it holds =");
    EXPECT_STREQ(whyNoCharacterName(""), "it is empty");
    EXPECT_STREQ(whyNoCharacterName("#a"), "it begins with #");
    EXPECT_STREQ(whyNoCharacterName("a "), "it begins or ends with a blank");
    EXPECT_STREQ(whyNoCharacterName("\xFF"), "it is not UTF-8");
    EXPECT_STREQ(whyNoCharacterName("a\x1B[2J"), "it holds one of []{}(),;?*=!@\\");
    for (const char* name : {"a\tb", "a\x7F", "a\xC2\x9B"})
        EXPECT_STREQ(whyNoCharacterName(name), "it holds a control character") << name;
    for (const char* name : {"ODBC", "odbc core", "ODBC Data Sources"})
        EXPECT_STREQ(whyNoCharacterName(name), "the section of that name has another use") << name;
}

TEST(ValidNames, OfNewDriversAreWhatDialogsScriptsAndConnectionStringsCarry) {
    for (const std::string name : {"D", "Example (64 bit)", "Files (*.mdb, *.accdb)", "it's 100% @home!?", "a((b)c)"})
        EXPECT_EQ(whyNoName(name, kNewDriver), nullptr) << name;
    EXPECT_EQ(whyNoName(std::string(49, 'D'), kNewDriver), nullptr);
    EXPECT_STREQ(whyNoName(std::string(50, 'D'), kNewDriver), "it has more than 49 bytes");
    for (const char character : std::string("]{};\"\\"))
        EXPECT_STREQ(whyNoName(std::string("a") + character + "b", kNewDriver), "it holds one of []{};=\"\\")
            << character;
    for (const std::string name : {"A(B", "A)B", ")A(", "A(B))"})
        EXPECT_STREQ(whyNoName(name, kNewDriver), "its parentheses are not in pairs") << name;
    for (const std::string name : {"Default", "default", "ODBC"})
        EXPECT_STREQ(whyNoName(name, kNewDriver), "the section of that name has another use") << name;
}

TEST(ValidNames, OfWhatIsThereAreAllThatAFileHolds) {
    for (const NameRules& rules : {kAnyDataSource, kAnyDriver}) {
        for (const std::string& name : {std::string(500, 'x'), std::string("A(B"), std::string("a;b,{c}")})
            EXPECT_EQ(whyNoName(name, rules), nullptr) << name;
        for (const std::string name : {"", "a=b", "ODBC", "[a", "a ;b"})
            EXPECT_NE(whyNoName(name, rules), nullptr) << name;
    }
    EXPECT_EQ(whyNoName("Default", kAnyDataSource), nullptr);
    EXPECT_NE(whyNoName("Default", kAnyDriver), nullptr);
}

}  // namespace
}  // namespace jx::rules::test
