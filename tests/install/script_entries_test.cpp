// The files of an installation's components, as a script lists them.
#include "install/script_entries.h"

#include <gtest/gtest.h>

#include <string>

#include "message_box_script.h"
#include "record_text.h"

namespace {

using namespace jx::install;
using namespace jx::test;
using namespace std::string_literals;

constexpr char kFileTail[] = " 1 2024 3 15 48211 version 2 50 0 1234 texts \"NEWER\" \"shared\"\n";
constexpr char kEmptyFile[] = "  file - - 0 0 0 0 0 version 0 0 0 0 texts - -\n";

TEST(Entries, AreReadForEveryKeyOfTheSection) {
    const MessageBoxScript boxes;
    ScriptRecord script("[A]\n\"Driver\"=" + scriptLine("libdrv.so") + "\n\"Setup\"=" + scriptLine("libdrvs.so") +
                        "\n");
    script.record.item(DriverItem, "A");
    EXPECT_EQ(GetDataFromObdcInf(script.record.get(), 0), 0U);
    EXPECT_EQ(dump(*script.record.get()), "driver \"A\" selected\n  file \"Driver\" \"libdrv.so\""s + kFileTail +
                                              "  file \"Setup\" \"libdrvs.so\"" + kFileTail);
    EXPECT_EQ(boxes.boxes(), Boxes{});
}

TEST(Entries, ReplaceWhatTheComponentHad) {
    ScriptRecord script("[A]\n\"Driver\"=" + scriptLine("new.so") + "\n");
    script.record.item(DriverItem, "A").file("Driver", "old.so").file("Setup", "old.so");
    EXPECT_EQ(GetDataFromObdcInf(script.record.get(), 0), 0U);
    EXPECT_EQ(dump(*script.record.get()), "driver \"A\" selected\n  file \"Driver\" \"new.so\""s + kFileTail);
}

TEST(Entries, OfAKeyWithoutAValueAreEmptyWhereverTheyStand) {
    ScriptRecord script("[A]\n\"One\"=NOT AVAILABLE\n\"Driver\"=" + scriptLine("a.so") + "\n\"Two\"=NOT AVAILABLE\n");
    script.record.item(DriverItem, "A");
    EXPECT_EQ(GetDataFromObdcInf(script.record.get(), 0), 0U);
    EXPECT_EQ(dump(*script.record.get()),
              "driver \"A\" selected\n"s + kEmptyFile + "  file \"Driver\" \"a.so\"" + kFileTail + kEmptyFile);
}

TEST(Entries, EndAtALineWithTooFewCommasWhichIsReported) {
    const MessageBoxScript boxes;
    ScriptRecord script("[A]\n\"Driver\"=" + scriptLine("a.so") +
                        "\n\"Setup\"=1,s.so,,\n\"Help\"=" + scriptLine("h.hlp") + "\n");
    script.record.item(DriverItem, "A");
    EXPECT_EQ(GetDataFromObdcInf(script.record.get(), 0), 1U);
    EXPECT_EQ(dump(*script.record.get()), "driver \"A\" selected\n  file \"Driver\" \"a.so\""s + kFileTail +
                                              "  file \"Setup\" \"s.so\" 1 0 0 0 0 version 0 0 0 0 texts - -\n" +
                                              kEmptyFile);
    EXPECT_EQ(
        boxes.boxes(),
        (Boxes{{0, "Not able to find comma 4 in File: " + script.home.file("odbc.inf") + " Section: A Entry: Setup",
                "KALDERO ODBC Admin", 0}}));
}

TEST(Entries, NeedExactlyTwentyCommas) {
    struct Row {
        unsigned commas;
        unsigned result;
        const char* missing;
    };
    constexpr Row rows[] = {
        {20, 0, nullptr}, {19, 1, "comma 20 in"}, {0, 1, "comma 1 in"}, {1, 1, "comma 2 in"}, {40, 0, nullptr}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.commas);
        const MessageBoxScript boxes;
        ScriptRecord script("[A]\n\"Driver\"=x" + std::string(row.commas, ',') + "y\n");
        script.record.item(DriverItem, "A");
        EXPECT_EQ(GetDataFromObdcInf(script.record.get(), 0), row.result);
        ASSERT_EQ(boxes.boxes().size(), row.missing == nullptr ? 0U : 1U);
        if (row.missing != nullptr) {
            EXPECT_NE(boxes.boxes()[0].text.find(row.missing), std::string::npos) << boxes.boxes()[0].text;
        }
    }
}

