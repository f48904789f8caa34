// SQLConfigDataSource: which routine does it, in which mode, and what it leaves.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>

#include "setup_home.h"

using namespace jx::test;

namespace {

BOOL configure(WORD request, const char* driver, const char* attributes) {
    return SQLConfigDataSource(nullptr, request, driver, attributes);
}

UWORD mode() {
    UWORD mode = 99;
    SQLGetConfigMode(&mode);
    return mode;
}

TEST(DataSourceConfiguration, SysRequestsBecomePlainOnesWithTheModeSetToTheScope) {
    struct Row {
        WORD request;
        const char* call;
    };
    const Row rows[] = {{ODBC_ADD_DSN, "ConfigDSN 1 Narrow mode 1: DSN=Sales\n"},
                        {ODBC_CONFIG_DSN, "ConfigDSN 2 Narrow mode 1: DSN=Sales\n"},
                        {ODBC_REMOVE_DSN, "ConfigDSN 3 Narrow mode 1: DSN=Sales\n"},
                        {ODBC_ADD_SYS_DSN, "ConfigDSN 1 Narrow mode 2: DSN=Sales\n"},
                        {ODBC_CONFIG_SYS_DSN, "ConfigDSN 2 Narrow mode 2: DSN=Sales\n"},
                        {ODBC_REMOVE_SYS_DSN, "ConfigDSN 3 Narrow mode 2: DSN=Sales\n"}};
    for (const Row& row : rows)
        for (const char* does : {"", "fail"}) {
            SCOPED_TRACE(std::string(row.call) + does);
            const SetupHome home(does);
            SQLSetConfigMode(ODBC_SYSTEM_DSN);
            EXPECT_EQ(configure(row.request, "Narrow", "DSN=Sales\0"), *does == '\0' ? TRUE : FALSE);
            EXPECT_EQ(home.calls(), row.call);
            EXPECT_EQ(mode(), ODBC_BOTH_DSN) << "afterwards, also on failure";
        }
}

TEST(DataSourceConfiguration, TheModeIsBothAfterwardsAlsoWhenTheDriverIsUnknown) {
    const SetupHome home;
    SQLSetConfigMode(ODBC_USER_DSN);
    EXPECT_EQ(configure(ODBC_ADD_DSN, "Unknown", "DSN=Sales\0"), FALSE);
    EXPECT_EQ(record(1),
              "6: Driver \"Unknown\" is not registered: neither the user's nor the system's odbcinst.ini has it.");
    EXPECT_EQ(mode(), ODBC_BOTH_DSN);
}

TEST(DataSourceConfiguration, TheWRoutineComesFirst) {
    const SetupHome home;
    EXPECT_EQ(configure(ODBC_ADD_DSN, "Wide", "DSN=Sales\0Server=db\0"), TRUE);
    EXPECT_EQ(SQLConfigDataSourceW(nullptr, ODBC_ADD_DSN, wide(u"Narrow"), wide(u"DSN=Stock\0Server=x\0")), TRUE);
    EXPECT_EQ(SQLConfigDataSourceA(reinterpret_cast<HWND>(&mode), ODBC_ADD_DSN, "Narrow", "\0"), TRUE);
    EXPECT_EQ(home.calls(),
              "ConfigDSNW 1 Wide mode 1: DSN=Sales Server=db\n"
              "ConfigDSN 1 Narrow mode 1: DSN=Stock Server=x\n"
              "ConfigDSN window 1 Narrow mode 1:\n");
}

TEST(DataSourceConfiguration, WithoutARoutineTheGenericOneDoesIt) {
    for (const char* driver : {"Plain", "Missing", "None"}) {
        SCOPED_TRACE(driver);
        const SetupHome home;
        const std::string library = *driver == 'N'   ? "/opt/none.so"
                                    : *driver == 'P' ? "/opt/plain.so"
                                                     : "/opt/missing.so";
        EXPECT_EQ(configure(ODBC_ADD_DSN, driver, "DSN=Sales\0Server=db\0Port=1\0"), TRUE) << record(1);
        EXPECT_EQ(home.text(kUserSources), "[ODBC Data Sources]\nSales=" + std::string(driver) +
                                               "\n\n[Sales]\nDriver=" + library + "\nServer=db\nPort=1\n");
        EXPECT_EQ(configure(ODBC_CONFIG_DSN, driver, "DSN=Sales\0Port=\0Server=b\0"), TRUE) << record(1);
        EXPECT_EQ(value("Sales", "Server"), "b");
        EXPECT_EQ(value("Sales", "Port"), "(default)");
        EXPECT_EQ(configure(ODBC_REMOVE_DSN, driver, "DSN=Sales\0"), TRUE) << record(1);
        EXPECT_EQ(listed("ODBC Data Sources"), "");
        EXPECT_EQ(listed("Sales"), "");
        EXPECT_EQ(home.text(kSystemSources), "(absent)");
    }
}

TEST(DataSourceConfiguration, SystemDataSourcesGoToTheSystemsFileWhichAllMayRead) {
    const SetupHome home;
    const mode_t before = umask(022);
    EXPECT_EQ(configure(ODBC_ADD_SYS_DSN, "Plain", "DSN=Sales\0Server=db\0"), TRUE) << record(1);
    EXPECT_EQ(home.text(kSystemSources),
              "[ODBC Data Sources]\nSales=Plain\n\n[Sales]\nDriver=/opt/plain.so\nServer=db\n");
    EXPECT_EQ(home.text(kUserSources), "(absent)");
    umask(before);
    const auto mode = std::filesystem::status(home.file(kSystemSources)).permissions();
    EXPECT_NE(mode & std::filesystem::perms::others_read, std::filesystem::perms::none);
    EXPECT_EQ(configure(ODBC_REMOVE_SYS_DSN, "Plain", "DSN=Sales\0"), TRUE);
    EXPECT_EQ(listed("ODBC Data Sources"), "");
}

struct Refused {
    const char* what;
    WORD request;
    const char* driver;
    const char* attributes;
    const char* record;  // its beginning
};

TEST(DataSourceConfiguration, WhatIsRefusedSaysWhy) {
    const Refused rows[] = {
        {"request 0", 0, "Plain", "DSN=S\0", "5: There is no request 0"},
        {"request 8", 8, "Plain", "DSN=S\0", "5: There is no request 8"},
        {"no driver", ODBC_ADD_DSN, nullptr, "DSN=S\0", "7: No driver is named."},
        {"an empty driver", ODBC_ADD_DSN, "", "DSN=S\0", "7: No driver is named."},
        {"a reserved name", ODBC_ADD_DSN, "ODBC Drivers", "DSN=S\0", "6: "},
        {"no name", ODBC_ADD_DSN, "Plain", "Server=a\0", "9: The attributes name no data source"},
        {"no list", ODBC_ADD_DSN, "Plain", nullptr, "9: "},
        {"a bad name", ODBC_ADD_DSN, "Plain", "DSN=a;b\0", "9: No data source can be called \"a;b\""},
        {"a reserved data source", ODBC_ADD_DSN, "Plain", "DSN=odbc\0", "9: No data source can be called \"odbc\""},
        {"a list without =", ODBC_ADD_DSN, "Plain", "DSN=S\0Server\0", "8: The attributes are not a list"},
        {"a value with a line break", ODBC_ADD_DSN, "Plain", "DSN=S\0Server=a\nb\0",
         "8: The value of keyword \"Server\""},
        {"not UTF-8", ODBC_ADD_DSN, "Plain", "DSN=\xFF\0", "4: A text of the call is not UTF-8."},
        {"nothing to change", ODBC_CONFIG_DSN, "Plain", "DSN=S\0k=v\0", "11: There is no data source \"S\""},
        {"nothing to remove", ODBC_REMOVE_DSN, "Plain", "DSN=S\0", "11: There is no data source \"S\""},
    };
    for (const Refused& row : rows) {
        SCOPED_TRACE(row.what);
        const SetupHome home;
        EXPECT_EQ(configure(row.request, row.driver, row.attributes), FALSE);
        EXPECT_TRUE(record(1).starts_with(row.record)) << record(1);
        EXPECT_EQ(home.text(kUserSources), "(absent)");
        EXPECT_EQ(home.text(kSystemSources), "(absent)");
    }
}

TEST(DataSourceConfiguration, ANameOf32CharactersIsNewAndOneOf33IsNot) {
    const SetupHome home;
    std::string name;
    for (int i = 0; i < 32; ++i)
        name += "\xC3\xA9";
    EXPECT_EQ(configure(ODBC_ADD_DSN, "Plain", ("DSN=" + name + '\0').c_str()), TRUE) << record(1);
    EXPECT_EQ(configure(ODBC_ADD_DSN, "Plain", ("DSN=" + name + "x" + '\0').c_str()), FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_DSN});
}

