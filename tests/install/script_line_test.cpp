// The line that describes one file in an installation script.
#include "install/script_line.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <string>

#include "install/owned_text.h"
#include "record_text.h"

namespace {

using namespace jx::install;
using jx::test::quoted;
using jx::test::scriptLine;
using Outcome = LineResult::Outcome;

// An entry that releases its texts.
struct Entry : InfEntry {
    Entry() : InfEntry{} {}
    ~Entry() {
        for (unsigned char* text : {key, fileName, text8, text14})
            ramFree(text);
    }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;
};

// A line of 20 commas with text in one field.
std::string lineWith(unsigned field, const std::string& text) {
    return std::string(field, ',') + text + std::string(20 - field, ',');
}

// Reads from a heap block of exactly the line's size, so that a read behind it shows under the sanitizer.
LineResult read(std::string_view line, InfEntry& entry) {
    const std::unique_ptr<char[]> bytes(new char[line.size()]);
    line.copy(bytes.get(), line.size());
    return readLine({bytes.get(), line.size()}, entry);
}

TEST(ScriptLine, FillsEveryFieldThatIsRead) {
    Entry entry;
    EXPECT_EQ(
        read("7, libdrv.so,a,b,c, 1995-03-15,d,e, NEWER,f,g,h,i,j, shared, 48211,k,l,m, 02.50.00.1234,n,o,p", entry)
            .outcome,
        Outcome::complete);
    EXPECT_EQ(entry.key, nullptr);
    EXPECT_EQ(entry.number0, 7);
    EXPECT_EQ(quoted(entry.fileName), "\"libdrv.so\"");
    EXPECT_EQ(entry.dateYear, 1995);
    EXPECT_EQ(entry.dateMonth, 3);
    EXPECT_EQ(entry.dateDay, 15);
    EXPECT_EQ(quoted(entry.text8), "\"NEWER\"");
    EXPECT_EQ(quoted(entry.text14), "\"shared\"");
    EXPECT_EQ(entry.number15, 48211);
    EXPECT_EQ(entry.version[0], 2);
    EXPECT_EQ(entry.version[1], 50);
    EXPECT_EQ(entry.version[2], 0);
    EXPECT_EQ(entry.version[3], 1234);
}

TEST(ScriptLine, OfNothingButCommasIsCompleteWithOLDERAsTheOnlyText) {
    Entry entry;
    EXPECT_EQ(read(std::string(20, ','), entry).outcome, Outcome::complete);
    EXPECT_EQ(entry.fileName, nullptr);
    EXPECT_EQ(quoted(entry.text8), "\"OLDER\"");
    EXPECT_EQ(entry.text14, nullptr);
    for (const long number : {entry.number0, entry.dateYear, entry.dateMonth, entry.dateDay, entry.number15,
                              entry.version[0], entry.version[1], entry.version[2], entry.version[3]})
        EXPECT_EQ(number, 0);
}

TEST(ScriptLine, TakesFieldsOfBlanksForEmptyOnes) {
    Entry entry;
    EXPECT_EQ(read("  ,  ,,,,  ,,,  ,,,,,,  ,  ,,,,  ,", entry).outcome, Outcome::complete);
    EXPECT_EQ(entry.fileName, nullptr);
    EXPECT_EQ(quoted(entry.text8), "\"OLDER\"");
    EXPECT_EQ(entry.text14, nullptr);
    EXPECT_EQ(entry.number15, 0);
}

TEST(ScriptLine, KeepsBlanksBehindAField) {
    Entry entry;
    read("1,  lib drv.so  ,,,,,,,,,,,,,,,,,,,", entry);
    EXPECT_EQ(quoted(entry.fileName), "\"lib drv.so  \"");
}

TEST(ScriptLine, NeedsTwentyCommasAndNamesTheFirstThatIsMissing) {
    for (unsigned commas = 0; commas <= 22; ++commas) {
        SCOPED_TRACE(commas);
        Entry entry;
        const LineResult result = read(std::string(commas, ','), entry);
        EXPECT_EQ(result.outcome, commas < 20 ? Outcome::commaMissing : Outcome::complete);
        EXPECT_EQ(result.missingComma, commas < 20 ? commas + 1 : 0);
    }
}

TEST(ScriptLine, KeepsTheFieldsBeforeAMissingComma) {
    Entry entry;
    const LineResult result = read("7,libdrv.so,,,,1995-03-15,,,NEWER", entry);
    EXPECT_EQ(result.missingComma, 9U);
    EXPECT_EQ(entry.number0, 7);
    EXPECT_EQ(quoted(entry.fileName), "\"libdrv.so\"");
    EXPECT_EQ(entry.dateYear, 1995);
    EXPECT_EQ(entry.text8, nullptr) << "no comma ends this field";
}

TEST(ScriptLine, ReadsDatesByColumnsAndNeverBehindTheirEnd) {
    struct Row {
        const char* field;
        long year, month, day;
    };
    constexpr Row rows[] = {{"1995-03-15", 1995, 3, 15},
                            {"1995- 3- 5", 1995, 3, 5},
                            {"1995/12/31", 1995, 12, 31},
                            {"19950315", 1995, 31, 0},
                            {"1995-03-", 1995, 3, 0},
                            {"1995-0", 1995, 0, 0},
                            {"1995-", 1995, 0, 0},
                            {"1995", 1995, 0, 0},
                            {"19", 19, 0, 0},
                            {"1", 1, 0, 0},
                            {"95-06-14", 95, -1, 0},
                            {"today", 0, 0, 0},
                            {"1995-03-150", 1995, 3, 15},
                            {"   1995-03-15", 1995, 3, 15}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.field);
        Entry entry;
        EXPECT_EQ(read(lineWith(5, row.field), entry).outcome, Outcome::complete);
        EXPECT_EQ(entry.dateYear, row.year);
        EXPECT_EQ(entry.dateMonth, row.month);
        EXPECT_EQ(entry.dateDay, row.day);
    }
}

