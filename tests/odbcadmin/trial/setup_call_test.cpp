// Setup routines asked to add, change and remove data sources.
#include "odbcadmin/trial/setup_call.h"

#include <gtest/gtest.h>

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

    jx::test::TestHome home_;
};

TEST_F(SetupCallTest, ProbesForTheRoutine) {
    EXPECT_EQ(probeSetup(JX_SETUP_LIBRARY).end, End::done);
    EXPECT_EQ(probeSetup(library("driver_both")).end, End::done);
    EXPECT_EQ(probeSetup(library("driver_mixed")).end, End::done);
    EXPECT_EQ(probeSetup(library("no_entry")).end, End::noRoutine);
    const SetupReport gone = probeSetup("/none/s.so");
    EXPECT_EQ(gone.end, End::notLoaded);
    EXPECT_EQ(gone.sentence, "/none/s.so: cannot open shared object file: No such file or directory");
    EXPECT_EQ(probeSetup("").end, End::notLoaded);
}

TEST_F(SetupCallTest, AddsChangesAndRemovesThroughTheGenericRoutine) {
    registerDriver(JX_SETUP_LIBRARY);
    EXPECT_EQ(callSetup({Action::add, "D", "Sales", {{"Server", "db1"}, {"Port", "1"}}}).end, End::done);
    EXPECT_EQ(home_.text(".odbc.ini"),
              "[ODBC Data Sources]\nSales=D\n\n[Sales]\nDriver=/opt/d.so\nServer=db1\nPort=1\n");
    EXPECT_EQ(callSetup({Action::configure, "D", "Sales", {{"Server", "db2"}, {"Port", ""}}}).end, End::done);
    EXPECT_EQ(home_.text(".odbc.ini"), "[ODBC Data Sources]\nSales=D\n\n[Sales]\nDriver=/opt/d.so\nServer=db2\n");
    EXPECT_EQ(callSetup({Action::remove, "D", "Sales", {}}).end, End::done);
    EXPECT_EQ(home_.text(".odbc.ini"), "[ODBC Data Sources]\n\n");
}

TEST_F(SetupCallTest, ARefusalLeavesTheFilesAlone) {
    registerDriver(library("driver_refusing"));
    const SetupReport report = callSetup({Action::add, "D", "Sales", {}});
    EXPECT_EQ(report.end, End::refused);
    EXPECT_EQ(home_.text(".odbc.ini"), "(absent)");
    EXPECT_EQ(callSetup({Action::add, "Unknown", "Sales", {}}).end, End::refused);
}

TEST_F(SetupCallTest, ARequestMayHave1024Bytes) {
    registerDriver(JX_SETUP_LIBRARY);
    // "DSN=S", the key with its "=", and three NULs.
    const std::size_t most = 1024 - 5 - 2 - 3;
    EXPECT_EQ(callSetup({Action::add, "D", "S", {{"K", std::string(most, 'v')}}}).end, End::done);
    const SetupReport report = callSetup({Action::add, "D", "S", {{"K", std::string(most + 1, 'v')}}});
    EXPECT_EQ(report.end, End::tooLong);
    EXPECT_EQ(report.sentence, "more than 1024 bytes");
}

TEST_F(SetupCallTest, ADriversNameMayHave49Bytes) {
    const std::string name(49, 'n');
    home_.put(".odbcinst.ini", "[" + name + "]\nDriver=/opt/d.so\nSetup=" JX_SETUP_LIBRARY "\n");
    EXPECT_EQ(callSetup({Action::add, name, "S", {}}).end, End::done);
    const SetupReport report = callSetup({Action::add, name + "n", "S", {}});
    EXPECT_EQ(report.end, End::tooLong);
    EXPECT_EQ(report.sentence, "the driver's name is too long");
}

}  // namespace
}  // namespace jx::trial