TEST(Entries, OfValuesThatAreCutReportTheCommaTheyLost) {
    const MessageBoxScript boxes;
    ScriptRecord script("[A]\n\"Driver\"=1," + std::string(3000, 'n') + std::string(19, ',') + "\n");
    script.record.item(DriverItem, "A");
    EXPECT_EQ(GetDataFromObdcInf(script.record.get(), 0), 1U);
    ASSERT_EQ(boxes.boxes().size(), 1U);
    EXPECT_EQ(boxes.boxes()[0].text.substr(0, 27), "Not able to find comma 2 in");
}

TEST(Entries, ReportNamesOfAnyLengthWhole) {
    const MessageBoxScript boxes;
    const std::string name(32768, 'n');
    ScriptRecord script("[" + name + "]\n\"Driver\"=x\n");
    script.record.item(DriverItem, name);
    EXPECT_EQ(GetDataFromObdcInf(script.record.get(), 0), 1U);
    ASSERT_EQ(boxes.boxes().size(), 1U);
    EXPECT_NE(boxes.boxes()[0].text.find(" Section: " + name + " Entry: Driver"), std::string::npos);
}

TEST(Entries, OfKeysWithoutQuotesLoseTheirFirstCharacter) {
    ScriptRecord script("[A]\nDriver=" + scriptLine("a.so") + "\n\"=" + scriptLine("b.so") +
                        "\n\"Setup=" + scriptLine("c.so") + "\n");
    script.record.item(DriverItem, "A");
    EXPECT_EQ(GetDataFromObdcInf(script.record.get(), 0), 0U);
    EXPECT_EQ(dump(*script.record.get()), "driver \"A\" selected\n  file \"river\" \"a.so\""s + kFileTail +
                                              "  file \"\" \"b.so\"" + kFileTail + "  file \"Setup\" \"c.so\"" +
                                              kFileTail);
}

TEST(Entries, AreNoneForASectionThatIsAbsentOrEmptyOrHasNoName) {
    for (const char* name : {"Absent", "Empty", "", "NOT AVAILABLE"}) {
        SCOPED_TRACE(name);
        ScriptRecord script("[Empty]\n[A]\n\"Driver\"=x\n");
        script.record.item(DriverItem, name);
        EXPECT_EQ(GetDataFromObdcInf(script.record.get(), 0), 1U);
        EXPECT_EQ(script.record->items[0].entryCount, 0U);
        EXPECT_EQ(script.record->items[0].entries, nullptr);
    }
}

TEST(Entries, OfALongSectionEndWithTheKeyThatIsCut) {
    std::string text = "[A]\n";
    for (int number = 100; number < 200; ++number)
        text += "\"Entry " + std::to_string(number) + "\"=" + scriptLine("f" + std::to_string(number)) + "\n";
    const MessageBoxScript boxes;
    ScriptRecord script(text);
    script.record.item(DriverItem, "A");
    EXPECT_EQ(GetDataFromObdcInf(script.record.get(), 0), 0U);
    // 12 bytes a key with its quotes and NUL: 85 whole ones and 3 bytes of the next, which no key is called.
    ASSERT_EQ(script.record->items[0].entryCount, 86U);
    EXPECT_EQ(quoted(script.record->items[0].entries[84].fileName), "\"f184\"");
    EXPECT_EQ(script.record->items[0].entries[85].key, nullptr);
    EXPECT_EQ(boxes.boxes(), Boxes{});
}

TEST(Entries, AreReadForTheOtherComponentsAfterAUselessOne) {
    const MessageBoxScript boxes;
    ScriptRecord script("[A]\n\"Driver\"=no commas\n[B]\n\"Driver\"=" + scriptLine("b.so") + "\n");
    script.record.item(DriverItem, "A").item(DriverItem, "Absent").item(DriverItem, "B");
    EXPECT_EQ(GetTheOdbcInfEntriesForEachItem(script.record.get()), 0U);
    EXPECT_EQ(script.record->items[0].entryCount, 1U);
    EXPECT_EQ(quoted(script.record->items[2].entries[0].fileName), "\"b.so\"");
    EXPECT_EQ(boxes.boxes().size(), 1U);
}

TEST(Entries, AreNoneInAScriptThatIsNotAFileOrHasNoName) {
    const TestHome home;
    for (const std::string& name : unusableScripts(home)) {
        SCOPED_TRACE(name);
        TestRecord record(name.c_str());
        record.item(DriverItem, "A");
        EXPECT_EQ(GetTheOdbcInfEntriesForEachItem(record.get()), 0U);
        EXPECT_EQ(dump(*record.get()), "driver \"A\" selected\n");
    }
}

TEST(Entries, AreNoneWithoutAScript) {
    TestRecord record;
    record.item(DriverItem, "A");
    EXPECT_EQ(GetDataFromObdcInf(record.get(), 0), 1U);
    EXPECT_EQ(dump(*record.get()), "driver \"A\" selected\n");
}

}  // namespace
