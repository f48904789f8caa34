// A driver that is renamed, removed or moved, and the data sources of both scopes that use it.
#include <unistd.h>

#include <filesystem>

#include "admin_test.h"
#include "installed_copy.h"
#include "transcript.h"

namespace jx::test {
namespace {

namespace fs = std::filesystem;

class DriverScopesSession : public AdminTest {
protected:
    DriverScopesSession() {
        home_.put(".odbcinst.ini", "[ODBC Drivers]\nPlain=Installed\n\n[Plain]\nDriver=/opt/libplain.so\n");
        home_.put(".odbc.ini", R"([ODBC Data Sources]
Mine=Wide
Own=Plain

[Mine]
Driver=Wide
)");
        home_.putSystem("odbcinst.ini", "[ODBC Drivers]\nWide=Installed\n\n[Wide]\nDriver=/opt/libwide.so\n");
        home_.putSystem("odbc.ini",
                        "[ODBC Data Sources]\nStock=Wide\nDepot=Plain\n\n[Stock]\nDriver=/opt/libwide.so\n");
    }
};

constexpr const char* kRenaming = R"sh($ odbcadmin driver rename Wide Broad --system
Renamed driver Wide to Broad, also in data source Mine (user), Stock
! odbcadmin: data sources of other users are not seen here; for each of them: odbcadmin dsn ensure NAME --driver Broad
$ head -6 .odbc.ini
[ODBC Data Sources]
Mine=Broad
Own=Plain

[Mine]
Driver=Broad
$ odbcadmin dsn list
Mine   Broad  user
Own    Plain  user
Stock  Broad  system
Depot  Plain  system
$ odbcadmin driver rename Plain 'New Plain' --user
Renamed driver Plain to New Plain, also in data source Own
! odbcadmin: left as they are in ~.etc/odbc.ini: Depot; odbcadmin driver copy 'New Plain' --to system, then for each of them: odbcadmin dsn ensure NAME --driver 'New Plain' --system
$ odbcadmin driver copy 'New Plain' --to system -q && odbcadmin dsn ensure Depot --driver 'New Plain' --system -q && odbcadmin driver remove 'New Plain' --system -q
$ odbcadmin config set .odbc.ini 'ODBC Data Sources' Depot Plain --system -q
$ odbcadmin driver rename 'New Plain' Plain --user -q
$ odbcadmin driver rename Plain 'New Plain' --dry-run | grep '^[-+]'
--- ~/.odbcinst.ini
+++ ~/.odbcinst.ini
-Plain=Installed
+New Plain=Installed
-[Plain]
+[New Plain]
--- ~/.odbc.ini
+++ ~/.odbc.ini
-Own=Plain
+Own=New Plain
--- ~.etc/odbc.ini
+++ ~.etc/odbc.ini
-Depot=Plain
+Depot=New Plain
$ odbcadmin driver add Plain --lib /bin/true --no-setup --system -q; odbcadmin driver rename Plain Other
Renamed driver Plain to Other, also in data source Own
)sh";

TEST_F(DriverScopesSession, DataSourcesOfBothScopesFollowARenamedDriver) {
    EXPECT_EQ(played(home_, kRenaming), kRenaming);
}

constexpr const char* kRemoving = R"sh($ odbcadmin driver remove Wide --system --dry-run
--- ~.etc/odbcinst.ini
+++ ~.etc/odbcinst.ini
@@ -1,5 +1,2 @@
 [ODBC Drivers]
-Wide=Installed
 
-[Wide]
-Driver=/opt/libwide.so
! odbcadmin: these data sources of the other scope use it still: Mine
! odbcadmin: these data sources use it still: Stock (--with-dsns removes them too)
$ odbcadmin driver remove Wide --system --with-dsns
Removed driver Wide and data source Mine (user), Stock
! odbcadmin: data sources of other users are not seen here; for each of them: odbcadmin dsn remove NAME
$ odbcadmin driver remove Plain --with-dsns --user
Removed driver Plain and data source Own
! odbcadmin: left as they are in ~.etc/odbc.ini: Depot; for each of them: odbcadmin dsn remove NAME --system
$ odbcadmin driver remove Plain --with-dsns --if-exists --system
Removed data source Depot
! odbcadmin: data sources of other users are not seen here; for each of them: odbcadmin dsn remove NAME
$ odbcadmin driver remove Plain --with-dsns --if-exists --system
unchanged: nothing to do
$ odbcadmin dsn list
There are no data sources in ~/.odbc.ini or ~.etc/odbc.ini
)sh";

TEST_F(DriverScopesSession, DataSourcesOfBothScopesGoWithARemovedDriver) {
    EXPECT_EQ(played(home_, kRemoving), kRemoving);
}

constexpr const char* kMoving = R"sh($ odbcadmin driver move Wide --to user
Moved driver Wide to the user
! odbcadmin: other users have it no longer, and these data sources of ~.etc/odbc.ini use it: Stock
$ odbcadmin driver move Wide --to system
Moved driver Wide to the system
$ odbcadmin driver copy Wide --to user
Copied driver Wide to the user
$ odbcadmin driver add Alone --lib /bin/true --no-setup --system -q; odbcadmin driver move Alone --to user
Moved driver Alone to the user
! odbcadmin: other users have it no longer; driver copy leaves it to them
)sh";

TEST_F(DriverScopesSession, AMovedDriverIsMissedByOtherUsers) {
    EXPECT_EQ(played(home_, kMoving), kMoving);
}

TEST_F(DriverScopesSession, WithoutTheRightThoseOfTheOtherScopeStayAndAreNamed) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can run a program as another user";
    const InstalledCopy copy;  // the build may lie where nobody else may go
    fs::permissions(home_.path(), fs::perms::all);
    for (const char* file : {".odbc.ini", ".odbcinst.ini"})
        ASSERT_EQ(::chown(home_.file(file).c_str(), 65534, 65534), 0);
    for (const char* file : {"odbc.ini", "odbcinst.ini"})
        fs::permissions(home_.systemFile(file), fs::perms(0644));
    fs::permissions(home_.systemPath(), fs::perms(0755));
    const ProgramResult result =
        runProgram("/usr/bin/setpriv", {"--reuid=65534", "--regid=65534", "--clear-groups", copy.file("bin/odbcadmin"),
                                        "driver", "rename", "Plain", "Even"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, "Renamed driver Plain to Even, also in data source Own\n");
    EXPECT_EQ(result.err,
              "odbcadmin: left as they are in " + home_.systemFile("odbc.ini") +
                  ": Depot; odbcadmin driver copy Even --to system, then for each of them: odbcadmin dsn ensure NAME "
                  "--driver Even --system\n");
    EXPECT_EQ(home_.systemText("odbc.ini").find("Even"), std::string::npos);
}

}  // namespace
}  // namespace jx::test
