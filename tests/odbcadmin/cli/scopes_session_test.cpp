// User and system: each verb in the two scopes, and what it says of them.
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "admin_test.h"
#include "installed_copy.h"
#include "transcript.h"

namespace jx::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kSystemSources = R"([ODBC Data Sources]
Sales=Wide
Stock=Wide

[Sales]
Driver=/opt/libwide.so
Server=db9
Port=5432

[Stock]
Driver=/opt/libwide.so
Server=db8
)";

constexpr const char* kSystemDrivers = R"([ODBC Drivers]
Wide=Installed

[Wide]
Driver=/opt/libwide.so
)";

class ScopesSession : public AdminTest {
protected:
    ScopesSession() {
        home_.putSystem("odbc.ini", kSystemSources);
        home_.putSystem("odbcinst.ini", kSystemDrivers);
    }

    std::string systemSources() const { return home_.systemText("odbc.ini"); }
    std::string systemDrivers() const { return home_.systemText("odbcinst.ini"); }
};

constexpr const char* kReadingBoth = R"sh($ odbcadmin dsn list
Sales     Plain  user
Accounts  Plain  user
Stock     Wide   system
Sales     Wide   system  (shadowed)
$ odbcadmin dsn list -q
Sales
Accounts
Stock
$ odbcadmin dsn list --user
Sales     Plain
Accounts  Plain
$ odbcadmin dsn list --system
Sales  Wide  system
Stock  Wide  system
$ odbcadmin driver list
Plain  missing  /opt/libplain.so  user
Wide   missing  /opt/libwide.so   system
$ odbcadmin driver list --user
Plain  missing  /opt/libplain.so
$ odbcadmin translator list
There are no translators in ~/.odbcinst.ini or ~.etc/odbcinst.ini
$ odbcadmin dsn show Stock
[Stock]
Driver=/opt/libwide.so
Server=db8
; driver Wide, ~.etc/odbc.ini:10
$ odbcadmin dsn show Sales
[Sales]
Driver=/opt/libplain.so
Server=db1
PWD=********
; driver Plain, ~/.odbc.ini:7; hides [Sales] of ~.etc/odbc.ini:5, the system's
$ odbcadmin dsn show Sales --system
[Sales]
Driver=/opt/libwide.so
Server=db9
Port=5432
; driver Wide, ~.etc/odbc.ini:5
$ odbcadmin dsn get Sales Server
db1
$ odbcadmin dsn get Sales Port
! odbcadmin: Data source Sales has no key Port
!   [Sales] of ~.etc/odbc.ini:5 has it, which this one hides whole
[3]
$ odbcadmin dsn show Stock --user
! odbcadmin: The data source Stock stands in ~.etc/odbc.ini only, the file of the system
!   Leave --user out to read it; --system changes it.
[3]
$ odbcadmin driver show Wide
[Wide]
Driver=/opt/libwide.so
; library missing, used by Stock, ~.etc/odbcinst.ini
$ odbcadmin dsn list --user --system
! odbcadmin: --user excludes --system
!   See odbcadmin dsn list --help
[2]
)sh";

TEST_F(ScopesSession, ReadingBoth) {
    EXPECT_EQ(played(home_, kReadingBoth), kReadingBoth);
}

TEST_F(ScopesSession, JsonHasTheScopeOfEverything) {
    const auto sources = json({"dsn", "list"})["dataSources"];
    ASSERT_EQ(sources.size(), 4U);
    EXPECT_EQ(sources[0]["scope"], "user");
    EXPECT_EQ(sources[0]["shadowed"], false);
    EXPECT_EQ(sources[3]["name"], "Sales");
    EXPECT_EQ(sources[3]["scope"], "system");
    EXPECT_EQ(sources[3]["shadowed"], true);
    const auto shown = json({"dsn", "show", "Sales"});
    EXPECT_EQ(shown["scope"], "user");
    EXPECT_EQ(shown["hides"]["file"], home_.systemFile("odbc.ini"));
    EXPECT_EQ(shown["hides"]["line"], 5);
    const auto value = json({"dsn", "get", "Stock", "Server"});
    EXPECT_EQ(value["scope"], "system");
    EXPECT_EQ(value["file"], home_.systemFile("odbc.ini"));
    EXPECT_TRUE(value["hides"].is_null());
    EXPECT_EQ(json({"driver", "show", "Wide"})["scope"], "system");
}