TEST(DataSourceConfiguration, ALongListIsNotCut) {
    const SetupHome home;
    const std::string text(70'000, 'x');
    const std::string list = "DSN=Sales" + std::string(1, '\0') + "Big=" + text + '\0';
    EXPECT_EQ(configure(ODBC_ADD_DSN, "Plain", list.c_str()), TRUE) << record(1);
    EXPECT_TRUE(value("Sales", "Big") == text);
}

TEST(DataSourceConfiguration, AChangeOfADataSourceThatOnlyTheSystemHasIsRefusedWithTheFilesName) {
    const SetupHome home("write");
    home.put(kSystemSources, "[ODBC Data Sources]\nSales=Plain\n[Sales]\nDriver=/opt/plain.so\nPassword=x\n");
    for (const char* driver : {"Plain", "Narrow"}) {
        EXPECT_EQ(configure(ODBC_CONFIG_DSN, driver, "DSN=Sales\0Server=b\0"), FALSE);
        EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_REQUEST_FAILED});
        EXPECT_NE(record(1).find(home.file(kSystemSources)), std::string::npos) << record(1);
    }
    EXPECT_EQ(home.text(kUserSources), "(absent)");
    EXPECT_EQ(configure(ODBC_CONFIG_SYS_DSN, "Plain", "DSN=Sales\0Server=b\0"), TRUE) << record(1);
    EXPECT_EQ(value("Sales", "Server"), "b");
}

