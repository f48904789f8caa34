// Which reads and writes the members make, in which order and with which sizes, and what they do with odd answers.
#include <gtest/gtest.h>
#include <jxprofile.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "guarded_buffer.h"
#include "message_box_script.h"
#include "setup_calls.h"

// The file a cache stands for.
struct JxIniFileCache {
    std::string file;
};

namespace jx::test {

namespace {

using namespace std::string_literals;

std::string textOf(const unsigned char* text) {
    return text == nullptr ? "(null)" : "'" + std::string(reinterpret_cast<const char*>(text)) + "'";
}

// Store: what was asked of it and what it answers. A key with no answer has the default.
struct Store {
    Lines calls;
    std::map<std::string, std::string> answers;
    std::vector<int> writeResults;
    std::size_t writes = 0;
    int openCaches = 0;
    bool memoryIsShort = false;
    std::string failing;  // the look-up that fails without touching its buffer
};

Store store;

int get(const std::string& file, const unsigned char* section, const unsigned char* key, const unsigned char* fallback,
        unsigned char* buffer, int size) {
    store.calls.push_back("get " + file + " " + textOf(section) + " " + textOf(key) + " " + textOf(fallback) + " " +
                          std::to_string(size));
    if (textOf(section) + " " + textOf(key) == store.failing)
        return 0;
    const auto found = store.answers.find(textOf(section) + " " + textOf(key));
    const std::string answer =
        found == store.answers.end() ? std::string(reinterpret_cast<const char*>(fallback)) : found->second;
    const std::size_t copied = std::min(answer.size(), static_cast<std::size_t>(size) - 1);
    std::memcpy(buffer, answer.data(), copied);
    buffer[copied] = 0;
    return static_cast<int>(copied);
}

int put(const std::string& file, const unsigned char* section, const unsigned char* key, const unsigned char* value) {
    store.calls.push_back("put " + file + " " + textOf(section) + " " + textOf(key) + " " + textOf(value));
    const std::size_t write = store.writes++;
    return write < store.writeResults.size() ? store.writeResults[write] : 1;
}

std::string fileOf(const unsigned char* file) {
    return reinterpret_cast<const char*>(file);
}

// Every test begins with an empty store that nobody has asked.
class WatchedStore : public ::testing::Test {
protected:
    WatchedStore() { store = Store{}; }
    ~WatchedStore() override { EXPECT_EQ(store.openCaches, 0); }
};

// Names of a list as the object holds them.
std::vector<std::string> namesOf(const OdbcIns& ins) {
    std::vector<std::string> names;
    for (std::uint32_t row = 0; row < ins.entryCount; ++row)
        names.emplace_back(reinterpret_cast<const char*>(ins.entries[row].name));
    return names;
}

}  // namespace

}  // namespace jx::test

int jxGetPrivateProfileString(const unsigned char* section, const unsigned char* key, const unsigned char* fallback,
                              unsigned char* buffer, int size, const unsigned char* file) {
    return jx::test::get(jx::test::fileOf(file), section, key, fallback, buffer, size);
}

int jxGetPrivateProfileString(const unsigned char* section, const unsigned char* key, const unsigned char* fallback,
                              unsigned char* buffer, int size, JxIniFileCache* cache) {
    return cache == nullptr ? 0 : jx::test::get("cache " + cache->file, section, key, fallback, buffer, size);
}

int jxWritePrivateProfileString(const unsigned char* section, const unsigned char* key, const unsigned char* value,
                                const unsigned char* file) {
    return jx::test::put(jx::test::fileOf(file), section, key, value);
}

int jxWritePrivateProfileString(const unsigned char* section, const unsigned char* key, const unsigned char* value,
                                JxIniFileCache* cache) {
    return cache == nullptr ? 0 : jx::test::put("cache " + cache->file, section, key, value);
}

JxIniFileCache* jxPrivateProfileInit(const unsigned char* file) {
    if (jx::test::store.memoryIsShort)
        return nullptr;
    ++jx::test::store.openCaches;
    return new JxIniFileCache{jx::test::fileOf(file)};
}

