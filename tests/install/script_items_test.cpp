// The components of an installation: those a caller lists, and those a script does.
#include "install/script_items.h"

#include <gtest/gtest.h>

#include <string>

#include "page_edge.h"
#include "record_text.h"

namespace {

using namespace jx::install;
using namespace jx::test;
using namespace std::string_literals;

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
    ScriptRecord script("[ODBC Translators]\n\"Latin to Greek\"=\n\"Second\"=Installed\n");
    EXPECT_EQ(PlaceTranslatorsToBeInstalledInInstallStruct(script.record.get()), 0U);
    EXPECT_EQ(dump(*script.record.get()), "translator \"Latin to Greek\"\ntranslator \"Second\"\n");
}

TEST(PlaceTranslators, DropTheFirstCharacterOfAnUnquotedKeyAndCutItAtTheNextQuote) {
    ScriptRecord script("[ODBC Translators]\nPlain=1\nab\"cd\"=1\n\"Open=1\n\"=1\nx=1\n\"\"=1\n");
    PlaceTranslatorsToBeInstalledInInstallStruct(script.record.get());
    EXPECT_EQ(dumpNames(*script.record.get()),
              "translator \"lain\"\ntranslator \"b\"\ntranslator \"Open\"\ntranslator \"\"\ntranslator \"\"\n"
              "translator \"\"\n");
}

TEST(PlaceTranslators, ReturnOneForAnEmptyListAndZeroForAMissingOne) {
    ScriptRecord empty("[ODBC Translators]\n; none\n");
    EXPECT_EQ(PlaceTranslatorsToBeInstalledInInstallStruct(empty.record.get()), 1U);
    EXPECT_EQ(dump(*empty.record.get()), "");
    ScriptRecord absent("[Other]\n\"a\"=1\n");
    EXPECT_EQ(PlaceTranslatorsToBeInstalledInInstallStruct(absent.record.get()), 0U);
    EXPECT_EQ(dump(*absent.record.get()), "");
}

// A cut name is another one: its section could be a driver's.
TEST(PlaceTranslators, LeaveOutANameThatALongListCuts) {
    std::string text = "[ODBC Translators]\n";
    for (int number = 100; number < 200; ++number)
        text += "\"Translator " + std::to_string(number) + "\"=1\n";
    ScriptRecord script(text);
    EXPECT_EQ(PlaceTranslatorsToBeInstalledInInstallStruct(script.record.get()), 0U);
    // 17 bytes a key with its quotes and NUL: 60 whole ones, and a part of the next.
    ASSERT_EQ(script.record->itemCount, 60U);
    EXPECT_EQ(quoted(script.record->items[59].name), "\"Translator 159\"");
}

TEST(DriverKeys, FillTheSevenPlacesAndLeaveAbsentOnesNull) {
    ScriptRecord script(
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
        ScriptRecord script("[" + name + "-Keys]\nCreateDSN=a,b\nConnectFunctions=YYN\n");
        script.record.item(DriverItem, name);
        EXPECT_EQ(GetTheDriverKeys(script.record.get()), 0U);
        EXPECT_EQ(quoted(script.record->items[0].driverKeys[1]), "\"a,b\"");
        EXPECT_EQ(quoted(script.record->items[0].driverKeys[2]), "\"YYN\"");
    }
}

TEST(DriverKeys, AreReadAgainWithoutKeepingTheOldOnes) {
    ScriptRecord script("[A-Keys]\nAPILevel=1\n");
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
        ScriptRecord script(row.script);
        EXPECT_EQ(GetTheNonDriverItems(script.record.get()), 0U);
        EXPECT_EQ(dumpNames(*script.record.get()), row.items);
    }
}

TEST(ScriptItems, AreNoneInAScriptThatIsNotAFileOrHasNoNameAndTheResultSaysWhichCouldNotBeRead) {
    const TestHome home;
    for (const std::string& name : unusableScripts(home)) {
        SCOPED_TRACE(name);
        TestRecord record(name.c_str());
        record.item(DriverItem, "A");
        const unsigned int status = name == home.file("absent") ? 0 : 1;
        EXPECT_EQ(GetTheDriverKeys(record.get()), status);
        EXPECT_EQ(PlaceTranslatorsToBeInstalledInInstallStruct(record.get()), status);
        EXPECT_EQ(GetTheNonDriverItems(record.get()), status);
        EXPECT_EQ(dump(*record.get()), "driver \"A\" selected\n");
    }
}

TEST(ScriptItems, AreNoneWithoutAScript) {
    TestRecord record;
    EXPECT_EQ(PlaceTranslatorsToBeInstalledInInstallStruct(record.get()), 0U);
    EXPECT_EQ(GetTheNonDriverItems(record.get()), 0U);
    record.item(DriverItem, "A");
    EXPECT_EQ(GetTheDriverKeys(record.get()), 0U);
    EXPECT_EQ(dump(*record.get()), "driver \"A\" selected\n");
}

}  // namespace
