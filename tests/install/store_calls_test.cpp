// Which calls the installation gives the store, and in which order.
#include <gtest/gtest.h>
#include <odbcinst.h>

#include <string>
#include <vector>

#include "config/text_bytes.h"
#include "install/configuration_update.h"
#include "install/data_source_creation.h"
#include "record_text.h"
#include "recorded_store.h"
#include "test_home.h"

namespace {

using namespace jx::install;
using namespace jx::test;
using namespace std::string_literals;
using jx::asBytes;
using Calls = std::vector<std::string>;

Calls updateCalls(TestRecord& record, unsigned long item, unsigned long file, const char* path) {
    WritableText installed(path);
    const RecordedStore store;
    UpdateOdbcIniAndOdbcInstIni(record.get(), item, file, installed.bytes());
    return store.calls;
}

Calls dataSourceCalls(const char* list, const char* driver = "D") {
    WritableText names(list);
    const RecordedStore store;
    CreateDataSources(names.bytes(), asBytes(driver));
    return store.calls;
}

const std::string kDriverList = "get .odbcinst.ini 'ODBC Drivers' (null) 'NOT AVAILABLE' 1024";
const std::string kDataSourceList = "get .odbc.ini 'ODBC Data Sources' (null) 'NOT AVAILABLE' 1024";
const std::string kLibraryOfD = "get .odbcinst.ini 'D' 'Driver' 'NOT AVAILABLE' 1024";

TEST(StoreCalls, OfADriverClearAnAbsentListThenDeleteEachKeyBeforeItsWriteAndCreateDataSourcesLast) {
    const TestHome home;
    TestRecord record;
    record.item(DriverItem, "D").file("Setup", "d.so").file("Driver", "d.so").file("Setup", "other.so");
    for (const char* key : kCapabilityKeys)
        record.capability(key, "v");
    EXPECT_EQ(updateCalls(record, 0, 1, "/l/d.so"), (Calls{kDriverList,
                                                           "put .odbcinst.ini 'ODBC Drivers' (null) (null)",
                                                           "put .odbcinst.ini 'ODBC Drivers' 'D' (null)",
                                                           "put .odbcinst.ini 'ODBC Drivers' 'D' 'Installed'",
                                                           "put .odbcinst.ini 'D' (null) (null)",
                                                           "put .odbcinst.ini 'D' 'Driver' (null)",
                                                           "put .odbcinst.ini 'D' 'Driver' '/l/d.so'",
                                                           "put .odbcinst.ini 'D' 'Setup' (null)",
                                                           "put .odbcinst.ini 'D' 'Setup' '/l/d.so'",
                                                           "put .odbcinst.ini 'D' 'APILevel' (null)",
                                                           "put .odbcinst.ini 'D' 'APILevel' 'v'",
                                                           "put .odbcinst.ini 'D' 'ConnectFunctions' (null)",
                                                           "put .odbcinst.ini 'D' 'ConnectFunctions' 'v'",
                                                           "put .odbcinst.ini 'D' 'DriverODBCVer' (null)",
                                                           "put .odbcinst.ini 'D' 'DriverODBCVer' 'v'",
                                                           "put .odbcinst.ini 'D' 'FileUsage' (null)",
                                                           "put .odbcinst.ini 'D' 'FileUsage' 'v'",
                                                           "put .odbcinst.ini 'D' 'FileExtns' (null)",
                                                           "put .odbcinst.ini 'D' 'FileExtns' 'v'",
                                                           "put .odbcinst.ini 'D' 'SQLLevel' (null)",
                                                           "put .odbcinst.ini 'D' 'SQLLevel' 'v'",
                                                           kDataSourceList,
                                                           "put .odbc.ini 'ODBC Data Sources' (null) (null)",
                                                           "put .odbc.ini 'ODBC Data Sources' 'v' 'D'",
                                                           "put .odbc.ini 'v' (null) (null)",
                                                           "put .odbc.ini 'v' 'Driver' (null)",
                                                           kLibraryOfD,
                                                           "put .odbc.ini 'v' 'Driver' '/l/d.so'"}));
}

TEST(StoreCalls, OfADriverLeaveAListThatIsThere) {
    for (const char* list : {"[ODBC Drivers]\nOther=Installed\n", "[ODBC Drivers]\n"}) {
        const TestHome home({{".odbcinst.ini", list}});
        TestRecord record;
        record.item(DriverItem, "D").file("Driver", "d.so");
        EXPECT_EQ(updateCalls(record, 0, 0, "/l/d.so"),
                  (Calls{kDriverList, "put .odbcinst.ini 'ODBC Drivers' 'D' (null)",
                         "put .odbcinst.ini 'ODBC Drivers' 'D' 'Installed'", "put .odbcinst.ini 'D' (null) (null)",
                         "put .odbcinst.ini 'D' 'Driver' (null)", "put .odbcinst.ini 'D' 'Driver' '/l/d.so'"}));
    }
}

TEST(StoreCalls, OfATranslatorDeleteItsSectionAndNoKey) {
    const TestHome home;
    TestRecord record;
    record.item(TranslatorItem, "T").file("Translator", "t.so").file("Setup", "t.so");
    EXPECT_EQ(updateCalls(record, 0, 0, "/l/t.so"),
              (Calls{"put .odbcinst.ini 'ODBC Translators' 'T' 'Installed'", "put .odbcinst.ini 'T' (null) (null)",
                     "put .odbcinst.ini 'T' 'Translator' '/l/t.so'", "put .odbcinst.ini 'T' 'Setup' '/l/t.so'"}));
}

TEST(StoreCalls, OfASetupFileReplaceOneKey) {
    const TestHome home;
    TestRecord record;
    record.item(DriverItem, "D").file("Setup", "s.so");
    EXPECT_EQ(updateCalls(record, 0, 0, "/l/s.so"),
              (Calls{"put .odbcinst.ini 'D' 'Setup' (null)", "put .odbcinst.ini 'D' 'Setup' '/l/s.so'"}));
}

TEST(StoreCalls, OfOtherFilesAreNone) {
    const TestHome home;
    TestRecord record;
    record.item(CoreItem, "ODBC").file("Driver", "d.so").file("Setup", "s.so").file("Help", "h");
    for (unsigned long file = 0; file < 3; ++file)
        EXPECT_EQ(updateCalls(record, 0, file, "/l/x"), Calls{});
}

TEST(StoreCalls, OfDataSourcesHandOnNamesUntrimmedButForTheBlanksBehindAComma) {
    const TestHome home({{".odbcinst.ini", "[D]\nDriver=/l/d.so\n"}});
    EXPECT_EQ(dataSourceCalls(" A  ,    B "),
              (Calls{kDataSourceList, "put .odbc.ini 'ODBC Data Sources' (null) (null)",
                     "put .odbc.ini 'ODBC Data Sources' ' A  ' 'D'", "put .odbc.ini ' A  ' (null) (null)",
                     "put .odbc.ini ' A  ' 'Driver' (null)", kLibraryOfD, "put .odbc.ini ' A  ' 'Driver' '/l/d.so'",
                     kDataSourceList, "put .odbc.ini 'ODBC Data Sources' 'B ' 'D'", "put .odbc.ini 'B ' (null) (null)",
                     "put .odbc.ini 'B ' 'Driver' (null)", kLibraryOfD, "put .odbc.ini 'B ' 'Driver' '/l/d.so'"}));
}

TEST(StoreCalls, OfADataSourceWithoutALibraryHandOnTheAnswerForNone) {
    const TestHome home({{".odbc.ini", "[ODBC Data Sources]\n"}});
    EXPECT_EQ(dataSourceCalls("A"),
              (Calls{kDataSourceList, "put .odbc.ini 'ODBC Data Sources' 'A' 'D'", "put .odbc.ini 'A' (null) (null)",
                     "put .odbc.ini 'A' 'Driver' (null)", kLibraryOfD, "put .odbc.ini 'A' 'Driver' 'NOT AVAILABLE'"}));
}

TEST(StoreCalls, OfAKeywordListReadNothingAndWriteDriverThenSetupTwiceThenTheKeys) {
    const TestHome home;
    char path[64];
    const RecordedStore store;
    SQLInstallDriver(nullptr, "D\0Driver=/l/d.so\0Setup=/x/s.so\0B=1\0A=2\0Driver=/no\0", path, sizeof path, nullptr);
    EXPECT_EQ(store.calls, (Calls{"put .odbcinst.ini 'D' 'Driver' '/l/d.so'", "put .odbcinst.ini 'D' 'Setup' '/l/d.so'",
                                  "put .odbcinst.ini 'D' 'Setup' '/l/s.so'", "put .odbcinst.ini 'D' 'B' '1'",
                                  "put .odbcinst.ini 'D' 'A' '2'"}));
}

TEST(StoreCalls, OfAnInstallationFromAScriptReadTheRegisteredDriverThenTheScriptKeyByKey) {
    const TestHome home({{"odbc.inf",
                          "[D]\n\"Driver\"=1,d.so,\n\"Setup\"=1,s.so,\n[D-Keys]\nSQLLevel=1\n"
                          "ConnectFunctions=CreateDSN\n"},
                         {".odbc.ini", "[ODBC Data Sources]\n"}});
    const std::string script = home.file("odbc.inf");
    char path[64];
    const RecordedStore store;
    EXPECT_EQ(SQLInstallDriver(script.c_str(), "D", path, sizeof path, nullptr), TRUE);
    EXPECT_EQ(store.calls, (Calls{kLibraryOfD,
                                  "get odbc.inf 'D' '\"Driver\"' 'NOT AVAILABLE' 1024",
                                  "put .odbcinst.ini 'D' 'Driver' 'NOT AVAILABLE/d.so'",
                                  "put .odbcinst.ini 'D' 'Setup' 'NOT AVAILABLE/d.so'",
                                  "get odbc.inf 'D' '\"Setup\"' 'NOT AVAILABLE' 1024",
                                  "put .odbcinst.ini 'D' 'Setup' 'NOT AVAILABLE/s.so'",
                                  "get odbc.inf 'D-Keys' (null) 'NOT AVAILABLE' 1024",
                                  "get odbc.inf 'D-Keys' 'APILevel' 'NOT AVAILABLE' 1024",
                                  "get odbc.inf 'D-Keys' 'CreateDSN' 'NOT AVAILABLE' 1024",
                                  "get odbc.inf 'D-Keys' 'ConnectFunctions' 'NOT AVAILABLE' 1024",
                                  kDataSourceList,
                                  "put .odbc.ini 'ODBC Data Sources' 'CreateDSN' 'D'",
                                  "put .odbc.ini 'CreateDSN' (null) (null)",
                                  "put .odbc.ini 'CreateDSN' 'Driver' (null)",
                                  kLibraryOfD,
                                  "put .odbc.ini 'CreateDSN' 'Driver' 'NOT AVAILABLE/d.so'",
                                  "get odbc.inf 'D-Keys' 'DriverODBCVer' 'NOT AVAILABLE' 1024",
                                  "get odbc.inf 'D-Keys' 'FileUsage' 'NOT AVAILABLE' 1024",
                                  "get odbc.inf 'D-Keys' 'FileExtns' 'NOT AVAILABLE' 1024",
                                  "get odbc.inf 'D-Keys' 'SQLLevel' 'NOT AVAILABLE' 1024",
                                  "put .odbcinst.ini 'D' 'SQLLevel' '1'"}));
}

TEST(StoreCalls, OfAnInstallationFromAScriptEndWithoutADriverLineOrAKeysSection) {
    const TestHome home({{"odbc.inf", "[D]\n\"Driver\"=1,d.so,\n"}});
    const std::string script = home.file("odbc.inf");
    char path[64];
    RecordedStore store;
    EXPECT_EQ(SQLInstallDriver(script.c_str(), "E", path, sizeof path, nullptr), FALSE);
    EXPECT_EQ(store.calls, (Calls{"get .odbcinst.ini 'E' 'Driver' 'NOT AVAILABLE' 1024",
                                  "get odbc.inf 'E' '\"Driver\"' 'NOT AVAILABLE' 1024"}));
    store.calls.clear();
    EXPECT_EQ(SQLInstallDriver(script.c_str(), "D", path, sizeof path, nullptr), TRUE);
    EXPECT_EQ(store.calls.back(), "get odbc.inf 'D-Keys' (null) 'NOT AVAILABLE' 1024");
}

TEST(StoreCalls, OfABatchReadTheScriptInTheOrderOfItsStepsAndKeyListsOfFilesThroughACache) {
    const TestHome home({{"odbc.inf", "[D]\n\"Driver\"=" + scriptLine("d.so") + "\n\"Help\"=" + scriptLine("h") +
                                          "\n[D-Keys]\nAPILevel=1\n[ODBC]\n"}});
    const std::string script = home.file("odbc.inf");
    const std::string none = "' (null) 'NOT AVAILABLE' 1024";
    WritableText list("D\0"s);
    RecordedStore store;
    SQLInstallODBC(0, script.c_str(), "/l", reinterpret_cast<char*>(list.bytes()));
    Calls expected{"get odbc.inf 'D-Keys" + none};
    for (const char* key : kCapabilityKeys)
        expected.push_back("get odbc.inf 'D-Keys' '"s + key + "' 'NOT AVAILABLE' 1024");
    for (const char* section : {"ODBC Translators", "ODBC Driver Manager", "ODBC Administrator", "ODBC"})
        expected.push_back("get odbc.inf '"s + section + none);
    for (const char* call :
         {"open odbc.inf", "get cache 'D' (null) 'NOT AVAILABLE' 1024", "close",
          "get odbc.inf 'D' '\"Driver\"' 'NOT AVAILABLE' 1024", "get odbc.inf 'D' '\"Help\"' 'NOT AVAILABLE' 1024",
          "open odbc.inf", "get cache 'ODBC' (null) 'NOT AVAILABLE' 1024", "close"})
        expected.emplace_back(call);
    ASSERT_GT(store.calls.size(), expected.size());
    store.calls.resize(expected.size());
    EXPECT_EQ(store.calls, expected);
}

}  // namespace
