// Reading an installation script into a record.
#include "install/script_reader.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "message_box_script.h"
#include "page_edge.h"
#include "record_text.h"
#include "test_home.h"

namespace {

using namespace jx::install;
using namespace jx::test;
using namespace std::string_literals;

// A script and a record that names it.
struct Script {
    explicit Script(const std::string& text) : home{{"odbc.inf", text}}, record(home.file("odbc.inf").c_str()) {}
    TestHome home;
    TestRecord record;
};

TEST(PlaceDrivers, AddsADriverForEveryTextOfTheList) {
    TestRecord record;
    PageEdge list("Sample Driver\0Text Files\0\0"s);
    EXPECT_EQ(PlaceDriversToBeInstalledInInstallStruct(record.get(), list.bytes()), 0U);
    EXPECT_EQ(dump(*record.get()), "driver \"Sample Driver\"\ndriver \"Text Files\"\n");
}

TEST(PlaceDrivers, KeepsTheClosingQuoteOfAQuotedName) {
    TestRecord record;
    PageEdge list("\"Text Driver\"\0Plain\0\"Open\0\"a\"b\"=1\0\"\0\0"s);
    PlaceDriversToBeInstalledInInstallStruct(record.get(), list.bytes());
    EXPECT_EQ(dumpNames(*record.get()),
              "driver \"Text Driver\"\"\ndriver \"Plain\"\ndriver \"Open\"\ndriver \"a\"b\"\"\ndriver \"\"\n");
}

TEST(PlaceDrivers, CutsEveryTextAtItsFirstEqualsSignInTheCallersList) {
    TestRecord record;
    PageEdge list("A=1=2\0B\0=c\0D=\0\0"s);
    PlaceDriversToBeInstalledInInstallStruct(record.get(), list.bytes());
    EXPECT_EQ(dumpNames(*record.get()), "driver \"A\"\ndriver \"B\"\ndriver \"\"\ndriver \"D\"\n");
    EXPECT_EQ(std::string(list.data(), 15), "A\0001=2\0B\0\0c\0D\0\0\0"s);
}

TEST(PlaceDrivers, AddsANameTwiceWhenItIsListedTwice) {
    TestRecord record;
    WritableText list("A\0A\0"s);
    PlaceDriversToBeInstalledInInstallStruct(record.get(), list.bytes());
    EXPECT_EQ(record->itemCount, 2U);
}

TEST(PlaceDrivers, TakesNamesAndListsOfAnySize) {
    for (const std::size_t size : {1U, 1023U, 1024U, 1025U, 32768U, 70000U}) {
        SCOPED_TRACE(size);
        TestRecord record;
        PageEdge list(std::string(size, 'n') + "\0B\0\0"s);
        EXPECT_EQ(PlaceDriversToBeInstalledInInstallStruct(record.get(), list.bytes()), 0U);
        ASSERT_EQ(record->itemCount, 2U);
        EXPECT_EQ(quoted(record->items[0].name).size(), size + 2);
    }
}

TEST(PlaceTranslators, AddsWhatStandsBetweenTheQuotes) {
    Script script("[ODBC Translators]\n\"Latin to Greek\"=\n\"Second\"=Installed\n");
    EXPECT_EQ(PlaceTranslatorsToBeInstalledInInstallStruct(script.record.get()), 0U);
    EXPECT_EQ(dump(*script.record.get()), "translator \"Latin to Greek\"\ntranslator \"Second\"\n");
}

TEST(PlaceTranslators, DropTheFirstCharacterOfAnUnquotedKeyAndCutItAtTheNextQuote) {
    Script script("[ODBC Translators]\nPlain=1\nab\"cd\"=1\n\"Open=1\n\"=1\nx=1\n\"\"=1\n");
    PlaceTranslatorsToBeInstalledInInstallStruct(script.record.get());
    EXPECT_EQ(dumpNames(*script.record.get()),
              "translator \"lain\"\ntranslator \"b\"\ntranslator \"Open\"\ntranslator \"\"\ntranslator \"\"\n"
              "translator \"\"\n");
}

TEST(PlaceTranslators, TellsAnEmptyListFromAnAbsentOne) {
    Script empty("[ODBC Translators]\n; none\n");
    EXPECT_EQ(PlaceTranslatorsToBeInstalledInInstallStruct(empty.record.get()), 1U);
    EXPECT_EQ(dump(*empty.record.get()), "");
    Script absent("[Other]\n\"a\"=1\n");
    EXPECT_EQ(PlaceTranslatorsToBeInstalledInInstallStruct(absent.record.get()), 0U);
    EXPECT_EQ(dump(*absent.record.get()), "");
}

TEST(PlaceTranslators, CutsALongListAt1023BytesInsideAName) {
    std::string text = "[ODBC Translators]\n";
    for (int number = 100; number < 200; ++number)
        text += "\"Translator " + std::to_string(number) + "\"=1\n";
    Script script(text);
    EXPECT_EQ(PlaceTranslatorsToBeInstalledInInstallStruct(script.record.get()), 0U);
    // 17 bytes a key with its quotes and NUL: 60 whole ones and 3 bytes of the next.
    ASSERT_EQ(script.record->itemCount, 61U);
    EXPECT_EQ(quoted(script.record->items[59].name), "\"Translator 159\"");
    EXPECT_EQ(quoted(script.record->items[60].name), "\"Tr\"");
}

TEST(DriverKeys, FillTheSevenPlacesAndLeaveAbsentOnesNull) {
    Script script(
        "[A-Keys]\nSQLLevel=2\nAPILevel=1\nOther=x\nFileExtns=*.txt,*.csv\nFileUsage=\nDriverODBCVer=NOT AVAILABLE\n"
        "[B]\nAPILevel=9\n[C-Keys]\n");
    script.record.item(DriverItem, "A").item(DriverItem, "B").item(DriverItem, "C").item(TranslatorItem, "A");
    EXPECT_EQ(GetTheDriverKeys(script.record.get()), 0U);
    EXPECT_EQ(dump(*script.record.get()),
              "driver \"A\" selected\n  APILevel=1\n  FileUsage=\n  FileExtns=*.txt,*.csv\n  SQLLevel=2\n"
              "driver \"B\" selected\ndriver \"C\" selected\ntranslator \"A\" selected\n");
}

TEST(DriverKeys, AreFoundForNamesOfAnyLength) {
    for (const std::size_t size : {1018U, 1019U, 1023U, 1024U, 1025U, 40000U}) {
        SCOPED_TRACE(size);
        const std::string name(size, 'n');
        Script script("[" + name + "-Keys]\nCreateDSN=a,b\nConnectFunctions=YYN\n");
        script.record.item(DriverItem, name);
        EXPECT_EQ(GetTheDriverKeys(script.record.get()), 0U);
        EXPECT_EQ(quoted(script.record->items[0].driverKeys[1]), "\"a,b\"");
        EXPECT_EQ(quoted(script.record->items[0].driverKeys[2]), "\"YYN\"");
    }
}

TEST(DriverKeys, AreReadAgainWithoutKeepingTheOldOnes) {
    Script script("[A-Keys]\nAPILevel=1\n");
    script.record.item(DriverItem, "A");
    GetTheDriverKeys(script.record.get());
    GetTheDriverKeys(script.record.get());
    EXPECT_EQ(quoted(script.record->items[0].driverKeys[0]), "\"1\"");
}

TEST(NonDriverItems, AreTheCoreSectionsThatExist) {
    struct Row {
        const char* script;
        const char* items;
    };
    constexpr Row rows[] = {
        {"", ""},
        {"[ODBC]\nx=1\n[ODBC Administrator]\nx=1\n[ODBC Driver Manager]\nx=1\n",
         "core \"ODBC Driver Manager\"\ncore \"ODBC Administrator\"\ncore \"ODBC\"\n"},
        {"[odbc]\n", "core \"ODBC\"\n"},
        {"[ODBC Administrator]\nx=1\n[Other]\n", "core \"ODBC Administrator\"\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.script);
        Script script(row.script);
        EXPECT_EQ(GetTheNonDriverItems(script.record.get()), 0U);
        EXPECT_EQ(dumpNames(*script.record.get()), row.items);
    }
}

constexpr char kFileTail[] = " 1 2024 3 15 48211 version 2 50 0 1234 texts \"NEWER\" \"shared\"\n";
constexpr char kEmptyFile[] = "  file - - 0 0 0 0 0 version 0 0 0 0 texts - -\n";

TEST(Entries, AreReadForEveryKeyOfTheSection) {
    const MessageBoxScript boxes;
    Script script("[A]\n\"Driver\"=" + scriptLine("libdrv.so") + "\n\"Setup\"=" + scriptLine("libdrvs.so") + "\n");
    script.record.item(DriverItem, "A");
    EXPECT_EQ(GetDataFromObdcInf(script.record.get(), 0), 0U);
    EXPECT_EQ(dump(*script.record.get()), "driver \"A\" selected\n  file \"Driver\" \"libdrv.so\""s + kFileTail +
                                              "  file \"Setup\" \"libdrvs.so\"" + kFileTail);
    EXPECT_EQ(boxes.boxes(), Boxes{});
}

TEST(Entries, ReplaceWhatTheComponentHad) {
    Script script("[A]\n\"Driver\"=" + scriptLine("new.so") + "\n");
    script.record.item(DriverItem, "A").file("Driver", "old.so").file("Setup", "old.so");
    EXPECT_EQ(GetDataFromObdcInf(script.record.get(), 0), 0U);
    EXPECT_EQ(dump(*script.record.get()), "driver \"A\" selected\n  file \"Driver\" \"new.so\""s + kFileTail);
}

TEST(Entries, OfAKeyWithoutAValueAreEmptyWhereverTheyStand) {
    Script script("[A]\n\"One\"=NOT AVAILABLE\n\"Driver\"=" + scriptLine("a.so") + "\n\"Two\"=NOT AVAILABLE\n");
    script.record.item(DriverItem, "A");
    EXPECT_EQ(GetDataFromObdcInf(script.record.get(), 0), 0U);
    EXPECT_EQ(dump(*script.record.get()),
              "driver \"A\" selected\n"s + kEmptyFile + "  file \"Driver\" \"a.so\"" + kFileTail + kEmptyFile);
}

TEST(Entries, EndAtALineWithTooFewCommasAndTellWhichIsMissing) {
    const MessageBoxScript boxes;
    Script script("[A]\n\"Driver\"=" + scriptLine("a.so") + "\n\"Setup\"=1,s.so,,\n\"Help\"=" + scriptLine("h.hlp") +
                  "\n");
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
        Script script("[A]\n\"Driver\"=x" + std::string(row.commas, ',') + "y\n");
        script.record.item(DriverItem, "A");
        EXPECT_EQ(GetDataFromObdcInf(script.record.get(), 0), row.result);
        ASSERT_EQ(boxes.boxes().size(), row.missing == nullptr ? 0U : 1U);
        if (row.missing != nullptr) {
            EXPECT_NE(boxes.boxes()[0].text.find(row.missing), std::string::npos) << boxes.boxes()[0].text;
        }
    }
}

TEST(Entries, OfValuesThatAreCutTellTheCommaTheyLost) {
    const MessageBoxScript boxes;
    Script script("[A]\n\"Driver\"=1," + std::string(3000, 'n') + std::string(19, ',') + "\n");
    script.record.item(DriverItem, "A");
    EXPECT_EQ(GetDataFromObdcInf(script.record.get(), 0), 1U);
    ASSERT_EQ(boxes.boxes().size(), 1U);
    EXPECT_EQ(boxes.boxes()[0].text.substr(0, 27), "Not able to find comma 2 in");
}

TEST(Entries, ReportNamesOfAnyLengthWhole) {
    const MessageBoxScript boxes;
    const std::string name(32768, 'n');
    Script script("[" + name + "]\n\"Driver\"=x\n");
    script.record.item(DriverItem, name);
    EXPECT_EQ(GetDataFromObdcInf(script.record.get(), 0), 1U);
    ASSERT_EQ(boxes.boxes().size(), 1U);
    EXPECT_NE(boxes.boxes()[0].text.find(" Section: " + name + " Entry: Driver"), std::string::npos);
}

TEST(Entries, OfKeysWithoutQuotesLoseTheirFirstCharacter) {
    Script script("[A]\nDriver=" + scriptLine("a.so") + "\n\"=" + scriptLine("b.so") +
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
        Script script("[Empty]\n[A]\n\"Driver\"=x\n");
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
    Script script(text);
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
    Script script("[A]\n\"Driver\"=no commas\n[B]\n\"Driver\"=" + scriptLine("b.so") + "\n");
    script.record.item(DriverItem, "A").item(DriverItem, "Absent").item(DriverItem, "B");
    EXPECT_EQ(GetTheOdbcInfEntriesForEachItem(script.record.get()), 0U);
    EXPECT_EQ(script.record->items[0].entryCount, 1U);
    EXPECT_EQ(quoted(script.record->items[2].entries[0].fileName), "\"b.so\"");
    EXPECT_EQ(boxes.boxes().size(), 1U);
}

TEST(ScriptReader, FindsNothingInAScriptThatIsNoFileOrHasNoNameAndTellsWhichItCouldNotRead) {
    const TestHome home;
    ASSERT_EQ(mkdir(home.file("folder").c_str(), 0700), 0);
    ASSERT_EQ(mkfifo(home.file("fifo").c_str(), 0600), 0);
    for (const std::string& name : {home.file("folder"), home.file("fifo"), home.file("absent"), ""s, "(null)"s}) {
        SCOPED_TRACE(name);
        TestRecord record(name == "(null)" ? nullptr : name.c_str());
        record.item(DriverItem, "A");
        const unsigned int status = name == home.file("absent") || name == "(null)" ? 0 : 1;
        EXPECT_EQ(GetTheDriverKeys(record.get()), status);
        EXPECT_EQ(PlaceTranslatorsToBeInstalledInInstallStruct(record.get()), status);
        EXPECT_EQ(GetTheNonDriverItems(record.get()), status);
        EXPECT_EQ(GetTheOdbcInfEntriesForEachItem(record.get()), 0U);
        EXPECT_EQ(dump(*record.get()), "driver \"A\" selected\n");
    }
}

}  // namespace
