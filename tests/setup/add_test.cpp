// Adding a data source through the setup library: what the files hold afterwards, and what is refused.
#include <string>
#include <vector>

#include "setup_library.h"

namespace {

using jx::test::installedDriver;
using jx::test::kDriver;
using jx::test::list;
using jx::test::TestHome;

class SetupAdd : public jx::test::SetupLibrary {};

constexpr char kTwoDataSources[] =
    "; mine\n"
    "[ODBC Data Sources]\n"
    "Orders=Other Driver\n"
    "Sales=Other Driver\n"
    "\n"
    "[Orders]\n"
    "Driver=/opt/other.so\n"
    "\n"
    "[Sales]\n"
    "Driver=/opt/other.so\n"
    "Old=1\n";

TEST_F(SetupAdd, WritesListEntryDriverAndAttributes) {
    EXPECT_EQ(add(list({"DSN=Sales", "Server=a", "Password=x y;z"})), TRUE);
    EXPECT_EQ(dataSources(),
              "[ODBC Data Sources]\nSales=Sample Driver\n\n"
              "[Sales]\nDriver=/opt/sample/libsample.so\nServer=a\nPassword=x y;z\n");
    EXPECT_EQ(drivers(), installedDriver());
}

TEST_F(SetupAdd, IsReachedThroughTheInstaller) {
    EXPECT_EQ(SQLConfigDataSource(0, ODBC_ADD_DSN, kDriver, list({"DSN=Sales", "Server=a"}).c_str()), TRUE);
    EXPECT_EQ(dataSources(),
              "[ODBC Data Sources]\nSales=Sample Driver\n\n[Sales]\nDriver=/opt/sample/libsample.so\nServer=a\n");
}

TEST_F(SetupAdd, DoesTheSameWithAWindow) {
    EXPECT_EQ(SQLConfigDataSource(1, ODBC_ADD_DSN, kDriver, list({"DSN=Sales"}).c_str()), TRUE);
    EXPECT_EQ(dataSources(), "[ODBC Data Sources]\nSales=Sample Driver\n\n[Sales]\nDriver=/opt/sample/libsample.so\n");
    EXPECT_EQ(SQLConfigDataSource(1, ODBC_ADD_DSN, kDriver, nullptr), FALSE);
}

TEST_F(SetupAdd, KeepsEmptyValues) {
    EXPECT_EQ(add(list({"DSN=Sales", "Server="})), TRUE);
    EXPECT_EQ(dataSources(),
              "[ODBC Data Sources]\nSales=Sample Driver\n\n[Sales]\nDriver=/opt/sample/libsample.so\nServer=\n");
}

TEST_F(SetupAdd, IgnoresTheDriverItem) {
    EXPECT_EQ(add(list({"DRIVER=/tmp/other.so", "DSN=Sales"})), TRUE);
    EXPECT_EQ(dataSources(), "[ODBC Data Sources]\nSales=Sample Driver\n\n[Sales]\nDriver=/opt/sample/libsample.so\n");
}

TEST_F(SetupAdd, ReplacesAnOldEntryWithAllItsKeys) {
    home.put(".odbc.ini", kTwoDataSources);
    EXPECT_EQ(add(list({"DSN=Sales", "New=2"})), TRUE);
    EXPECT_EQ(dataSources().find("Old"), std::string::npos);
    EXPECT_NE(dataSources().find("[Sales]\nDriver=/opt/sample/libsample.so\nNew=2\n"), std::string::npos);
    EXPECT_NE(dataSources().find("[Orders]\nDriver=/opt/other.so\n"), std::string::npos);
}

TEST_F(SetupAdd, ReplacesAnEntrySpelledInAnotherCase) {
    home.put(".odbc.ini", kTwoDataSources);
    EXPECT_EQ(add(list({"DSN=SALES"})), TRUE);
    EXPECT_EQ(dataSources().find("Sales="), std::string::npos);
    EXPECT_NE(dataSources().find("SALES=Sample Driver"), std::string::npos);
}

TEST_F(SetupAdd, LeavesTheFileThatTheInstallersOwnWritesLeave) {
    for (const char* before : {"", kTwoDataSources, "[sales]\r\nOld=1\r\n[Last]\r\nx=1", "[ODBC]\nTrace=1\n; end\n"}) {
        SCOPED_TRACE(before);
        home.put(".odbc.ini", before);
        ASSERT_EQ(SQLWriteDSNToIni("Sales", kDriver), TRUE);
        ASSERT_EQ(SQLWritePrivateProfileString("Sales", "Server", "a", ".odbc.ini"), TRUE);
        ASSERT_EQ(SQLWritePrivateProfileString("Sales", "Port", "", ".odbc.ini"), TRUE);
        const std::string expected = dataSources();
        home.put(".odbc.ini", before);
        EXPECT_EQ(add(list({"DSN=Sales", "Server=a", "Port="})), TRUE);
        EXPECT_EQ(dataSources(), expected);
    }
}

TEST_F(SetupAdd, KeepsADriverPathThatIsLongerThanTheInstallersBuffer) {
    const std::string path = "/" + std::string(2000, 'd');
    home.put(".odbcinst.ini", "[Long]\nDriver=" + path + "\n");
    EXPECT_EQ(add(list({"DSN=Sales"}), "Long"), TRUE);
    EXPECT_NE(dataSources().find("Driver=" + path + "\n"), std::string::npos);
}

TEST_F(SetupAdd, StoresValuesOfAnyLength) {
    for (const std::size_t length : {1U, 1023U, 1024U, 32767U, 32768U, 65535U, 70000U}) {
        SCOPED_TRACE(length);
        const std::string value(length, 'v');
        EXPECT_EQ(add(list({"DSN=Sales", "Text=" + value})), TRUE);
        EXPECT_NE(dataSources().find("Text=" + value + "\n"), std::string::npos);
    }
}

TEST_F(SetupAdd, ChangesNothingWhenTheListOrTheDriverIsBad) {
    const struct {
        std::string list;
        const char* driver;
    } rows[] = {
        {list({}), kDriver},
        {list({"Server=a"}), kDriver},
        {list({"DSN=Sales", "Server"}), kDriver},
        {list({"DSN=Sales", "=a"}), kDriver},
        {list({"DSN=Sales", "Server=a", "server=b"}), kDriver},
        {list({"DSN=Sales"}), "Unknown Driver"},
        {list({"DSN=Sales"}), "Sample Driver "},
        {list({"DSN=Sales"}), "ODBC Drivers"},
        {list({"DSN=Sales"}), ""},
        {list({"DSN=Sales"}), nullptr},
    };
    home.put(".odbc.ini", kTwoDataSources);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.list);
        EXPECT_EQ(add(row.list, row.driver), FALSE);
        EXPECT_EQ(dataSources(), kTwoDataSources);
    }
}