TEST(DataSourceConfiguration, NothingIsRemovedBeforeAnAddByARoutine) {
    const SetupHome home;
    home.put(kUserSources, "[ODBC Data Sources]\nSales=Narrow\n\n[Sales]\nDriver=x\nOld=1\n");
    const std::string before = home.text(kUserSources);
    EXPECT_EQ(configure(ODBC_ADD_DSN, "Narrow", "DSN=Sales\0"), TRUE);
    EXPECT_EQ(home.text(kUserSources), before);
}

TEST(DataSourceConfiguration, RemovingTheDefaultDataSourceTakesNoOtherArgumentAndSucceedsWithoutOne) {
    const SetupHome home;
    EXPECT_EQ(configure(ODBC_REMOVE_DEFAULT_DSN, nullptr, nullptr), TRUE) << record(1);
    EXPECT_EQ(configure(ODBC_ADD_DSN, "Plain", "DSN=Default\0Server=a\0"), TRUE) << record(1);
    EXPECT_EQ(value("Default", "Server"), "a");
    EXPECT_EQ(configure(ODBC_REMOVE_DEFAULT_DSN, "\xFF", "\xFF"), TRUE) << record(1);
    EXPECT_EQ(value("Default", "Server"), "(default)");
}

// ---- the queue and the mode, with nested calls ----

TEST(DataSourceConfiguration, NestedCallsNeverEmptyWhatTheRoutinePosted) {
    const SetupHome home("post valid fail");
    SQLPostInstallerError(ODBC_ERROR_GENERAL_ERR, "older than the call");
    EXPECT_EQ(configure(ODBC_ADD_DSN, "Narrow", "DSN=Sales\0"), FALSE);
    EXPECT_EQ(recordCount(), 1);
    EXPECT_EQ(record(1), "8: the routine's own reason");
}

TEST(DataSourceConfiguration, WhenTheRoutineReturnsTrueTheQueueIsEmpty) {
    const SetupHome home("post fill");
    EXPECT_EQ(configure(ODBC_ADD_DSN, "Narrow", "DSN=Sales\0"), TRUE);
    EXPECT_EQ(recordCount(), 0);
}

TEST(DataSourceConfiguration, OfTenRecordsTheFirstEightStay) {
    const SetupHome home("post fill fail");
    EXPECT_EQ(configure(ODBC_ADD_DSN, "Narrow", "DSN=Sales\0"), FALSE);
    EXPECT_EQ(recordCount(), 8);
    EXPECT_EQ(record(1), "8: the routine's own reason");
    EXPECT_NE(home.calls().find("posted 0\nposted -1\nposted -1\nposted -1\n"), std::string::npos) << home.calls();
}

TEST(DataSourceConfiguration, ARoutineThatFailsWithoutAReasonGetsARecord) {
    const SetupHome home("fail");
    EXPECT_EQ(configure(ODBC_ADD_DSN, "Narrow", "DSN=Sales\0"), FALSE);
    EXPECT_EQ(record(1), "11: The setup library of driver \"Narrow\" failed and gave no reason.");
}

TEST(DataSourceConfiguration, ANestedCallPutsBackTheRoutinesMode) {
    const SetupHome home("nest");
    EXPECT_EQ(configure(ODBC_ADD_DSN, "Narrow", "DSN=Sales\0"), TRUE);
    EXPECT_EQ(home.calls(), "ConfigDSN 1 Narrow mode 1: DSN=Sales\nnested 1 mode 1\n");
    EXPECT_EQ(value("Nested", "Driver"), "/opt/plain.so");
    EXPECT_NE(home.text(kSystemSources).find("[Nested]"), std::string::npos);
    EXPECT_EQ(mode(), ODBC_BOTH_DSN);
}

