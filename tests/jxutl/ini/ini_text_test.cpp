// Edits of a text: the whole text before, the whole text after.
#include "jxutl/ini/ini_text.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "jxutl/ini/ini_index.h"
#include "random_text.h"
#include "rules/names.h"
#include "text_model.h"

namespace jx::ini {

void PrintTo(Edit edit, std::ostream* out) {
    *out << (edit == Edit::changed ? "changed" : edit == Edit::refused ? "refused" : "unchanged");
}

namespace test {
namespace {

struct Row {
    const char* name;
    const char* before;
    const char* section;
    const char* key;
    const char* value;
    const char* after;  // null: unchanged
};

void check(const Row& row) {
    SCOPED_TRACE(row.name);
    IniText text(row.before);
    EXPECT_EQ(text.apply(row.section, row.key, row.value), row.after == nullptr ? Edit::unchanged : Edit::changed);
    EXPECT_EQ(text.bytes(), row.after == nullptr ? row.before : row.after);
}

TEST(IniText, AChangedValueStaysInItsPlace) {
    const Row rows[] = {
        {"plain", "[A]\nk=1\nl=2\n", "A", "k", "9", "[A]\nk=9\nl=2\n"},
        {"blanks and spelling stay", "[A]\n  K \t=  1  \n", "a", "k", "9", "[A]\n  K \t=  9  \n"},
        {"CRLF stays", "[A]\r\nk=1\r\n", "A", "k", "22", "[A]\r\nk=22\r\n"},
        {"no final line end stays", "[A]\nk=1", "A", "k", "22", "[A]\nk=22"},
        {"a CR at the end stays", "[A]\nk=1\r", "A", "k", "22", "[A]\nk=22\r"},
        {"to nothing", "[A]\nk = 1\n", "A", "k", "", "[A]\nk = \n"},
        {"from nothing", "[A]\nk = \n", "A", "k", "9", "[A]\nk = 9\n"},
        {"from nothing behind blanks", "[A]\nk =   \r\n", "A", "k", "9", "[A]\nk =   9\r\n"},
        {"a value with = and ;", "[A]\nk=1 ; 2\n", "A", "k", "a=b ; c", "[A]\nk=a=b ; c\n"},
        {"the first of two keys", "[A]\nk=1\nk=2\n", "A", "k", "9", "[A]\nk=9\nk=2\n"},
        {"the first section that holds it", "[A]\n[B]\n[a]\nk=1\n[A]\nk=2\n", "A", "k", "9",
         "[A]\n[B]\n[a]\nk=9\n[A]\nk=2\n"},
        {"behind a header with a comment", "[A] ; mine [x]\nk=1\n", "A", "k", "9", "[A] ; mine [x]\nk=9\n"},
        {"with a CR in it", "[A]\nk=a\rb\n", "A", "k", "9", "[A]\nk=9\n"},
        {"another case of the value", "[A]\nk=a\n", "A", "k", "A", "[A]\nk=A\n"},
    };
    for (const Row& row : rows)
        check(row);
}

TEST(IniText, AKeyThatStandsWithoutEqualsGetsOne) {
    const Row rows[] = {
        {"plain", "[A]\nk\n", "A", "k", "9", "[A]\nk=9\n"},
        {"blanks around", "[A]\n k  \r\n", "A", "k", "9", "[A]\n k=9  \r\n"},
        {"at the end", "[A]\nk", "A", "k", "9", "[A]\nk=9"},
        {"nothing to store: it reads as nothing already", "[A]\nk\n", "A", "k", "", nullptr},
    };
    for (const Row& row : rows)
        check(row);
}

TEST(IniText, ANewKeyFollowsTheLastKeyOfItsSection) {
    const Row rows[] = {
        {"last of the file", "[A]\nk=1\n", "A", "l", "2", "[A]\nk=1\nl=2\n"},
        {"before blank lines and comments", "[A]\nk=1\n\n; c\n[B]\n", "A", "l", "2", "[A]\nk=1\nl=2\n\n; c\n[B]\n"},
        {"behind a comment between keys", "[A]\nk=1\n; c\nm=3\n\n", "A", "l", "2", "[A]\nk=1\n; c\nm=3\nl=2\n\n"},
        {"behind a key without =", "[A]\nk\n\n[B]\n", "A", "l", "2", "[A]\nk\nl=2\n\n[B]\n"},
        {"behind the header when there is none", "[A]\n\n; c\n[B]\n", "A", "l", "2", "[A]\nl=2\n\n; c\n[B]\n"},
        {"not behind a line that holds no key", "[A]\nk\n=x\n[open\n", "A", "l", "2", "[A]\nk\nl=2\n=x\n[open\n"},
        {"CRLF like the line above", "; c\n[A]\r\nk=1\r\n[B]\n", "A", "l", "2", "; c\n[A]\r\nk=1\r\nl=2\r\n[B]\n"},
        {"LF like the line above", "[A]\r\nk=1\n[B]\r\n", "A", "l", "2", "[A]\r\nk=1\nl=2\n[B]\r\n"},
        {"no final line end", "[A]\nk=1", "A", "l", "2", "[A]\nk=1\nl=2\n"},
        {"no final line end in a CRLF file", "[A]\r\nk=1", "A", "l", "2", "[A]\r\nk=1\r\nl=2\r\n"},
        {"half a line end", "[A]\r\nk=1\r", "A", "l", "2", "[A]\r\nk=1\r\nl=2\r\n"},
        {"a header without line end", "[A]", "A", "l", "2", "[A]\nl=2\n"},
        {"a header with half a line end", "[A]\r", "A", "l", "2", "[A]\r\nl=2\r\n"},
        {"the first section of the name", "[A]\nk=1\n[B]\n[A]\nm=3\n", "a", "l", "2", "[A]\nk=1\nl=2\n[B]\n[A]\nm=3\n"},
        {"an empty value", "[A]\n", "A", "l", "", "[A]\nl=\n"},
        {"arguments are trimmed", "[A]\n", "\t A ", " l m ", "  2\t", "[A]\nl m=2\n"},
    };
    for (const Row& row : rows)
        check(row);
}

TEST(IniText, ANewSectionFollowsOneBlankLineAtTheEnd) {
    const Row rows[] = {
        {"an empty file", "", "A", "k", "1", "[A]\nk=1\n"},
        {"plain", "[B]\nl=2\n", "A", "k", "1", "[B]\nl=2\n\n[A]\nk=1\n"},
        {"a blank line is there", "[B]\nl=2\n\n", "A", "k", "1", "[B]\nl=2\n\n[A]\nk=1\n"},
        {"two are there", "[B]\n\n \t\n", "A", "k", "1", "[B]\n\n \t\n[A]\nk=1\n"},
        {"a blank line without line end", "[B]\n\t", "A", "k", "1", "[B]\n\t\n[A]\nk=1\n"},
        {"no final line end", "[B]\nl=2", "A", "k", "1", "[B]\nl=2\n\n[A]\nk=1\n"},
        {"CRLF", "[B]\r\nl=2\r\n", "A", "k", "1", "[B]\r\nl=2\r\n\r\n[A]\r\nk=1\r\n"},
        {"CRLF, no final line end", "[B]\r\nl=2", "A", "k", "1", "[B]\r\nl=2\r\n\r\n[A]\r\nk=1\r\n"},
        {"half a line end", "[B]\r", "A", "k", "1", "[B]\r\n\r\n[A]\r\nk=1\r\n"},
        {"only a byte order mark", "\xEF\xBB\xBF", "A", "k", "1", "\xEF\xBB\xBF[A]\nk=1\n"},
        {"a byte order mark and a blank line", "\xEF\xBB\xBF\n", "A", "k", "1", "\xEF\xBB\xBF\n[A]\nk=1\n"},
        {"a byte order mark and a comment", "\xEF\xBB\xBF; c", "A", "k", "1", "\xEF\xBB\xBF; c\n\n[A]\nk=1\n"},
        {"only blank lines", "\n\n", "A", "k", "1", "\n\n[A]\nk=1\n"},
        {"only a comment", "; c\n", "A", "k", "1", "; c\n\n[A]\nk=1\n"},
        {"keys of no section", "k=2\n", "A", "k", "1", "k=2\n\n[A]\nk=1\n"},
        {"a header without ] is not a header", "[A\n", "A", "k", "1", "[A\n\n[A]\nk=1\n"},
        {"a commented header is not a header", ";[A]\n", "A", "k", "1", ";[A]\n\n[A]\nk=1\n"},
        {"brackets in the name", "", "a]b", "k", "1", "[a]b]\nk=1\n"},
        {"a semicolon in the name", "", ";a;b", "k", "1", "[;a;b]\nk=1\n"},
    };
    for (const Row& row : rows)
        check(row);
}

TEST(IniText, DeletingAKeyRemovesAllItsLines) {
    const Row rows[] = {
        {"plain", "[A]\nk=1\nl=2\n", "A", "k", nullptr, "[A]\nl=2\n"},
        {"the last line without line end", "[A]\nl=2\nk=1", "A", "k", nullptr, "[A]\nl=2\n"},
        {"twice in a section", "[A]\nk=1\nl=2\n K = 3\n", "a", "k", nullptr, "[A]\nl=2\n"},
        {"in every section of the name", "[A]\nk=1\n[B]\nk=2\n[a]\nk\n", "A", "k", nullptr, "[A]\n[B]\nk=2\n[a]\n"},
        {"comments stay", "[A]\n; about k\nk=1 ; c\n; k=1\n", "A", "k", nullptr, "[A]\n; about k\n; k=1\n"},
        {"CRLF", "[A]\r\nk=1\r\nl=2\r\n", "A", "k", nullptr, "[A]\r\nl=2\r\n"},
        {"absent key", "[A]\nk=1\n", "A", "l", nullptr, nullptr},
        {"absent section", "[A]\nk=1\n", "B", "k", nullptr, nullptr},
        {"empty file", "", "A", "k", nullptr, nullptr},
        {"a key of no section", "k=1\n[A]\n", "A", "k", nullptr, nullptr},
    };
    for (const Row& row : rows)
        check(row);
}

TEST(IniText, DeletingASectionSparesTheCommentsAboveTheNextHeader) {
    const Row rows[] = {
        {"plain", "[A]\nk=1\n[B]\nl=2\n", "A", nullptr, nullptr, "[B]\nl=2\n"},
        {"the last one", "[B]\nl=2\n\n[A]\nk=1\n\n; c\n", "A", nullptr, nullptr, "[B]\nl=2\n\n"},
        {"a comment block", "[A]\nk=1\n; mine\n\n; one\n # two\n[B]\n", "A", nullptr, nullptr, "; one\n # two\n[B]\n"},
        {"a blank line parts it from the header", "[A]\nk=1\n; mine\n\n[B]\n", "A", nullptr, nullptr, "[B]\n"},
        {"nothing but a comment block", "[A]\n; theirs\n[B]\n", "A", nullptr, nullptr, "; theirs\n[B]\n"},
        {"comments above its own header stay", "; mine\n[A]\nk=1\n[B]\n", "A", nullptr, nullptr, "; mine\n[B]\n"},
        {"every section of the name", "[A]\nk=1\n; b\n[B]\nl=2\n[a]\nm=3\n; c\n[C]\n", "A", nullptr, nullptr,
         "; b\n[B]\nl=2\n; c\n[C]\n"},
        {"one after another", "[A]\nk=1\n[a]\nl=2\n[B]\n", "A", nullptr, nullptr, "[B]\n"},
        {"a comment between two of them", "[A]\nk=1\n; c\n[a]\nl=2\n[B]\n", "A", nullptr, nullptr, "; c\n[B]\n"},
        {"the value plays no part", "[A]\nk=1\n", "A", nullptr, "v", ""},
        {"CRLF", "[A]\r\nk=1\r\n; c\r\n[B]\r\n", "A", nullptr, nullptr, "; c\r\n[B]\r\n"},
        {"no final line end", "[B]\n[A]\nk=1", "A", nullptr, nullptr, "[B]\n"},
        {"a byte order mark stays", "\xEF\xBB\xBF[A]\nk=1\n", "A", nullptr, nullptr, "\xEF\xBB\xBF"},
        {"an unclosed header ends nothing", "[A]\nk=1\n[B\nl=2\n[C]\n", "A", nullptr, nullptr, "[C]\n"},
        {"absent", "[B]\n", "A", nullptr, nullptr, nullptr},
        {"empty file", "", "A", nullptr, nullptr, nullptr},
    };
    for (const Row& row : rows)
        check(row);
}

TEST(IniText, WhatIsStoredAlreadyLeavesTheTextAlone) {
    const Row rows[] = {
        {"plain", "[A]\nk=1\n", "A", "k", "1", nullptr},
        {"blanks are ignored", "[A]\n k =  1 \r\n", " a ", "K", " 1 ", nullptr},
        {"an empty value", "[A]\nk=\n", "A", "k", "", nullptr},
        {"the first of two", "[A]\nk=1\nk=2\n", "A", "k", "1", nullptr},
    };
    for (const Row& row : rows)
        check(row);
}

TEST(IniText, AnEmptyKeyStoresNothing) {
    const Row rows[] = {
        {"stores", "[A]\nk=1\n", "A", "", "", nullptr},
        {"stores a value", "[A]\nk=1\n", "A", " \t", "v", nullptr},
        {"deletes", "[A]\nk=1\n=x\n", "A", "", nullptr, nullptr},
        {"in no file", "", "Default", "", "", nullptr},
    };
    for (const Row& row : rows)
        check(row);
}

TEST(IniText, RefusesWhatAReadCouldNotGiveBack) {
    const struct {
        const char* section;
        const char* key;
        const char* value;
    } rows[] = {
        {nullptr, "k", "v"},     {"", "k", "v"},     {" \t", "k", "v"},    {nullptr, nullptr, nullptr},
        {"", nullptr, nullptr},  {"A\n", "k", "v"},  {"A\rB", "k", "v"},   {"A\nB", nullptr, nullptr},
        {"A", "k\n", "v"},       {"A", "k\rl", "v"}, {"A", "\n", nullptr}, {"A", "k", "v\n"},
        {"A", "k", "\r"},        {"A", "", "a\nb"},  {"A", "k=", "v"},     {"A", "=", "v"},
        {"A", "a=b", nullptr},   {"A", "[k", "v"},   {"A", ";k", "v"},     {"A", " #k", "v"},
        {"A", "[k]", nullptr},   {"A ;B", "k", "v"}, {"A\t#B", "k", "v"},  {"A ;", nullptr, nullptr},
        {"A ; B", "k", nullptr},
    };
    const std::string before = "[A]\nk=1\n[A ;B]\n";
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.section == nullptr ? "(null)" : row.section) + "/" +
                     (row.key == nullptr ? "(null)" : row.key) + "/" + (row.value == nullptr ? "(null)" : row.value));
        IniText text(before);
        EXPECT_EQ(text.apply(row.section, row.key, row.value), Edit::refused);
        EXPECT_EQ(text.bytes(), before);
    }
}

