// Where the user's files are, by the environment and the account.
#include "jxutl/ini/ini_location.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "child_process.h"
#include "rules/sections.h"
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
        EXPECT_EQ(locate(rules::kDataSourceFile).path, row.dataSourcePath);
        EXPECT_EQ(locate(rules::kDriverFile).path, row.driverPath);
        EXPECT_EQ(*locator.find(rules::kDataSourceFile).path, row.dataSourcePath);
        EXPECT_EQ(*locator.find(rules::kDriverFile).path, row.driverPath);
    }
    ::unsetenv("ODBCINIX");
    ::unsetenv("HOMEX");
}

TEST(IniLocation, OnlyThePlaceThatODBCINSTININamesIsShared) {
    const TestHome home;
    EXPECT_FALSE(locate(rules::kDataSourceFile).shared);
    EXPECT_FALSE(locate(rules::kDriverFile).shared);
    setVariable("ODBCINI", "/x/own.ini");
    setVariable("ODBCINSTINI", "");
    EXPECT_FALSE(locate(rules::kDataSourceFile).shared);
    EXPECT_FALSE(locate(rules::kDriverFile).shared);
    setVariable("ODBCINSTINI", "/x/inst.ini");
    EXPECT_FALSE(locate(rules::kDataSourceFile).shared);
    EXPECT_TRUE(locate(rules::kDriverFile).shared);
    EXPECT_FALSE(locate("/x/inst.ini").shared);
}

TEST(IniLocation, EveryOtherNameIsItsOwnPath) {
    const TestHome home;
    setVariable("ODBCINI", "/x/own.ini");
    IniLocator locator;
    for (const char* name : {"odbc.ini", ".ODBC.INI", "./.odbc.ini", ".odbc.ini ", "/etc/odbcinst.ini", "x", " "}) {
        EXPECT_EQ(locate(name).path, name);
        EXPECT_EQ(*locator.find(name).path, name);
    }
}

TEST(IniLocation, AsSpelledNoNameIsSpecial) {
    const TestHome home;
    EXPECT_EQ(locateAsSpelled(".odbc.ini").path, ".odbc.ini");
    EXPECT_EQ(locateAsSpelled("x").path, "x");
}

TEST(IniLocation, AMissingNameHasNoPath) {
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
    EXPECT_EQ(locator.find("").path, nullptr);
    EXPECT_EQ(errno, EINVAL);
}

TEST(IniLocation, TheEnvironmentIsReadAtEachCall) {
    const TestHome home;
    IniLocator locator;
    for (int round = 0; round < 3; ++round) {
        setVariable("HOME", "/one");
        EXPECT_EQ(*locator.find(rules::kDriverFile).path, "/one/.odbcinst.ini");
        EXPECT_EQ(*locator.find(rules::kDataSourceFile).path, "/one/.odbc.ini");
        setVariable("HOME", "/two");
        EXPECT_EQ(*locator.find(rules::kDataSourceFile).path, "/two/.odbc.ini");
        setVariable("ODBCINI", "/own.ini");
        EXPECT_EQ(*locator.find(rules::kDataSourceFile).path, "/own.ini");
        setVariable("ODBCINI", "/other.ini");
        EXPECT_EQ(*locator.find(rules::kDataSourceFile).path, "/other.ini");
        setVariable("ODBCINI", nullptr);
        EXPECT_EQ(*locator.find(rules::kDataSourceFile).path, "/two/.odbc.ini");
    }
}

// Environment: while it exists, the process's environment is these strings, or null.
class Environment {
public:
    explicit Environment(std::vector<const char*> variables) : variables_(std::move(variables)) {
        variables_.push_back(nullptr);
        environ = const_cast<char**>(variables_.data());
    }
    Environment() { environ = nullptr; }
    ~Environment() { environ = before_; }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

private:
    char** before_ = environ;
    std::vector<const char*> variables_;
};

void expectDataSources(const std::string& path) {
    IniLocator locator;
    EXPECT_EQ(locate(rules::kDataSourceFile).path, path);
    EXPECT_EQ(*locator.find(rules::kDataSourceFile).path, path);
}

TEST(IniLocation, OfVariablesThatAreThereTwiceTheFirstCounts) {
    const TestHome home;
    {
        const Environment environment({"HOME=/first", "HOME=/second"});
        expectDataSources("/first/.odbc.ini");
    }
    {
        const Environment environment({"HOME=", "HOME=/second"});
        expectDataSources(accountFile(".odbc.ini"));
    }
    {
        const Environment environment({"ODBCINI=/first.ini", "HOME=/h", "ODBCINI=/second.ini"});
        expectDataSources("/first.ini");
    }
    {
        const Environment environment({"HOME=/h", "ODBCINI=", "ODBCINI=/second.ini"});
        expectDataSources("/h/.odbc.ini");
    }
}

TEST(IniLocation, AnEnvironmentNeedNotBeWellFormed) {
    const TestHome home;
    {
        const Environment environment({"", "=", "H", "HOME", "HOMER=/x", "HOM=/x", "O", "ODBCINI", "HOME=/h", "ODBC"});
        expectDataSources("/h/.odbc.ini");
    }
    {
        const Environment environment({"HOME", "O"});
        expectDataSources(accountFile(".odbc.ini"));
    }
    const Environment none;
    expectDataSources(accountFile(".odbc.ini"));
}

// Files are cached by number, so no two paths may have the same one.
TEST(IniLocation, ANumberStandsForOnePath) {
    const TestHome home;
    IniLocator locator;
    setVariable("HOME", "/one");
    const auto dataSources = locator.find(rules::kDataSourceFile).number;
    const auto drivers = locator.find(rules::kDriverFile).number;
    EXPECT_NE(dataSources, 0U);
    EXPECT_NE(drivers, 0U);
    EXPECT_NE(drivers, dataSources);
    EXPECT_EQ(locator.find(rules::kDataSourceFile).number, dataSources);
    setVariable("HOME", "/two");
    const auto others = locator.find(rules::kDataSourceFile).number;
    EXPECT_NE(others, 0U);
    EXPECT_NE(others, dataSources);
    EXPECT_NE(others, drivers);
    EXPECT_EQ(locator.find("other.ini").number, 0U);
    setVariable("ODBCINI", "/own.ini");
    EXPECT_EQ(locator.find(rules::kDataSourceFile).number, 0U);
}

// A program may change the environment's string in place.
TEST(IniLocation, AVariableThatChangesInPlaceIsReadAsItIs) {
    const TestHome home;
    static char variable[] = "ODBCINI=/first.ini";  // the environment holds it, not a copy
    ::putenv(variable);
    IniLocator locator;
    EXPECT_EQ(*locator.find(rules::kDataSourceFile).path, "/first.ini");
    variable[sizeof "ODBCINI="] = 'F';
    EXPECT_EQ(*locator.find(rules::kDataSourceFile).path, "/First.ini");
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
        EXPECT_EQ(locate(rules::kDataSourceFile).path, "");
        EXPECT_EQ(errno, ENOENT);
        IniLocator locator;
        EXPECT_EQ(locator.find(rules::kDriverFile).path, nullptr);
    }));
}

TEST(IniLocation, TheAccountIsTheOneTheProgramRunsAs) {
    EXPECT_TRUE(passesAsNobody([] {
        ::unsetenv("HOME");
        ::unsetenv("ODBCINI");
        EXPECT_EQ(locate(rules::kDataSourceFile).path, accountFile(".odbc.ini"));
    }));
}

}  // namespace
}  // namespace jx::ini::test
