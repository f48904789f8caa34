// Each allocation of a call fails, once and from then on: the call succeeds or changes nothing, and says which.
#include <gtest/gtest.h>

#include <functional>

#include "allocations.h"
#include "installer_home.h"

using namespace jx::test;

namespace {

constexpr char kBefore[] = "[ODBC Data Sources]\nOld=PG\n\n[Old]\nDriver=/opt/pg.so\nPWD@env=JX_TEST_SECRET\n";
constexpr char kDriversBefore[] = "[ODBC Drivers]\nPG=Installed\n\n[PG]\nDriver=/opt/pg.so\nUsageCount=1\n";

void prepare(const InstallerHome& home) {
    home.put(kUserSources, kBefore);
    home.put(kSystemDrivers, kDriversBefore);
}

std::string files(const InstallerHome& home) {
    return home.text(kUserSources) + "--\n" + home.text(kSystemDrivers);
}

// Runs the call with each allocation failing: FALSE leaves the files as they were and posts, TRUE leaves them as
// without a failure.
void expectWholeOrNothing(const std::function<BOOL()>& call) {
    const InstallerHome home;
    prepare(home);
    const std::string before = files(home);
    ASSERT_EQ(call(), TRUE) << record(1);
    const std::string after = files(home);
    const int failures = failEachAllocationOfNewThread([&](ShortMemory& memory) {
        prepare(home);
        memory.begin();
        const BOOL done = call();
        memory.end();
        EXPECT_EQ(files(home), done == TRUE ? after : before);
        EXPECT_TRUE(done == TRUE || done == FALSE);
        if (done == FALSE) {
            EXPECT_NE(firstCode(), DWORD{0});
        }
    });
    EXPECT_GT(failures, 3);
}

TEST(ShortMemoryOfTheInstaller, AWriteIsWholeOrNotMade) {
    expectWholeOrNothing([] { return SQLWritePrivateProfileString("Old", "Server", "db", "odbc.ini"); });
    expectWholeOrNothing(
        [] { return SQLWritePrivateProfileStringW(wide(u"Old"), wide(u"Server"), wide(u"db"), wide(u"odbc.ini")); });
}

TEST(ShortMemoryOfTheInstaller, AnEntryIsWholeOrNotMade) {
    expectWholeOrNothing([] { return SQLWriteDSNToIni("New", "PG"); });
    expectWholeOrNothing([] { return SQLRemoveDSNFromIni("Old"); });
}

TEST(ShortMemoryOfTheInstaller, AnInstallationIsWholeOrNotMade) {
    expectWholeOrNothing([] {
        char path[64];
        return SQLInstallDriverEx("PG\0Driver=/opt/pg.so\0k=v\0", nullptr, path, sizeof path, nullptr,
                                  ODBC_INSTALL_COMPLETE, nullptr);
    });
    expectWholeOrNothing([] {
        SQLWCHAR path[64];
        return SQLInstallTranslatorExW(wide(u"T\0Translator=/opt/t.so\0"), nullptr, path, 64, nullptr,
                                       ODBC_INSTALL_COMPLETE, nullptr);
    });
}

TEST(ShortMemoryOfTheInstaller, TheGenericRoutineIsWholeOrNotMade) {
    expectWholeOrNothing(
        [] { return SQLConfigDataSource(nullptr, ODBC_ADD_DSN, "PG", "DSN=New\0Server=a\0Port=1\0"); });
    expectWholeOrNothing([] { return SQLConfigDataSource(nullptr, ODBC_CONFIG_DSN, "PG", "DSN=Old\0Server=a\0"); });
    expectWholeOrNothing([] { return SQLConfigDataSource(nullptr, ODBC_REMOVE_DSN, "PG", "DSN=Old\0"); });
}

TEST(ShortMemoryOfTheInstaller, ALookUpGivesTheValueOrTheDefault) {
    const InstallerHome home;
    prepare(home);
    const TestVariable variable("JX_TEST_SECRET", "a secret that is longer than any short text");
    const TestVariable log("JXODBC_LOG", home.file("log"));
    failEachAllocationOfNewThread([&](ShortMemory& memory) {
        char room[128];
        memory.begin();
        SQLGetPrivateProfileString("Old", "PWD", "default", room, sizeof room, "odbc.ini");
        const bool failed = memory.end();
        const std::string got = room;
        EXPECT_TRUE(got == "default" || got == "a secret that is longer than any short text") << got;
        EXPECT_TRUE(failed || got != "default");
    });
    failEachAllocationOfNewThread([&](ShortMemory& memory) {
        char room[128];
        memory.begin();
        const int count = SQLGetPrivateProfileString(nullptr, nullptr, "", room, sizeof room, "odbc.ini");
        memory.end();
        EXPECT_TRUE(count == 0 || count == 22) << count;
    });
}

TEST(ShortMemoryOfTheInstaller, ARemovalTellsWhatItDid) {
    const InstallerHome home;
    failEachAllocationOfNewThread([&](ShortMemory& memory) {
        prepare(home);
        memory.begin();
        DWORD count = 99;
        const BOOL done = SQLRemoveDriver("PG", FALSE, &count);
        memory.end();
        const std::string left = home.text(kSystemDrivers);
        if (done == TRUE) {
            EXPECT_EQ(left, "[ODBC Drivers]\n\n");
        } else {
            EXPECT_NE(firstCode(), DWORD{0});
            EXPECT_NE(left.find("/opt/pg.so"), std::string::npos);
        }
        EXPECT_EQ(home.text(kUserSources), kBefore);
    });
}

TEST(ShortMemoryOfTheInstaller, APostedRecordIsThereOrRefused) {
    failEachAllocationOfNewThread([&](ShortMemory& memory) {
        memory.begin();
        const RETCODE posted = SQLPostInstallerError(ODBC_ERROR_GENERAL_ERR, "a text that is longer than a short one");
        memory.end();
        EXPECT_TRUE(posted == SQL_SUCCESS || posted == SQL_ERROR);
    });
}

}  // namespace