TEST(IniText, AcceptsOddNamesThatAReadGivesBack) {
    const struct {
        const char* section;
        const char* key;
        const char* value;
    } rows[] = {
        {"a]b", "k", "v"},     {"]", "k", "v"},
        {"[", "k", "v"},       {"a;b", "k", "v"},
        {";", "#;[", nullptr}, {"A", "a[b]", "[v]"},
        {"A", "a;b", ";v"},    {"A", "]", "=v="},
        {"A", "\"k\"", "'"},   {"\xFF\x01", "\x7F", "\xC3"},
        {"A", "k", "a\tb  c"}, {"\xEF\xBB\xBF", "\xEF\xBB\xBF", "\xEF\xBB\xBF"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.section);
        const char* key = row.value == nullptr ? "k" : row.key;
        const char* value = row.value == nullptr ? "v" : row.value;
        IniText text("");
        ASSERT_EQ(text.apply(row.section, key, value), Edit::changed);
        IniIndex index;
        index.reset(text.bytes());
        EXPECT_EQ(index.value(row.section, key).value_or("none"), value);
    }
}

TEST(IniText, NulsAndStrayBytesOfOtherLinesStay) {
    const std::string before("[A]\nk\0l=1\n\0\n\x80=2\n", 16);
    IniText text(before);
    EXPECT_EQ(text.apply("A", "k", "9"), Edit::changed);
    EXPECT_EQ(text.bytes(), before + "k=9\n");
}

