// Which data sources mean a driver, in the files of both scopes.
#include "odbcadmin/model/driver_users.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "model_fixture.h"

namespace jx::model::test {
namespace {

class DriverUsersTest : public ModelTest {
protected:
    DriverUsersTest() {
        home_.putSystem("odbcinst.ini", "[Wide]\nDriver=/opt/libwide.so\n");
        home_.putSystem("odbc.ini",
                        "[ODBC Data Sources]\nStock=Wide\nPlainly=Plain\n[ByPath]\nDriver=/opt/libwide.so\n");
        home_.put(".odbc.ini", "[ODBC Data Sources]\nSales=plain\n[Mine]\nDriver=WIDE\n");
    }

    // "user: A, B; system: C"
    static std::string shown(const std::string& driver, Scope scope) {
        std::string text;
        for (const DriverUsers& each : usersOfDriver(driver, scope)) {
            text += std::string(text.empty() ? "" : "; ") + scopeWord(each.scope) + ":";
            for (const std::string& name : each.names)
                text += " " + name;
        }
        return text;
    }
};

TEST_F(DriverUsersTest, BothFilesCountWhileNoDriverOfTheirOwnScopeIsMeant) {
    EXPECT_EQ(shown("Wide", Scope::system), "user: Mine; system: Stock");
    EXPECT_EQ(shown("Plain", Scope::user), "user: Sales; system: Plainly");
    home_.putSystem("odbcinst.ini", "[Wide]\nDriver=/opt/libwide.so\n[Plain]\nDriver=/opt/libplain.so\n");
    EXPECT_EQ(shown("Plain", Scope::user), "user: Sales");
    home_.put(".odbcinst.ini", "[Wide]\nDriver=/opt/own.so\n");
    EXPECT_EQ(shown("Wide", Scope::system), "system: Stock");
    EXPECT_EQ(shown("Other", Scope::user), "");
}

TEST_F(DriverUsersTest, OneFileOfDriversForBothIsMeantByAll) {
    setenv("ODBCINSTINI", home_.systemFile("odbcinst.ini").c_str(), 1);
    EXPECT_EQ(shown("Wide", Scope::user), "user: Mine; system: Stock");
    EXPECT_EQ(shown("Wide", Scope::system), "user: Mine; system: Stock");
    setenv("ODBCINI", home_.systemFile("odbc.ini").c_str(), 1);
    EXPECT_EQ(shown("Wide", Scope::user), "user: Stock");
    unsetenv("ODBCINSTINI");
    unsetenv("ODBCINI");
}

TEST_F(DriverUsersTest, WhetherTheyMayBeChangedIsTheRightToReplaceTheirFile) {
    const std::vector<DriverUsers> users = usersOfDriver("Wide", Scope::system);
    ASSERT_EQ(users.size(), 2U);
    EXPECT_EQ(users[1].path, home_.systemFile("odbc.ini"));
    EXPECT_TRUE(users[0].mayChange && users[1].mayChange);
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can take the rights of another user";
    namespace fs = std::filesystem;
    fs::permissions(home_.path(), fs::perms::all);
    fs::permissions(home_.file(".odbc.ini"), fs::perms(0644));
    for (const char* file : {"odbc.ini", "odbcinst.ini"})
        fs::permissions(home_.systemFile(file), fs::perms(0644));
    fs::permissions(home_.systemPath(), fs::perms(0755));
    ASSERT_EQ(::seteuid(65534), 0);
    const std::vector<DriverUsers> nobodys = usersOfDriver("Wide", Scope::system);
    ASSERT_EQ(::seteuid(0), 0);
    ASSERT_EQ(nobodys.size(), 2U);
    EXPECT_TRUE(nobodys[0].mayChange);
    EXPECT_FALSE(nobodys[1].mayChange);
}

}  // namespace
}  // namespace jx::model::test