TEST_F(SetupAdd, ChangesNothingWhenADriverHasAnEmptyLibrary) {
    home.put(".odbcinst.ini", "[Sample Driver]\nDriver=\n");
    EXPECT_EQ(add(list({"DSN=Sales"})), FALSE);
    EXPECT_EQ(dataSources(), "(absent)");
}

TEST_F(SetupAdd, ChangesNothingWhenTheFileCouldNotGiveAValueBack) {
    home.put(".odbc.ini", kTwoDataSources);
    for (const char* item : {"Server= a", "Server=a ", "Server=\ta", "Server=a\t", "Server= ", "Server=a\nb",
                             "Server=a\rb", "Server=a\n", "Server=a\r"}) {
        SCOPED_TRACE(item);
        EXPECT_EQ(add(list({"DSN=Sales", "First=1", item, "Last=1"})), FALSE);
        EXPECT_EQ(dataSources(), kTwoDataSources);
    }
}

TEST_F(SetupAdd, ChangesNothingWhenTheFileCouldNotHoldAKeyword) {
    home.put(".odbc.ini", kTwoDataSources);
    for (const char* item : {" Server=a", "Server =a", "\tServer=a", " =a", "[Server]=a", ";Server=a", "#Server=a",
                             "Ser\nver=a", "Ser\rver=a", " Driver=a", "Driver =a"}) {
        SCOPED_TRACE(item);
        EXPECT_EQ(add(list({"DSN=Sales", item})), FALSE);
        EXPECT_EQ(dataSources(), kTwoDataSources);
    }
}

