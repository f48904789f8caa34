// Look-ups in one text, the first time and again.
#include "jxutl/ini/ini_index.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

#include "random_text.h"
#include "rules/names.h"
#include "text_model.h"

namespace jx::ini::test {
namespace {

using namespace std::string_view_literals;

// The value, looked up twice: the first time it is found without the tables, the second time with them.
std::string valueOf(std::string_view text, std::string_view section, std::string_view key) {
    IniIndex index;
    index.reset(text);
    const std::string first(index.value(section, key).value_or("none"));
    EXPECT_EQ(index.value(section, key).value_or("none"), first);
    EXPECT_EQ(index.value(section, key).value_or("none"), first);
    return first;
}

// A list with | for each NUL.
std::string shown(std::optional<std::string_view> list) {
    if (!list)
        return "none";
    std::string names(*list);
    for (char& character : names)
        if (character == '\0')
            character = '|';
    return names;
}

std::string keysOf(std::string_view text, std::string_view section) {
    IniIndex index;
    index.reset(text);
    const std::string first = shown(index.keys(section));
    EXPECT_EQ(shown(index.keys(section)), first);
    return first;
}

std::string sectionsOf(std::string_view text) {
    IniIndex index;
    index.reset(text);
    return shown(index.sections());
}

TEST(IniIndex, AValueEndsAtItsFirstNul) {
    const std::string_view text = "[A]\nk=one\0two\0\nl=\0\nm=three\n"sv;
    EXPECT_EQ(valueOf(text, "A", "k"), "one");
    EXPECT_EQ(valueOf(text, "A", "l"), "");
    EXPECT_EQ(valueOf(text, "A", "m"), "three");
}

TEST(IniIndex, FindsAValueByNamesWithoutRegardToCase) {
    const std::string_view text = "[Sales]\nDriver = /x\n[Other]\ndriver=/y\n";
    EXPECT_EQ(valueOf(text, "SALES", "driver"), "/x");
    EXPECT_EQ(valueOf(text, "other", "DRIVER"), "/y");
    EXPECT_EQ(valueOf(text, "Sales", "Drive"), "none");
    EXPECT_EQ(valueOf(text, "Sale", "Driver"), "none");
}

TEST(IniIndex, TheFirstSectionThatHoldsTheKeyWins) {
    const std::string_view text = "[A]\nl=1\n[B]\nk=2\n[a]\nk=3\nl=4\n[A]\nk=5\nm=6\n";
    EXPECT_EQ(valueOf(text, "A", "k"), "3");
    EXPECT_EQ(valueOf(text, "A", "l"), "1");
    EXPECT_EQ(valueOf(text, "A", "m"), "6");
    EXPECT_EQ(keysOf(text, "A"), "l|k|m|");
    EXPECT_EQ(sectionsOf(text), "A|B|");
}

TEST(IniIndex, TheFirstOfTwoKeysWinsAndListsNameItOnce) {
    EXPECT_EQ(valueOf("[A]\nK=1\nk=2\n", "A", "k"), "1");
    EXPECT_EQ(keysOf("[A]\nK=1\nl\nk=2\n", "A"), "K|l|");
}

TEST(IniIndex, AnEmptySectionIsNotAnAbsentOne) {
    EXPECT_EQ(keysOf("[A]\n; c\n\n[B]\n", "A"), "");
    EXPECT_EQ(keysOf("[A]\n", "B"), "none");
    EXPECT_EQ(keysOf("", "A"), "none");
    EXPECT_EQ(sectionsOf(""), "");
    EXPECT_EQ(sectionsOf("k=1\n; c\n"), "");
}

TEST(IniIndex, AKeyWithoutEqualsIsListedAndItsValueIsEmpty) {
    EXPECT_EQ(valueOf("[A]\nk\n", "A", "k"), "");
    EXPECT_EQ(valueOf("[A]\nk", "A", "k"), "");
    EXPECT_EQ(keysOf("[A]\nk\nl=\n", "A"), "k|l|");
}

TEST(IniIndex, KeysBeforeTheFirstHeaderBelongToNoSection) {
    EXPECT_EQ(valueOf("k=1\n[A]\nk=2\n", "A", "k"), "2");
    EXPECT_EQ(valueOf("k=1\n", "", "k"), "none");
}

TEST(IniIndex, NamesThatCannotBeAskedForAreNotListed) {
    const std::string_view text = "[]\nk=1\n[A\0B]\nl=2\n[C]\nm\0n=3\n=4\no=5\n"sv;
    EXPECT_EQ(sectionsOf(text), "C|");
    EXPECT_EQ(keysOf(text, "C"), "o|");
    EXPECT_EQ(valueOf(text, "", "k"), "none");
    EXPECT_EQ(valueOf(text, "A\0B"sv, "l"), "none");
    EXPECT_EQ(valueOf(text, "C", "m\0n"sv), "none");
    EXPECT_EQ(valueOf(text, "C", ""), "none");
    EXPECT_EQ(valueOf(text, "C", "m"), "none");
}

TEST(IniIndex, CommentsAndUnclosedHeadersHoldNothing) {
    const std::string_view text = "[A]\n;k=1\n #k=2\n[k=3\nk=4\n[B\nl=5\n";
    EXPECT_EQ(valueOf(text, "A", "k"), "4");
    EXPECT_EQ(valueOf(text, "A", ";k"), "none");
    EXPECT_EQ(valueOf(text, "A", "[k"), "none");
    EXPECT_EQ(valueOf(text, "A", "l"), "5");
    EXPECT_EQ(keysOf(text, "A"), "k|l|");
}

TEST(IniIndex, ValuesOfAnyLengthComeWhole) {
    for (const std::size_t size : {0U, 1U, 32767U, 32768U, 65535U, 70000U}) {
        const std::string value(size, 'v');
        EXPECT_EQ(valueOf("[A]\nk=" + value + "\nl=1\n", "A", "k"), value);
    }
}

TEST(IniIndex, ANewTextReplacesTheOldOne) {
    IniIndex index;
    index.reset("[A]\nk=1\n");
    EXPECT_EQ(index.value("A", "k").value_or("none"), "1");
    EXPECT_EQ(shown(index.keys("A")), "k|");
    EXPECT_EQ(shown(index.sections()), "A|");
    index.reset("[B]\nl=2\n");
    EXPECT_EQ(shown(index.sections()), "B|");
    EXPECT_EQ(shown(index.keys("A")), "none");
    EXPECT_EQ(index.value("A", "k").value_or("none"), "none");
    EXPECT_EQ(index.value("B", "l").value_or("none"), "2");
    index.reset("");
    EXPECT_EQ(index.value("B", "l").value_or("none"), "none");
}

std::string manyDataSources(int count) {
    std::string text = "[ODBC Data Sources]\n";
    for (int i = 0; i < count; ++i)
        text += "Data Source " + std::to_string(i) + "=Sample Driver\n";
    for (int i = 0; i < count; ++i)
        text += "\n[Data Source " + std::to_string(i) + "]\nDriver=/opt/sample/lib/libsample.so\nDescription=Number " +
                std::to_string(i) + "\nServer=db.example.com\nPort=5432\nDatabase=branch" + std::to_string(i) +
                "\nUserName=report\nReadOnly=No\n";
    return text;
}

TEST(IniIndex, AnswersEveryKeyOfALargeText) {
    constexpr int kCount = 2000;
    const std::string text = manyDataSources(kCount);
    IniIndex index;
    index.reset(text);
    std::string names;
    for (int i = 0; i < kCount; ++i) {
        const std::string name = "Data Source " + std::to_string(i);
        ASSERT_EQ(index.value(name, "Database").value_or("none"), "branch" + std::to_string(i));
        ASSERT_EQ(index.value("odbc data sources", name).value_or("none"), "Sample Driver");
        ASSERT_FALSE(index.value(name, "Data").has_value());
        names += name + '\0';
    }
    EXPECT_EQ(index.keys("ODBC Data Sources").value_or(""), names);
    EXPECT_EQ(index.sections(), std::string("ODBC Data Sources") + '\0' + names);
}

TEST(IniIndex, TakesLessThanThreeTimesALargeText) {
    constexpr int kCount = 10000;
    const std::string text = manyDataSources(kCount);
    IniIndex index;
    index.reset(text);
    EXPECT_EQ(index.memory(), 0U);
    EXPECT_TRUE(index.value("Data Source 9999", "Database").has_value());
    EXPECT_EQ(index.memory(), 0U) << "one look-up prepares nothing";
    index.sections();
    for (int i = 0; i < kCount; ++i)
        ASSERT_TRUE(index.keys("Data Source " + std::to_string(i)).has_value());
    index.keys("ODBC Data Sources");
    EXPECT_LT(index.memory(), 3 * text.size());
}

// A list or value that was read once is kept: reading it again makes nothing.
TEST(IniIndex, TheSecondAnswerCostsNoMemory) {
    IniIndex index;
    index.reset("[A]\nk=1\n[B]\n");
    const char* keys = index.keys("A")->data();
    index.value("A", "k");
    const std::size_t memory = index.memory();
    EXPECT_EQ(index.keys("a")->data(), keys);
    EXPECT_EQ(index.value("A", "k")->data(), index.value("A", "K")->data());
    EXPECT_EQ(index.memory(), memory);
}

TEST(IniIndex, AnswersLikeASearchThroughAllLines) {
    Random random(8);
    for (int round = 0; round < 6000; ++round) {
        const std::string text = random.oneIn(3) ? randomBytes(random, random.below(200)) : randomFile(random);
        SCOPED_TRACE("round " + std::to_string(round) + "\n" + text);
        const TextModel model(text);
        IniIndex index;
        index.reset(text);
        ASSERT_TRUE(random.oneIn(3) || index.sections() == model.sections());
        for (int question = 0; question < 12; ++question) {
            const std::string_view section = rules::trimmed(randomSection(random));
            const std::string_view key = rules::trimmed(randomKey(random));
            if (random.oneIn(4)) {
                ASSERT_EQ(index.keys(section), model.keys(section));
            } else {
                const std::optional<std::string> expected = model.value(section, key);
                ASSERT_EQ(index.value(section, key), expected) << section << "/" << key;
            }
        }
    }
}

}  // namespace
}  // namespace jx::ini::test
