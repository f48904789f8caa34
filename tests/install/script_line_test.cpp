// The line that describes one file in an installation script.
#include "install/script_line.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <memory>
#include <string>

#include "config/text_bytes.h"
#include "install/owned_text.h"
#include "message_box_script.h"
#include "record_text.h"

namespace {

using namespace jx::install;
using jx::test::Boxes;
using jx::test::MessageBoxScript;
using jx::test::quoted;
using jx::test::scriptLine;

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

// Reads from a heap block of exactly the line's size, so that a sanitizer sees a read past it. Returns the number of
// fields.
unsigned read(std::string_view line, InfEntry& entry) {
    const std::unique_ptr<char[]> bytes(new char[line.size()]);
    line.copy(bytes.get(), line.size());
    const ScriptLine fields({bytes.get(), line.size()});
    EXPECT_TRUE(fields.fill(entry));
    EXPECT_EQ(fields.isComplete(), fields.fieldCount() == 20);
    return fields.fieldCount();
}

TEST(ScriptLine, FillsEveryFieldThatIsRead) {
    Entry entry;
    EXPECT_EQ(
        read("7, libdrv.so,a,b,c, 1995-03-15,d,e, NEWER,f,g,h,i,j, shared, 48211,k,l,m, 02.50.00.1234,n,o,p", entry),
        20U);
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
    EXPECT_EQ(read(std::string(20, ','), entry), 20U);
    EXPECT_EQ(entry.fileName, nullptr);
    EXPECT_EQ(quoted(entry.text8), "\"OLDER\"");
    EXPECT_EQ(entry.text14, nullptr);
    for (const long number : {entry.number0, entry.dateYear, entry.dateMonth, entry.dateDay, entry.number15,
                              entry.version[0], entry.version[1], entry.version[2], entry.version[3]})
        EXPECT_EQ(number, 0);
}

TEST(ScriptLine, TakesFieldsOfBlanksForEmptyOnes) {
    Entry entry;
    EXPECT_EQ(read("  ,  ,,,,  ,,,  ,,,,,,  ,  ,,,,  ,", entry), 20U);
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

TEST(ScriptLine, IsCompleteWithTwentyCommas) {
    for (unsigned commas = 0; commas <= 22; ++commas) {
        SCOPED_TRACE(commas);
        Entry entry;
        EXPECT_EQ(read(std::string(commas, ','), entry), std::min(commas, 20U));
    }
}

TEST(ScriptLine, GivesItsFieldsWithoutTheBlanksBeforeThem) {
    const ScriptLine line("7, libdrv.so ,,,,  95-06-14,behind");
    EXPECT_EQ(line.field(ScriptLine::kNumber0), "7");
    EXPECT_EQ(line.field(ScriptLine::kFileName), "libdrv.so ");
    EXPECT_EQ(line.field(ScriptLine::kDate), "95-06-14");
    EXPECT_EQ(line.field(ScriptLine::kText8), "");
    EXPECT_EQ(line.field(ScriptLine::kVersion), "");
    EXPECT_EQ(line.fieldCount(), 6U);
    EXPECT_EQ(ScriptLine("7, no comma behind").field(ScriptLine::kFileName), "");
}

TEST(ScriptLine, KeepsTheFieldsBeforeAMissingComma) {
    Entry entry;
    const unsigned fields = read("7,libdrv.so,,,,1995-03-15,,,NEWER", entry);
    EXPECT_EQ(fields, 8U);
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
        EXPECT_EQ(read(lineWith(5, row.field), entry), 20U);
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
        EXPECT_EQ(read(lineWith(19, row.field), entry), 20U);
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
    EXPECT_EQ(read("1," + name + std::string(19, ','), entry), 20U);
    EXPECT_EQ(quoted(entry.fileName), '"' + name + '"');
}

TEST(ScriptLine, OfTheTestsIsComplete) {
    Entry entry;
    EXPECT_EQ(read(scriptLine("a.so"), entry), 20U);
    EXPECT_EQ(quoted(entry.fileName), "\"a.so\"");
    EXPECT_EQ(entry.version[3], 1234);
}

TEST(MissingComma, IsShownWithWhereItIsMissing) {
    const MessageBoxScript boxes;
    const std::string script(70000, 's');
    showMissingComma(7, 4, jx::asBytes(script.c_str()), jx::asBytes("D"), jx::asBytes("Setup"));
    showMissingComma(0, 20, nullptr, nullptr, nullptr);
    EXPECT_EQ(
        boxes.boxes(),
        (Boxes{{7, "Not able to find comma 4 in File: " + script + " Section: D Entry: Setup", "KALDERO ODBC Admin", 0},
               {0, "Not able to find comma 20 in File:  Section:  Entry: ", "KALDERO ODBC Admin", 0}}));
}

}  // namespace