constexpr const char* kExplainingWhatIsHidden = R"sh($ odbcadmin explain Sales | head -5
data source Sales
  ok      listed   for the driver Plain                                        ~/.odbc.ini:3
  ok      section  [Sales]                                                     ~/.odbc.ini:7
  ok      hides    [Sales] of the system, which would answer without this one  ~.etc/odbc.ini:5
  ok      Driver   /opt/libplain.so                                            ~/.odbc.ini:8
)sh";

TEST_F(ScopesSession, ExplainingWhatIsHidden) {
    EXPECT_EQ(played(home_, kExplainingWhatIsHidden), kExplainingWhatIsHidden);
}

constexpr const char* kChangingTheSystems = R"sh($ odbcadmin dsn set Stock Port=1
! odbcadmin: The data source Stock is the system's: a change in ~/.odbc.ini would hide all of [Stock] in ~.etc/odbc.ini
!   --system changes it for all users; odbcadmin dsn copy Stock --to user gives you one of your own.
[5]
$ odbcadmin dsn set Stock Port=1 --system --dry-run
--- ~.etc/odbc.ini
+++ ~.etc/odbc.ini
@@ -10,3 +10,4 @@
 [Stock]
 Driver=/opt/libwide.so
 Server=db8
+Port=1
$ odbcadmin dsn set Stock Port=1 --system -q
$ odbcadmin dsn get Stock Port
1
$ odbcadmin dsn unset Stock Port --system
Changed data source Stock
$ odbcadmin dsn set Sales Server=db7 --system -q
$ odbcadmin dsn get Sales Server
db1
$ odbcadmin dsn get Sales Server --system
db7
$ odbcadmin dsn add Stock --driver Wide
! odbcadmin: There is a data source Stock in ~.etc/odbc.ini, the system's
!   --system changes that one; --user adds one of your own, which hides it.
[4]
$ odbcadmin dsn add Stock --driver Wide --user
Added data source Stock
! odbcadmin: written directly: Wide has no setup library
! odbcadmin: it hides [Stock] of ~.etc/odbc.ini:10, the system's
$ odbcadmin dsn remove Stock
Removed data source Stock
! odbcadmin: written directly: Wide has no setup library
! odbcadmin: [Stock] of ~.etc/odbc.ini:10, the system's, answers now
$ odbcadmin dsn add Depot --driver Wide --system
Added data source Depot
! odbcadmin: written directly: Wide has no setup library
$ odbcadmin dsn add Other --driver Plain --system
! odbcadmin: The driver Plain stands in ~/.odbcinst.ini only, the file of the user
!   Leave --system out, or copy it first: see odbcadmin driver copy --help.
[3]
$ odbcadmin dsn set Depot PWD=geheim --system
! odbcadmin: Everybody may read ~.etc/odbc.ini, and the value of PWD is a secret
!   Keep it in a file and store PWD@file=PATH instead; --open-secrets stores it all the same.
[5]
$ odbcadmin dsn set Depot PWD=geheim --system --open-secrets -q
$ odbcadmin dsn remove Depot --system -q
$ odbcadmin driver add Third --lib libthird.so --no-setup --system
Added driver Third
$ odbcadmin driver remove Third
! odbcadmin: The driver Third is the system's: it stands in ~.etc/odbcinst.ini
!   --system removes it for all users.
[5]
$ odbcadmin driver remove Third --system
Removed driver Third
$ odbcadmin config set .odbc.ini ODBC Trace 0 --system -q
$ odbcadmin config get .odbc.ini ODBC Trace --system
0
)sh";

