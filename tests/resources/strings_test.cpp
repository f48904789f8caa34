// The library's texts, as programs load them.
#include "resources/strings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <set>
#include <string>

#include <odbcinst.h>

namespace {

constexpr unsigned short kIds[] = {50, 51, 52, 53, 54, 55, 56, 57, 58, 167, 168, 169, 170, 171};

// The text; empty when there is none.
std::string text(unsigned short id) {
    unsigned char buffer[1024] = "";
    const int length = JXW_LoadString(BJXHINST, id, buffer, sizeof buffer);
    EXPECT_EQ(static_cast<std::size_t>(length), std::strlen(reinterpret_cast<char*>(buffer)));
    return reinterpret_cast<char*>(buffer);
}

int count(const std::string& whole, const std::string& part) {
    int found = 0;
    for (std::size_t at = whole.find(part); at != std::string::npos; at = whole.find(part, at + part.size()))
        ++found;
    return found;
}

TEST(Strings, AreThereOnceTheLibraryIsLoaded) {
    for (const unsigned short id : kIds)
        EXPECT_NE(text(id), "") << id;
}

TEST(Strings, BelongToTheModuleOfTheSameNameThatProgramsSpellOut) {
    unsigned char buffer[256] = "";
    EXPECT_GT(JXW_LoadString("odbcinst", 58, buffer, 0), 0);
    EXPECT_EQ(reinterpret_cast<char*>(buffer), text(58));
}

TEST(Strings, OtherNumbersHaveNoText) {
    int known = 0;
    for (unsigned int id = 0; id <= 65535; ++id)
        known += text(static_cast<unsigned short>(id)).empty() ? 0 : 1;
    EXPECT_EQ(known, static_cast<int>(std::size(kIds)));
}

TEST(Strings, NoNumberIsGivenTwice) {
    std::set<unsigned short> seen;
    for (const JxwString* next = jx::kTexts; next->text != nullptr; ++next)
        EXPECT_TRUE(seen.insert(next->id).second) << next->id;
    EXPECT_EQ(seen, std::set<unsigned short>(std::begin(kIds), std::end(kIds)));
}

TEST(Strings, FitTheSmallestBufferTheyAreLoadedInto) {
    for (const unsigned short id : kIds)
        EXPECT_LE(text(id).size(), 254U) << id;
}

TEST(Strings, ARemovalNamesTheDataSourceOnce) {
    const std::string pattern = text(53);
    EXPECT_EQ(count(pattern, "%s"), 1);
    EXPECT_EQ(count(pattern, "%"), 1);
    // The longest name an installer object holds; the message is built in a buffer of 255 bytes.
    EXPECT_LE(pattern.size() - 2 + 49, 254U);
}

TEST(Strings, TemplatesHaveOneParameter) {
    constexpr unsigned short kTemplates[] = {56, 57, 167, 170};
    for (const unsigned short id : kTemplates) {
        EXPECT_EQ(count(text(id), "%1"), 1) << id;
        EXPECT_EQ(count(text(id), "%"), 1) << id;
    }
}

TEST(Strings, OtherTextsHaveNoPercentSign) {
    constexpr unsigned short kPlain[] = {50, 51, 52, 54, 55, 58, 168, 169, 171};
    for (const unsigned short id : kPlain)
        EXPECT_EQ(count(text(id), "%"), 0) << id;
}

TEST(Strings, TheUserKnowsBeforeAnsweringThatLibraryFilesAreDeleted) {
    EXPECT_NE(text(170).find("library files are deleted"), std::string::npos);
    EXPECT_NE(text(170).find("data sources"), std::string::npos);
}

TEST(Strings, AreSentencesAndTitles) {
    const std::set<unsigned short> titles{58, 168, 169};
    for (const unsigned short id : kIds) {
        const std::string shown = text(id);
        SCOPED_TRACE(shown);
        EXPECT_EQ(titles.contains(id), shown.back() != '.' && shown.back() != '?');
        EXPECT_TRUE(std::all_of(shown.begin(), shown.end(),
                                [](char byte) { return byte == '\n' || (byte >= ' ' && byte <= '~'); }));
        if (titles.contains(id)) {
            EXPECT_EQ(shown.find('\n'), std::string::npos);
        }
    }
}

}  // namespace