void jxPrivateProfileTerm(JxIniFileCache* cache) {
    if (cache != nullptr)
        --jx::test::store.openCaches;
    delete cache;
}

namespace jx::test {

TEST_F(WatchedStore, SeesTheUserFilesInTheirOwnSpellingAndOtherNamesThroughACache) {
    GuardedBuffer buffer(50);
    const auto read = [&](const char* file) {
        store.calls.clear();
        SQLGetPrivateProfileString("A", "x", "d", buffer.data(), 50, file);
        SQLWritePrivateProfileString("A", "x", "1", file);
        return store.calls;
    };
    EXPECT_EQ(read(".ODBC.INI"), (Lines{"get .odbc.ini 'A' 'x' 'd' 50", "put .odbc.ini 'A' 'x' '1'"}));
    EXPECT_EQ(read(".OdbcInst.ini"), (Lines{"get .odbcinst.ini 'A' 'x' 'd' 50", "put .odbcinst.ini 'A' 'x' '1'"}));
    EXPECT_EQ(read("Other.ini"), (Lines{"get cache Other.ini 'A' 'x' 'd' 50", "put cache Other.ini 'A' 'x' '1'"}));
    EXPECT_EQ(read("./.odbc.ini"),
              (Lines{"get cache ./.odbc.ini 'A' 'x' 'd' 50", "put cache ./.odbc.ini 'A' 'x' '1'"}));
}

TEST_F(WatchedStore, TheNamesComeFromTheExportedPointers) {
    const char* own = INS_ODBCINI_FILENAME;
    INS_ODBCINI_FILENAME = "moved.ini";
    SQLWritePrivateProfileString("A", "x", "1", "MOVED.INI");
    INS_ODBCINI_FILENAME = own;
    EXPECT_EQ(store.calls, (Lines{"put moved.ini 'A' 'x' '1'"}));
}

TEST_F(WatchedStore, IsAnsweredFailureWithoutMemoryForACache) {
    store.memoryIsShort = true;
    GuardedBuffer buffer(10);
    EXPECT_EQ(SQLGetPrivateProfileString("A", "x", "d", buffer.data(), 10, "other.ini"), 0);
    EXPECT_EQ(buffer.all(), std::string(10, '\0'));
    EXPECT_EQ(SQLWritePrivateProfileString("A", "x", "1", "other.ini"), FALSE);
    EXPECT_EQ(store.calls, Lines{});
}

TEST_F(WatchedStore, SeesADataSourceRemovedThenReadThenEntered) {
    store.answers["'Sample Driver' 'Driver'"] = "/opt/s.so";
    EXPECT_EQ(SQLWriteDSNToIni("Sales", "Sample Driver"), TRUE);
    EXPECT_EQ(store.calls,
              (Lines{"put .odbc.ini 'ODBC Data Sources' 'Sales' (null)", "put .odbc.ini 'Sales' (null) (null)",
                     "get .odbcinst.ini 'Sample Driver' 'Driver' '' 1024",
                     "put .odbc.ini 'ODBC Data Sources' 'Sales' 'Sample Driver'",
                     "put .odbc.ini 'Sales' 'Driver' '/opt/s.so'"}));
}

TEST_F(WatchedStore, SeesADefaultInLowerCaseEnteredAsTheDefaultButRemovedAsAnOrdinaryName) {
    store.answers["'D' 'Driver'"] = "/opt/s.so";
    EXPECT_EQ(SQLWriteDSNToIni("default", "D"), TRUE);
    EXPECT_EQ(store.calls,
              (Lines{"put .odbc.ini 'ODBC Data Sources' 'default' (null)", "put .odbc.ini 'default' (null) (null)",
                     "get .odbcinst.ini 'D' 'Driver' '' 1024", "put .odbcinst.ini 'Default' 'Driver' 'D'",
                     "put .odbc.ini 'default' 'Driver' '/opt/s.so'"}));
    store.calls.clear();
    EXPECT_EQ(SQLRemoveDSNFromIni("Default"), TRUE);
    EXPECT_EQ(store.calls,
              (Lines{"put .odbcinst.ini 'Default' (null) (null)", "put .odbc.ini 'Default' (null) (null)"}));
}

TEST_F(WatchedStore, IsLeftAloneAfterTheFirstFailedWriteOfAnEntry) {
    store.answers["'D' 'Driver'"] = "/opt/s.so";
    OdbcIns ins;
    unsigned char dsn[] = "Sales";
    unsigned char driver[] = "D";
    store.writeResults = {0};
    EXPECT_EQ(ins.jxSQLWriteDSNToIni(dsn, driver), 0);
    EXPECT_EQ(store.calls.size(), 2U);
    store = Store{};
    store.answers["'D' 'Driver'"] = "/opt/s.so";
    store.writeResults = {1, 0};
    EXPECT_EQ(ins.jxSQLWriteDSNToIni(dsn, driver), 0);
    EXPECT_EQ(store.calls.size(), 3U);
}

TEST_F(WatchedStore, KeepsTheSectionOfADataSourceWhoseKeyCouldNotBeDeleted) {
    store.writeResults = {0};
    EXPECT_EQ(SQLRemoveDSNFromIni("Sales"), FALSE);
    EXPECT_EQ(store.calls, (Lines{"put .odbc.ini 'ODBC Data Sources' 'Sales' (null)"}));
    store = Store{};
    store.writeResults = {0};
    EXPECT_EQ(SQLRemoveDSNFromIni("Default"), FALSE);
    EXPECT_EQ(store.calls, (Lines{"put .odbcinst.ini 'Default' (null) (null)"}));
    store = Store{};
    store.writeResults = {1, 0};
    EXPECT_EQ(SQLRemoveDSNFromIni("Sales"), FALSE);
    EXPECT_EQ(store.calls.size(), 2U);
}

TEST_F(WatchedStore, GoesOnWithAnEntryWhoseRemovalFailed) {
    store.answers["'D' 'Driver'"] = "/opt/s.so";
    store.writeResults = {0, 1, 1};
    EXPECT_EQ(SQLWriteDSNToIni("Sales", "D"), TRUE);
    EXPECT_EQ(store.calls.size(), 4U);
}

TEST_F(WatchedStore, SeesTheRemovalOfTheDefaultAsOneWriteOfAnEmptyKey) {
    EXPECT_EQ(SQLRemoveDefaultDataSource(), TRUE);
    EXPECT_EQ(store.calls, (Lines{"put .odbc.ini 'Default' '' ''"}));
    store.writeResults = {1, 0, 65536, 65535};
    EXPECT_EQ(SQLRemoveDefaultDataSource(), 0);
    EXPECT_EQ(SQLRemoveDefaultDataSource(), 0);
    EXPECT_EQ(SQLRemoveDefaultDataSource(), -1);
}

TEST_F(WatchedStore, IsAskedForNamesThenTheDefaultThenEachDriver) {
    store.answers["'ODBC Data Sources' (null)"] = "A\0B\0"s;
    store.answers["'Default' 'Driver'"] = "D";
    OdbcIns ins;
    EXPECT_EQ(ins.GetDataSourceNames(), 0U);
    EXPECT_EQ(ins.GetDriverNames(), 0U);
    EXPECT_EQ(store.calls,
              (Lines{"get .odbc.ini 'ODBC Data Sources' (null) '' 1024", "get .odbcinst.ini 'Default' 'Driver' '' 50",
                     "get .odbc.ini 'ODBC Data Sources' 'A' '' 1024", "get .odbc.ini 'ODBC Data Sources' 'B' '' 1024",
                     "get .odbcinst.ini 'Default' 'Driver' '' 1024"}));
    ins.ResetData(ResetAll);
}

TEST_F(WatchedStore, IsNotAskedForTheDefaultWhenTheSectionIsEmptyNorForDriversOfAnEmptyList) {
    store.answers["'Default' 'Driver'"] = "D";
    OdbcIns ins;
    EXPECT_EQ(ins.GetDataSourceNames(), 1U);
    ins.hasDefault = 1;
    EXPECT_EQ(ins.GetDriverNames(), 0U);
    EXPECT_EQ(store.calls, (Lines{"get .odbc.ini 'ODBC Data Sources' (null) '' 1024"}));
}

TEST_F(WatchedStore, MayGiveItemsWithValuesAsNames) {
    store.answers["'ODBC Data Sources' (null)"] = "A=Driver One\0B\0C=x=y\0=z\0"s;
    OdbcIns ins;
    EXPECT_EQ(ins.GetDataSourceNames(), 0U);
    EXPECT_EQ(namesOf(ins), (std::vector<std::string>{"A", "B", "C", ""}));
    ins.ResetData(ResetAll);
}

TEST_F(WatchedStore, MayFailForOneDriverWhichIsThenEmpty) {
    for (const std::string failing : {"'ODBC Data Sources' 'B'", "'Default' 'Driver'"}) {
        store = Store{};
        store.answers["'ODBC Data Sources' (null)"] = "A\0B\0"s;
        store.answers["'ODBC Data Sources' 'A'"] = "Driver One";
        store.answers["'ODBC Data Sources' 'B'"] = "Driver Two";
        store.answers["'Default' 'Driver'"] = "Driver Three";
        OdbcIns ins;
        EXPECT_EQ(ins.GetDataSourceNames(), 0U);
        store.failing = failing;
        EXPECT_EQ(ins.GetDriverNames(), 0U);
        const std::size_t row = failing.find('B') == std::string::npos ? 2 : 1;
        EXPECT_STREQ(reinterpret_cast<const char*>(ins.entries[row].driver), "");
        ins.ResetData(ResetAll);
    }
}

TEST_F(WatchedStore, MayFailForASetupPathWhichIsThenEmpty) {
    const MessageBoxScript boxes;
    store.failing = "'Latin' 'Setup'";
    unsigned char name[] = "Latin";
    GuardedBuffer path(255);
    OdbcIns ins;
    EXPECT_EQ(ins.jxConfigTranslator(77, name, path.bytes(), nullptr), 0);
    EXPECT_EQ(path.all(), std::string(255, '\0'));
}

TEST_F(WatchedStore, MayGiveAListThatIsCutInsideAName) {
    for (const std::size_t length : {1022U, 1023U, 1024U, 70000U}) {
        store.answers["'ODBC Data Sources' (null)"] = "A\0"s + std::string(length, 'x');
        OdbcIns ins;
        EXPECT_EQ(ins.GetDataSourceNames(), 0U);
        EXPECT_EQ(namesOf(ins), (std::vector<std::string>{"A", std::string(std::min<std::size_t>(length, 1021), 'x')}));
        ins.ResetData(ResetAll);
    }
}

TEST_F(WatchedStore, IsAskedForDriversWithTheAnswerForNone) {
    GuardedBuffer buffer(100);
    EXPECT_EQ(SQLGetInstalledDrivers(buffer.data(), 100, nullptr), FALSE);
    EXPECT_EQ(SQLGetAvailableDrivers("/a/ODBC.inf", buffer.data(), 100, nullptr), FALSE);
    EXPECT_EQ(store.calls, (Lines{"get .odbcinst.ini 'ODBC Drivers' (null) 'NOT AVAILABLE' 1024",
                                  "get /a/ODBC.inf 'ODBC Drivers' (null) 'NOT AVAILABLE' 1024"}));
}

TEST_F(WatchedStore, IsNotAskedForDriversThatNobodyCanReceive) {
    GuardedBuffer buffer(100);
    SQLGetInstalledDrivers(nullptr, 100, nullptr);
    SQLGetInstalledDrivers(buffer.data(), 0, nullptr);
    SQLGetAvailableDrivers("/a/setup.inf", buffer.data(), 100, nullptr);
    EXPECT_EQ(store.calls, Lines{});
}

TEST_F(WatchedStore, MayGiveALastQuotedKeyThatIsCut) {
    const std::string rest(1100, 'x');
    store.answers["'ODBC Drivers' (null)"] = "\"A\"\0\""s + rest;
    GuardedBuffer buffer(2000);
    WORD length = 0;
    EXPECT_EQ(SQLGetAvailableDrivers("odbc.inf", buffer.data(), 2000, &length), TRUE);
    EXPECT_EQ(length, 2 + 1018 + 1);
    EXPECT_EQ(buffer.all(), "A\0"s + rest.substr(0, 1018) + std::string(2000 - 2 - 1018, '\0'));
    store.answers["'ODBC Drivers' (null)"] = "\"" + rest.substr(0, 1019) + "\"\0\"B\""s;
    EXPECT_EQ(SQLGetAvailableDrivers("odbc.inf", buffer.data(), 2000, &length), TRUE);
    EXPECT_EQ(buffer.all(), rest.substr(0, 1019) + std::string(2000 - 1019, '\0'));
    store.answers["'ODBC Drivers' (null)"] = "\"" + rest.substr(0, 1018) + "\"\0\0"s;
    EXPECT_EQ(SQLGetAvailableDrivers("odbc.inf", buffer.data(), 2000, &length), TRUE);
    EXPECT_EQ(length, 1019);
}

TEST_F(WatchedStore, IsAskedForTheDataSourceThenForTheSetupLibrary) {
    store.answers["'Sales' (null)"] = "Driver\0"s;
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_CONFIG_DSN, "D", "DSN=Sales\0"), FALSE);
    EXPECT_EQ(store.calls,
              (Lines{"get .odbc.ini 'Sales' (null) 'NOT AVAILABLE' 1024", "get .odbcinst.ini 'D' 'Setup' '' 1024"}));
}