TEST(DataSourceConfiguration, AModeThatARoutineSetsIsItsThreadsOwnAndEndsWithTheCall) {
    const SetupHome home("mode=2 write");
    EXPECT_EQ(configure(ODBC_ADD_DSN, "Narrow", "DSN=Sales\0Server=db\0"), TRUE) << record(1);
    EXPECT_NE(home.text(kSystemSources).find("[Sales]"), std::string::npos);
    EXPECT_EQ(home.text(kUserSources), "(absent)");
    EXPECT_EQ(mode(), ODBC_BOTH_DSN);
}

TEST(DataSourceConfiguration, OtherThreadsKeepTheProcesssModeMeanwhile) {
    const SetupHome home("write");
    home.put(kUserSources, "[Both]\nServer=users\n");
    std::thread other([] {
        for (int round = 0; round < 100; ++round)
            EXPECT_EQ(value("Both", "Server"), "users");
    });
    for (int round = 0; round < 20; ++round)
        EXPECT_EQ(configure(ODBC_ADD_SYS_DSN, "Narrow", "DSN=Sales\0Server=db\0"), TRUE) << record(1);
    other.join();
    EXPECT_EQ(home.text(kUserSources), "[Both]\nServer=users\n");
}

TEST(DataSourceConfiguration, AnExceptionOfTheRoutinePassesThroughAndTheModeIsBothAgain) {
    const SetupHome home("throw");
    EXPECT_THROW(configure(ODBC_ADD_SYS_DSN, "Narrow", "DSN=Sales\0"), std::runtime_error);
    EXPECT_EQ(mode(), ODBC_BOTH_DSN);
    SQLPostInstallerError(ODBC_ERROR_GENERAL_ERR, "old");
    EXPECT_EQ(SQLValidDSN("Sales"), TRUE);
    EXPECT_EQ(recordCount(), 0) << "calls are outer ones again";
}

TEST(DataSourceConfiguration, AWritingRoutineLeavesWhatItWrote) {
    const SetupHome home("write");
    EXPECT_EQ(configure(ODBC_ADD_DSN, "Wide", "DSN=Sales\0Server=db\0"), TRUE) << record(1);
    EXPECT_EQ(home.text(kUserSources), "[ODBC Data Sources]\nSales=Wide\n\n[Sales]\nDriver=/opt/wide.so\nServer=db\n");
}

TEST(DataSourceConfiguration, ASetupLibraryCutShortIsOneThatDoesNotLoad) {
    const SetupHome home;
    std::filesystem::copy_file(JX_SETUP_LIBRARIES "/libsetup_narrow.so", home.file("cut.so"));
    std::filesystem::resize_file(home.file("cut.so"), 4096);
    home.put(kSystemDrivers, "[Cut]\nDriver=/opt/cut.so\nSetup=" + home.file("cut.so") + "\n");
    EXPECT_EQ(configure(ODBC_ADD_DSN, "Cut", "DSN=Sales\0Server=a\0"), TRUE) << record(1);
    EXPECT_EQ(value("Sales", "Server"), "a");
    EXPECT_EQ(SQLConfigDriver(nullptr, ODBC_INSTALL_DRIVER, "Cut", nullptr, nullptr, 0, nullptr), FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_LOAD_LIB_FAILED});
}

TEST(DataSourceConfiguration, TheProductsOwnSetupLibraryMeansTheGenericRoutine) {
    const SetupHome home;
    home.put(kSystemDrivers, "[Own]\nDriver=/opt/own.so\nSetup=" JX_COMMON_SETUP "\n");
    EXPECT_EQ(configure(ODBC_ADD_SYS_DSN, "Own", "DSN=Sales\0Server=a\0"), TRUE) << record(1);
    EXPECT_NE(home.text(kSystemSources).find("Server=a"), std::string::npos);
}

TEST(DataSourceConfiguration, AWindowWithoutAHostThatShowsDialogsIsAsNoWindow) {
    const SetupHome home;
    const HWND window = reinterpret_cast<HWND>(&mode);
    EXPECT_EQ(SQLConfigDataSource(window, ODBC_ADD_DSN, "Plain", "DSN=Sales\0Server=a\0"), TRUE) << record(1);
    EXPECT_EQ(value("Sales", "Server"), "a");
    EXPECT_EQ(SQLConfigDataSource(window, ODBC_ADD_DSN, "Plain", "Server=a\0"), FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_DSN});
}

TEST(DataSourceConfiguration, HalfAPairInAListIsRefused) {
    const SetupHome home;
    const char16_t list[] = {u'D', u'S', u'N', u'=', 0xDC00, 0, 0};
    EXPECT_EQ(SQLConfigDataSourceW(nullptr, ODBC_ADD_DSN, wide(u"Plain"), wide(list)), FALSE);
    EXPECT_EQ(firstCode(), DWORD{ODBC_ERROR_INVALID_STR});
}

}  // namespace
