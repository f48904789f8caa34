// The store's own interface: how long a change waits, many settings at once, a whole text.
#include <jxini.h>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <string>
#include <thread>

#include "disk_check.h"
#include "faulty_files.h"
#include "test_home.h"

namespace jx::ini::test {
namespace {

using jx::test::TestHome;

std::string lastSentence() {
    char room[1000];
    EXPECT_LT(jxIniFailureText(room, sizeof room), sizeof room);
    return room;
}

TEST(JxIniChange, AThreadSaysHowLongItWaitsForALock) {
    struct Row {
        long milliseconds;
        const char* sentence;
    };
    const Row rows[] = {{0, "another writer has it locked"},
                        {1, "another writer kept it locked for 0.001 seconds"},
                        {1000, "another writer kept it locked for 1 second"},
                        {2500, "another writer kept it locked for 2.5 seconds"}};
    const TestHome home;
    FaultyFiles clock(1'000'000, Fail::once, EIO);
    const InUse inUse(clock);
    JxIniChange* first = jxIniBegin(".odbc.ini");
    EXPECT_EQ(jxIniSetLockWait(-1), -1);
    for (const Row& row : rows) {
        jxIniSetLockWait(row.milliseconds);
        EXPECT_EQ(jxIniBegin(".odbc.ini"), nullptr);
        EXPECT_EQ(jxIniLastFailure().error, ETIMEDOUT);
        EXPECT_EQ(lastSentence(), "Cannot lock " + home.file(".odbc.ini.jxlock") + ": " + row.sentence);
        EXPECT_EQ(jxIniSetLockWait(10000), row.milliseconds);
    }
    std::thread([] { EXPECT_EQ(jxIniSetLockWait(5), 10000); }).join();
    EXPECT_EQ(jxIniSetLockWait(10000), 10000);
    jxIniDiscard(first);
}

TEST(JxIniChange, ManySettingsAreStoredOrNone) {
    const TestHome home({{".odbc.ini", "[A]\nb=c\n"}});
    JxIniChange* change = jxIniBegin(".odbc.ini");
    const JxIniSetting good[] = {{"A", "b", "d"}, {"N", "x", "1"}, {"a", "B", "e"}};
    const JxIniSetting bad[] = {{"A", "b", "f"}, {"A", "x=y", "1"}};
    const JxIniSetting null[] = {{"A", nullptr, "f"}};
    EXPECT_EQ(jxIniSetAll(change, good, 3), 1);
    EXPECT_EQ(jxIniSetAll(change, bad, 2), 0);
    EXPECT_EQ(lastSentence(), home.file(".odbc.ini") + ": cannot store the key \"x=y\": it holds =");
    EXPECT_EQ(jxIniSetAll(change, null, 1), 0);
    EXPECT_EQ(jxIniSetAll(change, nullptr, 1), 0);
    EXPECT_EQ(jxIniSetAll(nullptr, good, 1), 0);
    EXPECT_EQ(jxIniSetAll(change, nullptr, 0), 1);
    EXPECT_EQ(jxIniCommit(change), 1);
    EXPECT_EQ(home.text(".odbc.ini"), "[A]\nb=e\n\n[N]\nx=1\n");
}

TEST(JxIniChange, TheWholeTextIsReplaced) {
    const TestHome home({{".odbc.ini", "; old\n[A]\nb=c\n"}});
    const std::string bytes("\0[x\r\n[B]\nk=v", 12);
    JxIniChange* change = jxIniBegin(".odbc.ini");
    EXPECT_EQ(jxIniReplace(change, nullptr, 1), 0);
    EXPECT_EQ(jxIniReplace(change, bytes.data(), bytes.size()), 1);
    EXPECT_EQ(jxIniSet(change, "B", "k", "w"), 1);
    EXPECT_EQ(jxIniCommit(change), 1);
    EXPECT_EQ(home.text(".odbc.ini"), bytes.substr(0, 11) + "w");
    change = jxIniBegin(".odbc.ini");
    EXPECT_EQ(jxIniReplace(change, nullptr, 0), 1);
    EXPECT_EQ(jxIniCommit(change), 1);
    EXPECT_EQ(home.text(".odbc.ini"), "");
}

TEST(JxIniChange, ReplacingATextByItselfLeavesTheFileUntouched) {
    const TestHome home({{".odbc.ini", "[A]\nb=c\n"}});
    struct stat before {};
    struct stat after {};
    ASSERT_EQ(stat(home.file(".odbc.ini").c_str(), &before), 0);
    JxIniChange* change = jxIniBegin(".odbc.ini");
    EXPECT_EQ(jxIniReplace(change, "[A]\nb=c\n", 8), 1);
    EXPECT_EQ(jxIniCommit(change), 1);
    ASSERT_EQ(stat(home.file(".odbc.ini").c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
}

}  // namespace
}  // namespace jx::ini::test
