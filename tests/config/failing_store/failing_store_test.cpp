// What the members do when writes fail or reads return what the real store never does, and in which order they write.
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

// Store: its calls and its answers. A key without an answer has the default.
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
    store.calls.push_back("get " + file + " " + textOf(section) + " " + textOf(key));
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

// Every test begins with an empty store and no calls.
class FailingStore : public ::testing::Test {
protected:
    FailingStore() { store = Store{}; }
    ~FailingStore() override { EXPECT_EQ(store.openCaches, 0); }
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

TEST_F(FailingStore, IsAnsweredFailureWithoutMemoryForACache) {
    store.memoryIsShort = true;
    GuardedBuffer buffer(10);
    EXPECT_EQ(SQLGetPrivateProfileString("A", "x", "d", buffer.data(), 10, "other.ini"), 0);
    EXPECT_EQ(buffer.all(), std::string(10, '\0'));
    EXPECT_EQ(SQLWritePrivateProfileString("A", "x", "1", "other.ini"), FALSE);
    EXPECT_EQ(store.calls, Lines{});
}

// A program that reads meanwhile never finds a data source whose section is another driver's.
TEST_F(FailingStore, SeesADataSourceRemovedWholeBeforeItIsEnteredAnew) {
    store.answers["'Sample Driver' 'Driver'"] = "/opt/s.so";
    EXPECT_EQ(SQLWriteDSNToIni("Sales", "Sample Driver"), TRUE);
    EXPECT_EQ(store.calls, (Lines{"put .odbc.ini 'ODBC Data Sources' 'Sales' (null)",
                                  "put .odbc.ini 'Sales' (null) (null)", "get .odbcinst.ini 'Sample Driver' 'Driver'",
                                  "put .odbc.ini 'ODBC Data Sources' 'Sales' 'Sample Driver'",
                                  "put .odbc.ini 'Sales' 'Driver' '/opt/s.so'"}));
}

TEST_F(FailingStore, IsLeftAloneAfterTheFirstFailedWriteOfAnEntry) {
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

TEST_F(FailingStore, KeepsTheSectionOfADataSourceWhoseKeyCouldNotBeDeleted) {
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

TEST_F(FailingStore, GoesOnWithAnEntryWhoseRemovalFailed) {
    store.answers["'D' 'Driver'"] = "/opt/s.so";
    store.writeResults = {0, 1, 1};
    EXPECT_EQ(SQLWriteDSNToIni("Sales", "D"), TRUE);
    EXPECT_EQ(store.calls.size(), 4U);
}

TEST_F(FailingStore, AnswersTheRemovalOfTheDefaultAsSixteenBits) {
    EXPECT_EQ(SQLRemoveDefaultDataSource(), TRUE);
    store.writeResults = {1, 0, 65536, 65535};
    EXPECT_EQ(SQLRemoveDefaultDataSource(), 0);
    EXPECT_EQ(SQLRemoveDefaultDataSource(), 0);
    EXPECT_EQ(SQLRemoveDefaultDataSource(), -1);
}

TEST_F(FailingStore, MayGiveItemsWithValuesAsNames) {
    store.answers["'ODBC Data Sources' (null)"] = "A=Driver One\0B\0C=x=y\0=z\0"s;
    OdbcIns ins;
    EXPECT_EQ(ins.GetDataSourceNames(), 0U);
    EXPECT_EQ(namesOf(ins), (std::vector<std::string>{"A", "B", "C", ""}));
    ins.ResetData(ResetAll);
}

TEST_F(FailingStore, MayFailForOneDriverWhichIsThenEmpty) {
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

TEST_F(FailingStore, MayFailForASetupPathWhichIsThenEmpty) {
    const MessageBoxScript boxes;
    store.failing = "'Latin' 'Setup'";
    unsigned char name[] = "Latin";
    GuardedBuffer path(255);
    OdbcIns ins;
    EXPECT_EQ(ins.jxConfigTranslator(77, name, path.bytes(), nullptr), 0);
    EXPECT_EQ(path.all(), std::string(255, '\0'));
}

TEST_F(FailingStore, SeesARemovalWithoutDriverAnsweredTrueWhateverTheStoreSays) {
    store.answers["'Sales' (null)"] = "Driver\0"s;
    store.writeResults = {0};
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_REMOVE_DSN, "D", "DSN=Sales\0"), TRUE);
    EXPECT_EQ(store.calls.back(), "put .odbc.ini 'ODBC Data Sources' 'Sales' (null)");
}

// The store trims names itself; one of a program's own may not.
TEST_F(FailingStore, IsHandedTheNamesOfDataSourcesWithTheBlanksBeforeTheirComma) {
    store.answers["'ODBC Data Sources' (null)"] = "Other";
    char path[64];
    SQLInstallDriver(nullptr, "D\0Driver=/l/d.so\0CreateDSN= A  ,   B \0", path, sizeof path, nullptr);
    Lines sections;
    for (const std::string& call : store.calls) {
        if (call.starts_with("put .odbc.ini 'ODBC Data Sources' "))
            sections.push_back(call.substr(34));
    }
    EXPECT_EQ(sections, (Lines{"' A  ' 'D'", "'B ' 'D'"}));
}

}  // namespace jx::test
