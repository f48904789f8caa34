// dsn add, set and remove through setup libraries, and the ways around them.
#include "admin_test.h"

namespace jx::test {
namespace {

class SetupRoute : public AdminTest {
protected:
    static std::string library(const std::string& name) {
        return std::string(JX_SETUP_LIBRARIES) + "/lib" + name + ".so";
    }
};

TEST_F(SetupRoute, AddSetAndRemoveGoThroughTheSetupLibrary) {
    addDriverWithSetup("Generic", JX_SETUP_LIBRARY);
    const ProgramResult added = run({"dsn", "add", "Stock", "--driver", "Generic", "Server=db2"});
    EXPECT_EQ(added.out, "Added data source Stock\n");
    EXPECT_EQ(added.err, "");
    EXPECT_EQ(out({"dsn", "get", "Stock", "Server"}), "db2\n");
    EXPECT_EQ(out({"dsn", "set", "Stock", "Server=db3"}), "Changed data source Stock\n");
    EXPECT_EQ(out({"dsn", "set", "Stock", "Server=db3"}), "unchanged: nothing to do\n");
    EXPECT_EQ(out({"dsn", "get", "Stock", "Server"}), "db3\n");
    EXPECT_EQ(out({"dsn", "remove", "Stock"}), "Removed data source Stock\n");
    EXPECT_EQ(sources(), std::string(kSources) + "\n");
}

TEST_F(SetupRoute, ANameThatIsRefusedNeverReachesTheSetupLibrary) {
    addDriverWithSetup("Writing", library("driver_writing"));
    const std::string name(33, 'n');
    for (const char* way : {"-q", "--direct"}) {
        const ProgramResult result = run({"dsn", "add", name, "--driver", "Writing", way});
        EXPECT_EQ(result.code, 5);
        EXPECT_EQ(result.err, "odbcadmin: No data source can be called \"" + name +
                                  "\": it has more than 32 bytes\n  Choose another name.\n");
        EXPECT_EQ(sources(), kSources);
    }
}

TEST_F(SetupRoute, DirectSaysThatItIs) {
    addDriverWithSetup("Generic", JX_SETUP_LIBRARY);
    EXPECT_EQ(run({"dsn", "add", "Stock", "--driver", "Generic", "--direct"}).err,
              "odbcadmin: written directly: as --direct asks\n");
    EXPECT_EQ(run({"dsn", "set", "Stock", "a=b", "--direct"}).err, "odbcadmin: written directly: as --direct asks\n");
    EXPECT_EQ(run({"dsn", "remove", "Stock", "--direct"}).err, "odbcadmin: written directly: as --direct asks\n");
    EXPECT_EQ(sources(), std::string(kSources) + "\n");
}

TEST_F(SetupRoute, DryRunNeverCallsTheSetupLibrary) {
    addDriverWithSetup("Writing", library("driver_writing"));
    const ProgramResult result = run({"dsn", "add", "Stock", "--driver", "Writing", "--dry-run"});
    EXPECT_EQ(result.code, 0);
    EXPECT_NE(result.err.find("the setup library of Writing might do otherwise"), std::string::npos);
    EXPECT_EQ(sources(), kSources);
}

TEST_F(SetupRoute, ALibraryThatDoesNotLoadIsPassedOverAndTold) {
    addDriverWithSetup("Gone", "/opt/no-such-setup.so");
    addDriverWithSetup("Empty", library("no_entry"));
    const ProgramResult gone = run({"dsn", "add", "One", "--driver", "Gone"});
    EXPECT_EQ(gone.code, 0);
    EXPECT_NE(gone.err.find("its setup library cannot be loaded: /opt/no-such-setup.so"), std::string::npos);
    const ProgramResult empty = run({"dsn", "add", "Two", "--driver", "Empty"});
    EXPECT_EQ(empty.code, 0);
    EXPECT_NE(empty.err.find("its setup library has no ConfigDSN"), std::string::npos);
    EXPECT_EQ(out({"dsn", "list", "-q"}), "Sales\nAccounts\nOne\nTwo\n");
}

TEST_F(SetupRoute, ARefusingLibraryIsFailure) {
    addDriverWithSetup("No", library("driver_refusing"));
    EXPECT_EQ(run({"dsn", "add", "Stock", "--driver", "No"}).code, 1);
    EXPECT_EQ(sources(), kSources);
}

TEST_F(SetupRoute, AThrowingLibraryIsFailureNotACrash) {
    addDriverWithSetup("Throws", library("driver_throwing"));
    EXPECT_EQ(run({"dsn", "add", "Stock", "--driver", "Throws"}).code, 1);
}

TEST_F(SetupRoute, WhatDoesNotFitTheCallIsRefusedWithAdvice) {
    addDriverWithSetup("Generic", JX_SETUP_LIBRARY);
    const std::string value(1100, 'v');
    const ProgramResult result = run({"dsn", "add", "Stock", "--driver", "Generic", "K=" + value});
    EXPECT_EQ(result.code, 5);
    EXPECT_NE(result.err.find("--direct"), std::string::npos);
    EXPECT_EQ(run({"dsn", "add", "Stock", "--driver", "Generic", "K=" + value, "--direct"}).code, 0);
    EXPECT_EQ(out({"dsn", "get", "Stock", "K"}), value + "\n");
}

TEST_F(SetupRoute, ADriverThatIsNoLongerRegisteredDoesNotStopRemoval) {
    home_.put(".odbcinst.ini", "");
    EXPECT_EQ(run({"dsn", "remove", "Sales"}).code, 0);
    EXPECT_EQ(out({"dsn", "list", "-q"}), "Accounts\n");
}

}  // namespace
}  // namespace jx::test