TEST_F(ScopesSession, ChangingTheSystems) {
    EXPECT_EQ(played(home_, kChangingTheSystems), kChangingTheSystems);
    // What was added and removed again leaves the blank line above it.
    EXPECT_EQ(sources(), std::string(kSources) + "\n");
    EXPECT_EQ(drivers(), kDrivers);
    EXPECT_EQ(systemDrivers(), std::string(kSystemDrivers) + "\n");
}

constexpr const char* kTracingOfTheSystem =
    R"sh($ printf '[ODBC]\nTrace=1\n' >> "$ODBCSYSINI/odbc.ini" && printf '[A]\n' > .odbc.ini
$ odbcadmin trace status
Tracing is on, file sql.log
$ odbcadmin trace off
unchanged: nothing to do
! odbcadmin: ~.etc/odbc.ini:14 turns it on: odbcadmin trace off --system
$ odbcadmin trace off --system
Tracing is off
$ odbcadmin trace off
unchanged: nothing to do
)sh";

TEST_F(ScopesSession, TracingOfTheSystem) {
    EXPECT_EQ(played(home_, kTracingOfTheSystem), kTracingOfTheSystem);
}

constexpr const char* kRemovingADriverWithItsDataSources = R"sh($ odbcadmin dsn copy Stock Mine --to user -q
$ odbcadmin driver remove Wide --with-dsns
! odbcadmin: The driver Wide is the system's: it stands in ~.etc/odbcinst.ini
!   --system removes it for all users.
[5]
$ odbcadmin dsn list -q
Sales
Accounts
Mine
Stock
$ odbcadmin driver copy Wide --to user -q
$ odbcadmin driver remove Wide --with-dsns
Removed driver Wide and data source Mine
$ odbcadmin driver move Wide --to user -q
$ odbcadmin driver remove Wide
Removed driver Wide
! odbcadmin: these data sources of the other scope use it still: Sales, Stock
$ odbcadmin driver add Wide --lib libwide.so --system -q
$ odbcadmin driver remove Wide --with-dsns --system
Removed driver Wide and data source Sales, Stock
! odbcadmin: data sources of other users are not seen here; for each of them: odbcadmin dsn remove NAME
)sh";

TEST_F(ScopesSession, RemovingADriverWithItsDataSources) {
    EXPECT_EQ(played(home_, kRemovingADriverWithItsDataSources), kRemovingADriverWithItsDataSources);
    EXPECT_EQ(drivers(), std::string(kDrivers) + "\n");
}

constexpr const char* kCopyingAndMoving = R"sh($ odbcadmin dsn copy Stock --to user
Copied data source Stock to the user
$ odbcadmin dsn copy Stock Stock2 --to user
Copied data source Stock to the user as Stock2
$ odbcadmin dsn move Accounts --to system
Moved data source Accounts to the system
! odbcadmin: its driver Plain is not registered for all users: see odbcadmin driver copy --to system
$ odbcadmin dsn move Sales Sales2 --to system
! odbcadmin: Everybody may read ~.etc/odbc.ini, and the value of PWD is a secret
!   Keep it in a file and store PWD@file=PATH instead; --open-secrets stores it all the same.
[5]
$ odbcadmin driver copy Plain --to system
Copied driver Plain to the system
$ odbcadmin driver move Plain --to system
! odbcadmin: There is a driver Plain in ~.etc/odbcinst.ini
!   Remove it first, or give the copy another name.
[4]
$ odbcadmin driver remove Plain
Removed driver Plain
! odbcadmin: these data sources use it still: Sales (--with-dsns removes them too)
$ odbcadmin driver move Plain --to user --check
would change: ~/.odbcinst.ini, ~.etc/odbcinst.ini
! odbcadmin: other users have it no longer, and these data sources of ~.etc/odbc.ini use it: Accounts
[9]
$ odbcadmin driver move Plain --to user
Moved driver Plain to the user
! odbcadmin: other users have it no longer, and these data sources of ~.etc/odbc.ini use it: Accounts
$ odbcadmin dsn copy Stock
! odbcadmin: odbcadmin dsn copy needs a new name, or --to user or system
!   See odbcadmin dsn copy --help
[2]
$ odbcadmin dsn move Stock --to all
! odbcadmin: --to takes user or system, not all
!   See odbcadmin paths for their files.
[2]
)sh";