TEST_F(WatchedStore, IsNotAskedForASetupLibraryOfAnAbsentDataSource) {
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_CONFIG_DSN, "D", "DSN=Sales\0"), FALSE);
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_REMOVE_DSN, "D", "DSN=Sales\0"), FALSE);
    EXPECT_EQ(store.calls, (Lines{"get .odbc.ini 'Sales' (null) 'NOT AVAILABLE' 1024",
                                  "get .odbc.ini 'Sales' (null) 'NOT AVAILABLE' 1024"}));
}

TEST_F(WatchedStore, SeesTheOldEntryRemovedBeforeTheSetupLibraryIsLookedFor) {
    store.answers["'Sales' (null)"] = "Driver\0"s;
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_ADD_DSN, "D", "DSN=Sales\0"), FALSE);
    EXPECT_EQ(store.calls, (Lines{"get .odbc.ini 'Sales' (null) 'NOT AVAILABLE' 1024",
                                  "put .odbc.ini 'ODBC Data Sources' 'Sales' (null)",
                                  "put .odbc.ini 'Sales' (null) (null)", "get .odbcinst.ini 'D' 'Setup' '' 1024"}));
}

TEST_F(WatchedStore, SeesARemovalWithoutDriverAnsweredTrueWhateverTheStoreSays) {
    store.answers["'Sales' (null)"] = "Driver\0"s;
    store.writeResults = {0};
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_REMOVE_DSN, "D", "DSN=Sales\0"), TRUE);
    EXPECT_EQ(store.calls.back(), "put .odbc.ini 'ODBC Data Sources' 'Sales' (null)");
}

TEST_F(WatchedStore, IsNotAskedAboutAnAddWithoutAName) {
    EXPECT_EQ(SQLConfigDataSource(77, ODBC_ADD_DSN, "D", nullptr), FALSE);
    EXPECT_EQ(SQLConfigDataSource(77, ODBC_ADD_DSN, "D", "x\0"), FALSE);
    EXPECT_EQ(store.calls, (Lines{"get .odbcinst.ini 'D' 'Setup' '' 1024", "get .odbcinst.ini 'D' 'Setup' '' 1024"}));
}

TEST_F(WatchedStore, IsAskedForATranslatorsLibraryWith255Bytes) {
    const MessageBoxScript boxes;
    char name[] = "Latin";
    EXPECT_EQ(SQLGetTranslator(77, name, sizeof name, nullptr, nullptr, 0, nullptr, nullptr), TRUE);
    EXPECT_EQ(store.calls, (Lines{"get .odbcinst.ini 'Latin' 'Setup' '' 255"}));
}

}  // namespace jx::test
