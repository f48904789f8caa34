// Where the user's files are, as the environment and the account tell.
#include "ini_location.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>

#include "child_process.h"
#include "test_home.h"

namespace jx::ini::test {
namespace {

using jx::test::TestHome;

// Null unsets.
void setVariable(const char* name, const char* value) {
    if (value == nullptr)
        ::unsetenv(name);
    else
        ::setenv(name, value, 1);
}

std::string accountFile(const char* name) {
    const passwd* account = ::getpwuid(::geteuid());
    return account == nullptr ? std::string() : std::string(account->pw_dir) + "/" + name;
}

struct Row {
    const char* name;
    const char* home;
    const char* dataSources;
    const char* drivers;
    std::string dataSourcePath;
    std::string driverPath;
};

TEST(IniLocation, TheTwoFilesAreInTheHomeDirectoryUnlessTheirVariablesSayOtherwise) {
    const TestHome home;
    const Row rows[] = {
        {"home", "/h", nullptr, nullptr, "/h/.odbc.ini", "/h/.odbcinst.ini"},
        {"a slash at its end", "/h/", nullptr, nullptr, "/h/.odbc.ini", "/h/.odbcinst.ini"},
        {"the root", "/", nullptr, nullptr, "/.odbc.ini", "/.odbcinst.ini"},
        {"a relative home", "h", nullptr, nullptr, "h/.odbc.ini", "h/.odbcinst.ini"},
        {"no home", nullptr, nullptr, nullptr, accountFile(".odbc.ini"), accountFile(".odbcinst.ini")},
        {"an empty home", "", nullptr, nullptr, accountFile(".odbc.ini"), accountFile(".odbcinst.ini")},
        {"one named", "/h", "/x/own.ini", nullptr, "/x/own.ini", "/h/.odbcinst.ini"},
        {"the other named", "/h", nullptr, "/x/inst.ini", "/h/.odbc.ini", "/x/inst.ini"},
        {"both named, no home", nullptr, "/x/own.ini", "/x/inst.ini", "/x/own.ini", "/x/inst.ini"},
        {"named empty", "/h", "", "", "/h/.odbc.ini", "/h/.odbcinst.ini"},
        {"blanks are part of a name", "/h", " ", "a b", " ", "a b"},
        {"a variable that only begins alike", "/h", nullptr, nullptr, "/h/.odbc.ini", "/h/.odbcinst.ini"},
    };
    ::setenv("ODBCINIX", "/wrong", 1);
    ::setenv("HOMEX", "/wrong", 1);
    IniLocator locator;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        setVariable("HOME", row.home);
        setVariable("ODBCINI", row.dataSources);
        setVariable("ODBCINSTINI", row.drivers);
        EXPECT_EQ(locate(kDataSourceFile).path, row.dataSourcePath);
        EXPECT_EQ(locate(kDriverFile).path, row.driverPath);
        EXPECT_EQ(*locator.find(kDataSourceFile), row.dataSourcePath);
        EXPECT_EQ(*locator.find(kDriverFile), row.driverPath);
    }
    ::unsetenv("ODBCINIX");
    ::unsetenv("HOMEX");
}

TEST(IniLocation, OnlyThePlaceThatODBCINSTININamesIsShared) {
    const TestHome home;
    EXPECT_FALSE(locate(kDataSourceFile).shared);
    EXPECT_FALSE(locate(kDriverFile).shared);
    setVariable("ODBCINI", "/x/own.ini");
    setVariable("ODBCINSTINI", "");
    EXPECT_FALSE(locate(kDataSourceFile).shared);
    EXPECT_FALSE(locate(kDriverFile).shared);
    setVariable("ODBCINSTINI", "/x/inst.ini");
    EXPECT_FALSE(locate(kDataSourceFile).shared);
    EXPECT_TRUE(locate(kDriverFile).shared);
    EXPECT_FALSE(locate("/x/inst.ini").shared);
}

TEST(IniLocation, EveryOtherNameIsItsOwnPath) {
    const TestHome home;
    setVariable("ODBCINI", "/x/own.ini");
    IniLocator locator;
    for (const char* name : {"odbc.ini", ".ODBC.INI", "./.odbc.ini", ".odbc.ini ", "/etc/odbcinst.ini", "x", " "}) {
        EXPECT_EQ(locate(name).path, name);
        EXPECT_EQ(*locator.find(name), name);
    }
}

TEST(IniLocation, AsSpelledNoNameIsSpecial) {
    const TestHome home;
    EXPECT_EQ(locateAsSpelled(".odbc.ini").path, ".odbc.ini");
    EXPECT_EQ(locateAsSpelled("x").path, "x");
}

TEST(IniLocation, NoNameIsNoPath) {
    for (const char* name : {static_cast<const char*>(nullptr), ""}) {
        errno = 0;
        EXPECT_EQ(locate(name).path, "");
        EXPECT_EQ(errno, EINVAL);
        errno = 0;
        EXPECT_EQ(locateAsSpelled(name).path, "");
        EXPECT_EQ(errno, EINVAL);
    }
    IniLocator locator;
    errno = 0;
    EXPECT_EQ(locator.find(""), nullptr);
    EXPECT_EQ(errno, EINVAL);
}

TEST(IniLocation, TheEnvironmentIsReadAtEachCall) {
    const TestHome home;
    IniLocator locator;
    for (int round = 0; round < 3; ++round) {
        setVariable("HOME", "/one");
        EXPECT_EQ(*locator.find(kDriverFile), "/one/.odbcinst.ini");
        EXPECT_EQ(*locator.find(kDataSourceFile), "/one/.odbc.ini");
        setVariable("HOME", "/two");
        EXPECT_EQ(*locator.find(kDataSourceFile), "/two/.odbc.ini");
        setVariable("ODBCINI", "/own.ini");
        EXPECT_EQ(*locator.find(kDataSourceFile), "/own.ini");
        setVariable("ODBCINI", "/other.ini");
        EXPECT_EQ(*locator.find(kDataSourceFile), "/other.ini");
        setVariable("ODBCINI", nullptr);
        EXPECT_EQ(*locator.find(kDataSourceFile), "/two/.odbc.ini");
    }
}

// The string belongs to the environment and may change where it lies.
TEST(IniLocation, AVariableThatChangesInPlaceIsReadAsItIs) {
    const TestHome home;
    static char variable[] = "ODBCINI=/first.ini";  // the environment holds it, not a copy
    ::putenv(variable);
    IniLocator locator;
    EXPECT_EQ(*locator.find(kDataSourceFile), "/first.ini");
    variable[sizeof "ODBCINI="] = 'F';
    EXPECT_EQ(*locator.find(kDataSourceFile), "/First.ini");
    ::unsetenv("ODBCINI");
}

TEST(IniLocation, AnAccountThatDoesNotExistHasNoFiles) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can become an account that does not exist";
    EXPECT_TRUE(passesInChild([] {
        constexpr uid_t kNoAccount = 54321;
        ASSERT_EQ(::getpwuid(kNoAccount), nullptr);
        ASSERT_EQ(::setuid(kNoAccount), 0);
        ::unsetenv("HOME");
        errno = 0;
        EXPECT_EQ(locate(kDataSourceFile).path, "");
        EXPECT_EQ(errno, ENOENT);
        IniLocator locator;
        EXPECT_EQ(locator.find(kDriverFile), nullptr);
    }));
}

TEST(IniLocation, TheAccountIsTheOneTheProgramRunsAs) {
    EXPECT_TRUE(passesAsNobody([] {
        ::unsetenv("HOME");
        ::unsetenv("ODBCINI");
        EXPECT_EQ(locate(kDataSourceFile).path, accountFile(".odbc.ini"));
    }));
}

}  // namespace
}  // namespace jx::ini::test