TEST_F(ScopesSession, CopyingAndMoving) {
    EXPECT_EQ(played(home_, kCopyingAndMoving), kCopyingAndMoving);
    EXPECT_EQ(drivers(), kDrivers);
}

constexpr const char* kDocuments = R"sh($ odbcadmin export Stock
{
  "schema": "odbcadmin/1",
  "drivers": [
    {
      "name": "Wide",
      "scope": "system",
      "keys": {
        "Driver": "/opt/libwide.so"
      }
    }
  ],
  "translators": [],
  "dataSources": [
    {
      "name": "Stock",
      "scope": "system",
      "driver": "Wide",
      "keys": {
        "Server": "db8"
      }
    }
  ]
}
$ odbcadmin export Stock > stock.json
$ odbcadmin export > all.json
! odbcadmin: 1 secret is left out (null); --show-secrets includes it
$ odbcadmin apply -f all.json
unchanged: nothing to do
$ odbcadmin apply -f stock.json --prune system
! odbcadmin: This would remove data source Sales
!   Look at it with --dry-run; --yes removes it without asking. Nothing was changed.
[2]
$ odbcadmin apply -f stock.json --prune system --dry-run
--- ~.etc/odbc.ini
+++ ~.etc/odbc.ini
@@ -1,11 +1,5 @@
 [ODBC Data Sources]
-Sales=Wide
 Stock=Wide
-
-[Sales]
-Driver=/opt/libwide.so
-Server=db9
-Port=5432
 
 [Stock]
 Driver=/opt/libwide.so
$ odbcadmin apply -f stock.json --prune system --yes
Applied 1 driver, 0 translators, 1 data source; removed data source Sales
$ odbcadmin apply -f stock.json --prune system
unchanged: nothing to do
$ odbcadmin apply -f stock.json --prune user --check
would change: ~/.odbcinst.ini, ~/.odbc.ini
[9]
$ odbcadmin apply -f all.json --system
Applied 1 driver, 0 translators, 2 data sources
! odbcadmin: 4 entries of the other scope left out
$ odbcadmin apply -f stock.json --prune both
! odbcadmin: --prune takes user or system, not both
!   It removes from the files of that scope what the document does not have.
[2]
)sh";

TEST_F(ScopesSession, Documents) {
    EXPECT_EQ(played(home_, kDocuments), kDocuments);
    EXPECT_EQ(sources(), kSources);
    EXPECT_EQ(drivers(), kDrivers);
}

TEST_F(ScopesSession, PathsShowsAllFilesWhatMovesThemAndWhoReadsThem) {
    const auto paths = json({"paths"});
    ASSERT_EQ(paths["files"].size(), 4U);
    EXPECT_EQ(paths["files"][1]["scope"], "system");
    EXPECT_EQ(paths["files"][1]["path"], home_.systemFile("odbc.ini"));
    EXPECT_EQ(paths["variables"], nlohmann::ordered_json({"ODBCSYSINI=" + home_.systemPath()}));
    EXPECT_EQ(paths["programs"][0]["program"], "libodbcinst.so.1");
    EXPECT_EQ(paths["programs"][0]["drivers"], nlohmann::ordered_json({home_.file(".odbcinst.ini")}));
    EXPECT_EQ(paths["programs"][1]["dataSources"],
              nlohmann::ordered_json({home_.file(".odbc.ini"), home_.systemFile("odbc.ini")}));
    EXPECT_EQ(out({"paths", "-q", "--system"}),
              home_.systemFile("odbc.ini") + "\n" + home_.systemFile("odbcinst.ini") + "\n");
}

constexpr const char* kWithoutAHome = R"sh($ HOME=$PWD/none odbcadmin lint | grep -A2 --no-group-separator files.missing
note files.missing ~/none/.odbc.ini
  ~/none/.odbc.ini is not there, nor is the home directory ~/none: only ~.etc/odbc.ini is read.
  Nothing needs to be done; a file of this user's own needs mkdir -p ~/none.
