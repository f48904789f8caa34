// dsn add, set and remove through setup libraries, and the ways around them.
#include <filesystem>

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

// What a library says and how it ends are one thing, what the files hold another.
TEST_F(SetupRoute, OneSentenceNamesTheLibraryAndTheDriverThatDidNotDoIt) {
    const std::string moody = "odbcadmin: The setup library " JX_MOODY " of driver ";
    const std::string toAdd = " when it was to add data source Stock";
    const struct {
        std::string driver, library, sentence;
    } rows[] = {
        {"Yes", JX_MOODY,
         moody + "Yes said that it did add data source Stock, but it is not in " + home_.file(".odbc.ini")},
        {"Close", JX_MOODY,
         moody + "Close said that it did add data source Stock, but it is not in " + home_.file(".odbc.ini")},
        {"No", JX_MOODY, moody + "No refused to add data source Stock"},
        {"Exit", JX_MOODY, moody + "Exit ended its program in ConfigDSN, with exit code 0" + toAdd},
        {"Crash", JX_MOODY, moody + "Crash crashed in ConfigDSN, with signal 11 (Segmentation fault)" + toAdd},
        {"Hang", JX_MOODY, moody + "Hang was not done within 0.05 s in ConfigDSN" + toAdd},
        {"Quiet", JX_EXIT_QUIETLY,
         "odbcadmin: The setup library " JX_EXIT_QUIETLY " of driver Quiet ended its program while it was loaded, with "
         "exit code 0" +
             toAdd},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.driver);
        addDriverWithSetup(row.driver, row.library);
        const ProgramResult result =
            run({"dsn", "add", "Stock", "--driver", row.driver, "--timeout", row.driver == "Hang" ? "0.05" : "60"});
        EXPECT_EQ(result.code, 1);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err.substr(0, result.err.find('\n')), row.sentence);
        EXPECT_EQ(sources(), kSources);
    }
}

TEST_F(SetupRoute, WhatALibraryLeftOutOfItsWorkIsNamed) {
    addDriverWithSetup("Writing", library("driver_writing"));
    const ProgramResult added = run({"dsn", "add", "Stock", "--driver", "Writing", "Server=db1", "Port=1"});
    EXPECT_EQ(added.code, 1);
    EXPECT_EQ(added.err, "odbcadmin: The setup library " + library("driver_writing") +
                             " of driver Writing said that it did add data source Stock, but it did not store Server, "
                             "Port\n  --direct writes without the library. Written before that: " +
                             home_.file(".odbc.ini") + ".\n");
    EXPECT_EQ(out({"dsn", "get", "Stock", "Last"}), "Server=db1\n");
}

TEST_F(SetupRoute, AChangeOrRemovalThatWasNotMadeIsFailure) {
    addDriverWithSetup("Yes", JX_MOODY);
    out({"dsn", "add", "Stock", "--driver", "Yes", "Server=db1", "--direct"});
    const std::string before = sources();
    const ProgramResult set = run({"dsn", "set", "Stock", "Server=db2"});
    EXPECT_EQ(set.code, 1);
    EXPECT_NE(set.err.find("said that it did change data source Stock, but it did not store Server\n"),
              std::string::npos);
    const ProgramResult removed = run({"dsn", "remove", "Stock"});
    EXPECT_EQ(removed.code, 1);
    EXPECT_NE(removed.err.find("said that it did remove data source Stock, but it is still in "), std::string::npos);
    EXPECT_EQ(run({"dsn", "set", "Stock", "Server=db1"}).code, 0);
    EXPECT_EQ(sources(), before);
}

TEST_F(SetupRoute, ALibraryThatWasCopiedInPartDoesNotKeepADataSourceFromBeingRemoved) {
    std::filesystem::copy_file(JX_MOODY, home_.file("half.so"));
    std::filesystem::resize_file(home_.file("half.so"), 8192);
    addDriverWithSetup("Half", home_.file("half.so"));
    out({"dsn", "add", "Stock", "--driver", "Half", "--direct"});
    const ProgramResult result = run({"dsn", "remove", "Stock"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err, "odbcadmin: written directly: its setup library cannot be loaded: " + home_.file("half.so") +
                              ": file too short\n");
    EXPECT_EQ(out({"dsn", "list", "-q"}), "Sales\nAccounts\n");
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

TEST_F(SetupRoute, EachEndHasAdviceOfItsOwn) {
    addDriverWithSetup("Hang", JX_MOODY);
    addDriverWithSetup("No", JX_MOODY);
    const std::string direct = "\n  --direct writes without the library.\n";
    const std::string late = run({"dsn", "add", "A", "--driver", "Hang", "--timeout", "0.05"}).err;
    EXPECT_NE(late.find("\n  --timeout gives it more time; --direct writes without the library.\n"), std::string::npos);
    EXPECT_NE(run({"dsn", "add", "A", "--driver", "No"}).err.find(direct), std::string::npos);
}

TEST_F(SetupRoute, OnlyTheUsersFilesAreWrittenThroughIt) {
    addDriverWithSetup("Yes", JX_MOODY);
    EXPECT_EQ(run({"driver", "copy", "Yes", "--to", "system"}).code, 0);
    EXPECT_EQ(run({"dsn", "add", "All", "--driver", "Yes", "--system"}).err,
              "odbcadmin: written directly: the setup library of Yes works on the user's files only\n");
    EXPECT_EQ(run({"driver", "remove", "Yes"}).code, 0);
    EXPECT_EQ(run({"dsn", "add", "Mine", "--driver", "Yes"}).err,
              "odbcadmin: written directly: the setup library of Yes works on the user's files only\n");
    EXPECT_EQ(out({"dsn", "list", "-q"}), "Sales\nAccounts\nMine\nAll\n");
}

}  // namespace
}  // namespace jx::test