TEST(IniText, LongNamesAndValuesAreStoredWhole) {
    for (const std::size_t size : {1U, 255U, 1024U, 32767U, 32768U, 65535U, 70000U}) {
        const std::string name(size, 'n');
        IniText text("[B]\n");
        EXPECT_EQ(text.apply(name.c_str(), name.c_str(), name.c_str()), Edit::changed);
        EXPECT_EQ(text.bytes(), "[B]\n\n[" + name + "]\n" + name + "=" + name + "\n");
        EXPECT_EQ(text.apply(name.c_str(), name.c_str(), nullptr), Edit::changed);
        EXPECT_EQ(text.bytes(), "[B]\n\n[" + name + "]\n");
    }
}

TEST(IniText, ATextIsBuiltUpAndTakenDownAgain) {
    IniText text("");
    EXPECT_EQ(text.apply("ODBC Data Sources", "Sales", "Sample Driver"), Edit::changed);
    EXPECT_EQ(text.apply("Sales", "Driver", "/opt/libsample.so"), Edit::changed);
    EXPECT_EQ(text.apply("Sales", "Database", "sales"), Edit::changed);
    EXPECT_EQ(text.bytes(),
              "[ODBC Data Sources]\nSales=Sample Driver\n\n[Sales]\nDriver=/opt/libsample.so\nDatabase=sales\n");
    EXPECT_EQ(text.apply("Sales", nullptr, nullptr), Edit::changed);
    EXPECT_EQ(text.apply("ODBC Data Sources", "Sales", nullptr), Edit::changed);
    EXPECT_EQ(text.bytes(), "[ODBC Data Sources]\n\n");
}

