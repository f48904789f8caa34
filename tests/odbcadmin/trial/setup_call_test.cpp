// Setup routines asked to add, change and remove data sources.
#include "odbcadmin/trial/setup_call.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <cerrno>
#include <cstdlib>

#include "test_home.h"

namespace jx::trial {
namespace {

using End = SetupReport::End;
using Action = SetupRequest::Action;

class SetupCallTest : public testing::Test {
protected:
    static std::string library(const std::string& name) {
        return std::string(JX_SETUP_LIBRARIES) + "/lib" + name + ".so";
    }

    void registerDriver(const std::string& setup) {
        home_.put(".odbcinst.ini", "[ODBC Drivers]\nD=Installed\n[D]\nDriver=/opt/d.so\nSetup=" + setup + "\n");
    }

    static SetupReport call(Action action, const std::string& setup, const std::string& source,
                            const Records& attributes = {}) {
        return callSetup({action, setup, "D", source, attributes});
    }

    // What the routine does that is called so.
    static SetupReport moody(const std::string& driver, std::chrono::milliseconds limit = std::chrono::minutes(1)) {
        return callSetup({Action::add, JX_MOODY, driver, "Sales", {}, {}, limit});
    }

    jx::test::TestHome home_;
};

TEST_F(SetupCallTest, FindsOutWhetherThereIsARoutine) {
    EXPECT_EQ(call(Action::add, library("no_entry"), "S").end, End::noRoutine);
    const SetupReport gone = call(Action::add, "/none/s.so", "S");
    EXPECT_EQ(gone.end, End::notLoaded);
    EXPECT_EQ(gone.sentence, "/none/s.so: cannot open shared object file: No such file or directory");
    const SetupReport unnamed = call(Action::add, "", "S");
    EXPECT_EQ(unnamed.end, End::notLoaded);
    EXPECT_EQ(unnamed.sentence, "no library is named");
}

TEST_F(SetupCallTest, CallsTheRoutineInCapitalsWhereThereAreBoth) {
    EXPECT_EQ(call(Action::add, library("driver_both"), "S").function, "CONFIGDSN");
    EXPECT_EQ(call(Action::add, library("driver_mixed"), "S").function, "ConfigDSN");
}

TEST_F(SetupCallTest, AddsChangesAndRemovesThroughTheGenericRoutine) {
    registerDriver(JX_SETUP_LIBRARY);
    const std::string setup = JX_SETUP_LIBRARY;
    EXPECT_EQ(call(Action::add, setup, "Sales", {{"Server", "db1"}, {"Port", "1"}}).end, End::agreed);
    EXPECT_EQ(home_.text(".odbc.ini"),
              "[ODBC Data Sources]\nSales=D\n\n[Sales]\nDriver=/opt/d.so\nServer=db1\nPort=1\n");
    EXPECT_EQ(call(Action::configure, setup, "Sales", {{"Server", "db2"}, {"Port", ""}}).end, End::agreed);
    EXPECT_EQ(home_.text(".odbc.ini"), "[ODBC Data Sources]\nSales=D\n\n[Sales]\nDriver=/opt/d.so\nServer=db2\n");
    EXPECT_EQ(call(Action::remove, setup, "Sales").end, End::agreed);
    EXPECT_EQ(home_.text(".odbc.ini"), "[ODBC Data Sources]\n\n");
}

TEST_F(SetupCallTest, ARefusalLeavesTheFilesAloneAndGivesItsReasons) {
    EXPECT_EQ(call(Action::add, library("driver_refusing"), "Sales").end, End::declined);
    EXPECT_EQ(home_.text(".odbc.ini"), "(absent)");
    const SetupReport report = call(Action::add, JX_EXPLAINING, "Sales");
    EXPECT_EQ(report.end, End::declined);
    EXPECT_EQ(report.errors, (std::vector<std::string>{"too \\ little", "the server\nis not named"}));
}

TEST_F(SetupCallTest, ARequestMayHave1024Bytes) {
    registerDriver(JX_SETUP_LIBRARY);
    // "DSN=S", the key with its "=", and three NULs.
    const std::size_t most = 1024 - 5 - 2 - 3;
    EXPECT_EQ(call(Action::add, JX_SETUP_LIBRARY, "S", {{"K", std::string(most, 'v')}}).end, End::agreed);
    const SetupReport report = call(Action::add, JX_SETUP_LIBRARY, "S", {{"K", std::string(most + 1, 'v')}});
    EXPECT_EQ(report.end, End::tooLong);
    EXPECT_EQ(report.sentence, "more than 1024 bytes");
}

TEST_F(SetupCallTest, ADriversNameMayHave49Bytes) {
    const std::string name(49, 'n');
    EXPECT_EQ(callSetup({Action::add, JX_MOODY, name, "S", {}}).end, End::declined);
    const SetupReport report = callSetup({Action::add, JX_MOODY, name + "n", "S", {}});
    EXPECT_EQ(report.end, End::tooLong);
    EXPECT_EQ(report.sentence, "the driver's name is too long");
}

TEST_F(SetupCallTest, HowARoutineEndsIsReportedWithItsName) {
    const struct {
        const char* driver;
        End end;
        int code;
    } rows[] = {
        {"Yes", End::agreed, 0},     {"No", End::declined, 0},   {"Exit", End::exited, 0},
        {"Crash", End::crashed, 11}, {"Hang", End::timedOut, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.driver);
        const SetupReport report = moody(row.driver, std::chrono::milliseconds(row.end == End::timedOut ? 50 : 60000));
        EXPECT_EQ(report.end, row.end);
        EXPECT_EQ(report.code, row.code);
        EXPECT_EQ(report.function, "ConfigDSN");
    }
}

TEST_F(SetupCallTest, ALibraryThatEndsTheProgramAtItsLoadHasCalledNothing) {
    const SetupReport report = call(Action::add, JX_EXIT_QUIETLY, "Sales");
    EXPECT_EQ(report.end, End::exited);
    EXPECT_EQ(report.code, 0);
    EXPECT_EQ(report.function, "");
}

TEST_F(SetupCallTest, WhatItStartedIsGoneWhereverItWent) {
    EXPECT_EQ(moody("Leave").end, End::declined);
    const int left = std::atoi(home_.text("left").c_str());
    ASSERT_GT(left, 0);
    EXPECT_EQ(kill(left, 0), -1);
    EXPECT_EQ(errno, ESRCH);
}

TEST_F(SetupCallTest, WhatItPrintsOrWritesToEveryDescriptorIsOutputAndNoReport) {
    const SetupReport printed = moody("Print");
    EXPECT_EQ(printed.end, End::declined);
    EXPECT_EQ(printed.output, "agreed \nend exited 0\n");
    EXPECT_EQ(moody("Write").end, End::declined);
}

TEST_F(SetupCallTest, ALibraryThatClosesAllDescriptorsIsStillHeard) {
    EXPECT_EQ(moody("Close").end, End::agreed);
}

TEST_F(SetupCallTest, ItCannotSignalThoseWhoWaitForIt) {
    EXPECT_EQ(moody("Kill").end, End::declined);
    EXPECT_EQ(home_.text("killed"), "-1 -1 -1 -1");
}

}  // namespace
}  // namespace jx::trial