note files.missing ~/none/.odbcinst.ini
  ~/none/.odbcinst.ini is not there, nor is the home directory ~/none: only ~.etc/odbcinst.ini is read.
  Nothing needs to be done; a file of this user's own needs mkdir -p ~/none.
$ HOME=$PWD/none odbcadmin lint -q | grep -v ^note
[1]
$ rm "$ODBCSYSINI/odbc.ini"; HOME=$PWD/none odbcadmin lint -q | grep -v ^note
error files.no-directory ~/none/.odbc.ini
)sh";

TEST_F(ScopesSession, AServicesUserNeedsNoHomeWhereTheSystemsFilesAnswer) {
    EXPECT_EQ(played(home_, kWithoutAHome), kWithoutAHome);
}

// A user who may not write /etc is given the command that may; a secret on the line is not repeated.
TEST_F(ScopesSession, WithoutTheRightTheCommandWithSudoIsGiven) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make files of another user";
    const InstalledCopy copy;  // the build may lie where nobody else may go
    const std::string program = copy.file("bin/odbcadmin");
    fs::permissions(home_.path(), fs::perms::all);
    const auto asNobody = [&](const std::string& command) {
        const ProgramResult result =
            runProgram("/usr/bin/setpriv", {"--reuid=65534", "--regid=65534", "--clear-groups", "/bin/sh", "-c",
                                            shellQuoted(program) + " " + command});
        EXPECT_EQ(result.code, 7) << result.out << result.err;
        return result.err;
    };
    const std::string sudo = "  Run it with the right to: sudo ODBCSYSINI=" + home_.systemPath() + " " + program + " ";
    EXPECT_NE(asNobody("dsn set Stock Port=1 --system").find(sudo + "dsn set Stock Port=1 --system\n"),
              std::string::npos);
    EXPECT_NE(asNobody("dsn set Stock PWD=geheim --system --open-secrets")
                  .find(sudo + "dsn set Stock 'PWD=********' --system --open-secrets (with the secret in place of the "
                               "stars)\n"),
              std::string::npos);
    EXPECT_NE(asNobody("dsn move Stock --to user")
                  .find("sudo ODBCSYSINI=" + home_.systemPath() + " " + program + " --home " + home_.path() +
                        " dsn move Stock --to user\n"),
              std::string::npos);
    EXPECT_EQ(systemSources(), kSystemSources);
}

TEST_F(ScopesSession, ASystemsFileThatCannotBeReadIsSaidAndLeftOut) {
    fs::remove(home_.systemFile("odbc.ini"));
    fs::create_directory(home_.systemFile("odbc.ini"));
    const ProgramResult result = run({"dsn", "list"});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, "Sales     Plain\nAccounts  Plain\n");
    EXPECT_EQ(result.err, "odbcadmin: Cannot open " + home_.systemFile("odbc.ini") +
                              ": Is a directory; what stands there is left out\n");
    EXPECT_EQ(run({"dsn", "list", "--system"}).code, 7);
}

// Four programs at once, two in each scope, write keys of their own into the same section.
TEST_F(ScopesSession, TwoWritersInEachScopeLoseNothing) {
    constexpr int kKeys = 15;
    const auto writer = [](const std::string& key, const std::string& options) {
        return "(for i in $(seq " + std::to_string(kKeys) + "); do " + shellQuoted(JX_ODBCADMIN) +
               " -q dsn set Sales " + key + "$i=$i " + options + " || echo failed; done) & ";
    };
    const std::string all = writer("a", "") + writer("b", "") + writer("a", "--system") + writer("b", "--system");
    EXPECT_EQ(runProgram("/bin/sh", {"-c", all + "wait"}).out, "");
    for (const char* scope : {"--user", "--system"}) {
        const auto attributes = json({"dsn", "show", "Sales", scope})["attributes"];
        for (int i = 1; i <= kKeys; ++i)
            for (const char* key : {"a", "b"})
                EXPECT_EQ(attributes[key + std::to_string(i)], std::to_string(i)) << scope;
    }
}

}  // namespace
}  // namespace jx::test