// The result of the edit, worked out from the pieces of the text; null for a refused one.
std::string modelOf(std::string_view before, const char* section, const char* key, const char* value) {
    const TextModel model(before);
    const std::string_view sectionName = rules::argument(section);
    const std::string_view keyName = rules::argument(key);
    if (key == nullptr)
        return model.withoutSection(sectionName);
    if (keyName.empty())
        return std::string(before);
    if (value == nullptr)
        return model.withoutKey(sectionName, keyName);
    return model.with(sectionName, keyName, rules::argument(value));
}

TEST(IniText, RandomEditsKeepEveryLineThatIsNotAddressed) {
    Random random(6);
    for (int round = 0; round < 3000; ++round) {
        IniText text(random.oneIn(4) ? randomBytes(random, random.below(200)) : randomFile(random));
        for (int edit = 0; edit < 10; ++edit) {
            const std::string section(randomSection(random));
            const std::string key(randomKey(random));
            const std::string value(randomValue(random));
            const char* keyOrNull = random.oneIn(6) ? nullptr : key.c_str();
            const char* valueOrNull = random.oneIn(4) ? nullptr : value.c_str();
            const std::string before = text.bytes();
            const Edit outcome = text.apply(section.c_str(), keyOrNull, valueOrNull);
            if (outcome == Edit::refused) {
                ASSERT_TRUE(rules::trimmed(section).empty());
                ASSERT_EQ(text.bytes(), before);
                continue;
            }
            const std::string expected = modelOf(before, section.c_str(), keyOrNull, valueOrNull);
            ASSERT_EQ(text.bytes(), expected) << "round " << round << " <" << section << "> <" << key << ">\n"
                                              << before;
            ASSERT_EQ(outcome, expected == before ? Edit::unchanged : Edit::changed);
        }
    }
}