TEST(ScriptLine, ReadsVersionsByColumnsAndNeverBehindTheirEnd) {
    struct Row {
        const char* field;
        long numbers[4];
    };
    constexpr Row rows[] = {{"02.50.00.1234", {2, 50, 0, 1234}}, {"4.05.1", {4, 5, 0, 0}},      {"02", {2, 0, 0, 0}},
                            {"02.50.00.", {2, 50, 0, 0}},        {"02.50.00.1", {2, 50, 0, 1}}, {"x", {0, 0, 0, 0}},
                            {"12.34.56.78.9", {12, 34, 56, 78}}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.field);
        Entry entry;
        EXPECT_EQ(read(lineWith(19, row.field), entry).outcome, Outcome::complete);
        for (int position = 0; position < 4; ++position)
            EXPECT_EQ(entry.version[position], row.numbers[position]) << position;
    }
}

TEST(ScriptLine, ReadsNumbersWithSignsAndBlanksAndStopsAtTheirLimits) {
    struct Row {
        const char* field;
        long number;
    };
    constexpr Row rows[] = {{"12", 12},
                            {" 12x", 12},
                            {"-3", -3},
                            {"+4", 4},
                            {"x12", 0},
                            {"", 0},
                            {"0x10", 0},
                            {"99999999999999999999", LONG_MAX},
                            {"-99999999999999999999", LONG_MIN}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.field);
        Entry first;
        read(lineWith(0, row.field), first);
        EXPECT_EQ(first.number0, row.number);
        Entry second;
        read(lineWith(15, row.field), second);
        EXPECT_EQ(second.number15, row.number);
    }
}

TEST(ScriptLine, TakesNamesOfAnyLengthALineCanHold) {
    const std::string name(1000, 'n');
    Entry entry;
    EXPECT_EQ(read("1," + name + std::string(19, ','), entry).outcome, Outcome::complete);
    EXPECT_EQ(quoted(entry.fileName), '"' + name + '"');
}

TEST(ScriptLine, OfTheTestsIsComplete) {
    Entry entry;
    EXPECT_EQ(read(scriptLine("a.so"), entry).outcome, Outcome::complete);
    EXPECT_EQ(quoted(entry.fileName), "\"a.so\"");
    EXPECT_EQ(entry.version[3], 1234);
}

}  // namespace