TEST_F(SetupAdd, ChangesNothingWhenTheNameIsReserved) {
    const std::string before = std::string(kTwoDataSources) + "[ODBC]\nTrace=1\n";
    home.put(".odbc.ini", before);
    for (const char* name : {"ODBC", "odbc", "ODBC Data Sources", "ODBC DATA SOURCES", "ODBC Drivers",
                             "ODBC Translators", " ODBC Data Sources", "ODBC Data Sources ", "\tODBC"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(add(list({std::string("DSN=") + name})), FALSE);
        EXPECT_EQ(dataSources(), before);
    }
}

TEST_F(SetupAdd, ChangesNothingWhenTheNameIsNoneForADataSource) {
    home.put(".odbc.ini", kTwoDataSources);
    for (const char* name : {"",        "a=b",
                             "[a]",     "a]b",
                             "a;b",     "a ;b",
                             "a\\b",    "a,b",
                             "a!b",     "a@b",
                             "a*b",     "a?b",
                             "a(b",     "a}b",
                             " Sales",  "Sales ",
                             "Sa\nles", "Sa\rles",
                             "a #b",    "#a",
                             " ",       "a name of thirty-three characters"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(add(list({std::string("DSN=") + name})), FALSE);
        EXPECT_EQ(dataSources(), kTwoDataSources);
    }
}

TEST_F(SetupAdd, EntersTheDefaultDataSourceAsTheInstallerDoes) {
    ASSERT_EQ(SQLWriteDSNToIni("Default", kDriver), TRUE);
    ASSERT_EQ(SQLWritePrivateProfileString("Default", "Server", "a", ".odbc.ini"), TRUE);
    const std::string expectedSources = dataSources();
    const std::string expectedDrivers = drivers();
    ASSERT_EQ(SQLRemoveDSNFromIni("Default"), TRUE);
    home.put(".odbc.ini", "");
    home.put(".odbcinst.ini", installedDriver());
    EXPECT_EQ(add(list({"DSN=Default", "Server=a"})), TRUE);
    EXPECT_EQ(dataSources(), expectedSources);
    EXPECT_EQ(drivers(), expectedDrivers);
    EXPECT_NE(drivers().find("[Default]\nDriver=Sample Driver\n"), std::string::npos);
}

TEST_F(SetupAdd, TakesTheDefaultNameInAnyCase) {
    EXPECT_EQ(add(list({"DSN=dEFAULT"})), TRUE);
    EXPECT_EQ(dataSources(), "[dEFAULT]\nDriver=/opt/sample/libsample.so\n");
    EXPECT_EQ(drivers(), installedDriver() + "\n[Default]\nDriver=Sample Driver\n");
}

TEST_F(SetupAdd, ChangesNeitherFileWhenTheDefaultsAttributesAreBad) {
    EXPECT_EQ(add(list({"DSN=Default", "Server=a "})), FALSE);
    EXPECT_EQ(dataSources(), "(absent)");
    EXPECT_EQ(drivers(), installedDriver());
}

// .odbc.ini cannot be locked here: a directory has the name of its lock file.
TEST_F(SetupAdd, PutsTheDefaultsEntryBackWhenItsSectionCannotBeWritten) {
    home.put("sources.ini", "[Default]\nDriver=/opt/old.so\n");
    setenv("ODBCINI", home.file("sources.ini").c_str(), 1);
    ASSERT_EQ(mkdir(home.file(".sources.ini.jxlock").c_str(), 0700), 0);
    const struct {
        const char* before;
        const char* after;
    } rows[] = {
        {"\n[Default]\nDriver=Old Driver\n; kept\n", "\n[Default]\nDriver=Old Driver\n; kept\n"},
        {"\n[Default]\n; kept\n", "\n[Default]\n; kept\n"},
        {"", "\n"},  // the blank line before the section is no part of it
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.before);
        home.put(".odbcinst.ini", installedDriver() + row.before);
        EXPECT_EQ(add(list({"DSN=Default"})), FALSE);
        EXPECT_EQ(drivers(), installedDriver() + row.after);
        EXPECT_EQ(home.text("sources.ini"), "[Default]\nDriver=/opt/old.so\n");
    }
    rmdir(home.file(".sources.ini.jxlock").c_str());
}

TEST_F(SetupAdd, WorksWhenBothFilesAreOne) {
    setenv("ODBCINI", home.file(".odbcinst.ini").c_str(), 1);
    EXPECT_EQ(add(list({"DSN=Default", "Server=a"})), TRUE);
    EXPECT_EQ(add(list({"DSN=Sales"})), TRUE);
    EXPECT_NE(drivers().find("[Sales]\nDriver=/opt/sample/libsample.so\n"), std::string::npos);
}

TEST_F(SetupAdd, FailsWhereTheFileIsNoRegularFile) {
    ASSERT_EQ(mkdir(home.file(".odbc.ini").c_str(), 0700), 0);
    EXPECT_EQ(add(list({"DSN=Sales"})), FALSE);
    EXPECT_EQ(add(list({"DSN=Default"})), FALSE);
    EXPECT_EQ(drivers(), installedDriver());
    EXPECT_EQ(home.names(), (std::vector<std::string>{".odbc.ini", ".odbcinst.ini"}));
    rmdir(home.file(".odbc.ini").c_str());
}

}  // namespace