TEST(IniText, AReadAfterASetGivesTheValueAndASecondSetChangesNothing) {
    Random random(7);
    for (int round = 0; round < 10000; ++round) {
        IniText text(random.oneIn(4) ? randomBytes(random, random.below(200)) : randomFile(random));
        const std::string section(randomSection(random));
        const std::string key(randomKey(random));
        const std::string value(randomValue(random));
        if (rules::trimmed(section).empty() || rules::trimmed(key).empty())
            continue;
        const std::string before = text.bytes();
        ASSERT_NE(text.apply(section.c_str(), key.c_str(), value.c_str()), Edit::refused);
        IniIndex index;
        index.reset(text.bytes());
        ASSERT_EQ(index.value(rules::trimmed(section), rules::trimmed(key)).value_or("none"), rules::trimmed(value))
            << before;
        ASSERT_EQ(text.apply(section.c_str(), key.c_str(), value.c_str()), Edit::unchanged) << before;
        ASSERT_EQ(text.apply(section.c_str(), key.c_str(), nullptr), Edit::changed);
        index.reset(text.bytes());
        ASSERT_FALSE(index.value(rules::trimmed(section), rules::trimmed(key)).has_value()) << before;
    }
}

// The same settings one by one and all at once, on files and on texts that are none.
TEST(IniText, ManySettingsLeaveWhatTheyLeaveOneByOne) {
    Random random(8);
    for (int round = 0; round < 10'000; ++round) {
        const std::string before = random.oneIn(4) ? randomBytes(random, random.below(200)) : randomFile(random);
        std::vector<std::string> texts;
        for (std::size_t left = 3 * random.below(8); left > 0; left -= 3)
            for (const std::string_view each : {randomSection(random), randomKey(random), randomValue(random)})
                texts.emplace_back(each);
        std::vector<Setting> settings;
        IniText oneByOne(before);
        bool isRefused = false;
        for (std::size_t i = 0; i < texts.size(); i += 3) {
            settings.push_back({texts[i].c_str(), texts[i + 1].c_str(), texts[i + 2].c_str()});
            const Setting& last = settings.back();
            isRefused = oneByOne.apply(last.section, last.key, last.value) == Edit::refused || isRefused;
        }
        IniText together(before);
        const Edit edit = together.applyAll(settings);
        ASSERT_EQ(edit == Edit::refused, isRefused);
        ASSERT_EQ(together.bytes(), isRefused ? before : oneByOne.bytes()) << before;
        ASSERT_EQ(edit == Edit::unchanged, !isRefused && together.bytes() == before);
    }
}

// Sixty thousand settings one by one would go over gigabytes.
TEST(IniText, ManySettingsGoOverTheTextOnce) {
    std::vector<std::string> names;
    for (int i = 0; i < 20'000; ++i)
        names.push_back("Source " + std::to_string(i));
    std::vector<Setting> settings;
    for (const std::string& name : names) {
        settings.push_back({"ODBC Data Sources", name.c_str(), "D"});
        settings.push_back({name.c_str(), "Driver", "/x.so"});
        settings.push_back({name.c_str(), "Port", "1"});
    }
    IniText text("[ODBC Data Sources]\n");
    EXPECT_EQ(text.applyAll(settings), Edit::changed);
    EXPECT_EQ(text.applyAll(settings), Edit::unchanged);
    EXPECT_TRUE(text.bytes().starts_with("[ODBC Data Sources]\nSource 0=D\nSource 1=D\n"));
    EXPECT_TRUE(text.bytes().ends_with("\n\n[Source 19999]\nDriver=/x.so\nPort=1\n"));
}

}  // namespace
}  // namespace test
}  // namespace jx::ini
