// lint --fix and doctor --fix: what is mended, what is said, what stays.
#include <sys/stat.h>
#include <unistd.h>

#include "admin_test.h"
#include "transcript.h"

namespace jx::test {
namespace {

class FixingSession : public AdminTest {};

constexpr const char* kMended =
    R"sh($ printf '\357\273\277[ODBC Data Sources]\r\nSales=Plain\r\n[Sales]\r\nDriver="libplain.so"\r\nPWD=x\r\n' > .odbc.ini
$ chmod 600 .odbc.ini
$ odbcadmin lint --fix --check
would change: ~/.odbc.ini
[9]
$ odbcadmin lint --fix --dry-run | tr '\357\273\277\r' '   '
--- ~/.odbc.ini
+++ ~/.odbc.ini
@@ -1,5 +1,5 @@
-   [ODBC Data Sources] 
-Sales=Plain 
-[Sales] 
-Driver="libplain.so" 
-PWD=******** 
+[ODBC Data Sources]
+Sales=Plain
+[Sales]
+Driver=libplain.so
+PWD=********
$ odbcadmin lint --fix
Fixed ~/.odbc.ini:1: the byte order mark
Fixed ~/.odbc.ini:4: the quotes around the value of Driver
Fixed ~/.odbc.ini: the carriage returns at the ends of 5 lines
warning names.relative-path data source Sales
  ~/.odbc.ini:4: Driver is "libplain.so", which the loader looks for where it looks for libraries.
  Give the full path of the library; odbcadmin driver scan shows those that are there.
warning names.stale-path data source Sales
  ~/.odbc.ini:4: Driver is libplain.so; the driver Plain has /opt/libplain.so (~/.odbcinst.ini:5).
  Unless the other is meant, enter the driver's: odbcadmin dsn ensure Sales --driver Plain
note names.no-setup-key driver Plain
  ~/.odbcinst.ini:4: the section has no value for Setup, so programs cannot add or change its data sources.
  Name its setup library; if it brings none: odbcadmin driver ensure Plain --lib /opt/libplain.so --setup libjxsetup.so
0 errors, 2 warnings, 1 note.
$ cat .odbc.ini
[ODBC Data Sources]
Sales=Plain
[Sales]
Driver=libplain.so
PWD=x
$ odbcadmin lint --fix --check
unchanged: nothing to do
$ odbcadmin lint --fix -q
warning names.relative-path data source Sales
warning names.stale-path data source Sales
note names.no-setup-key driver Plain
)sh";

TEST_F(FixingSession, IsShownAndThenMended) {
    EXPECT_EQ(played(home_, kMended), kMended);
    EXPECT_EQ(drivers(), kDrivers);
}

constexpr const char* kFilesAreNamed = R"sh($ printf '[A]\r\nDriver="/opt/libplain.so"\n' > a.ini
$ cp a.ini b.ini
$ odbcadmin lint a.ini --fix
Fixed ~/a.ini:2: the quotes around the value of Driver
Fixed ~/a.ini: the carriage returns at the ends of 1 line
No problems were found.
$ cat a.ini
[A]
Driver=/opt/libplain.so
$ odbcadmin lint b.ini none.ini --fix
! odbcadmin: There is no file ~/none.ini
!   Give files that exist.
[7]
$ tr '\r' '~' < b.ini
[A]~
Driver="/opt/libplain.so"
$ odbcadmin doctor Sales --fix
! odbcadmin: NAME excludes --fix
!   See odbcadmin doctor --help
[2]
)sh";

TEST_F(FixingSession, FilesAreNamed) {
    EXPECT_EQ(played(home_, kFilesAreNamed), kFilesAreNamed);
}

TEST_F(FixingSession, TheDoctorLooksAgainAfterwards) {
    home_.put(".odbc.ini", "");
    home_.put(".odbcinst.ini", "[ODBC Drivers]\nEcho=Installed\n[Echo]\nDriver=\"" JX_ECHO "\"\n");
    EXPECT_EQ(run({"doctor"}).code, 10);
    const auto answer = json({"doctor", "--fix"});
    EXPECT_EQ(answer["result"], "changed");
    EXPECT_EQ(answer["changed"], true);
    EXPECT_EQ(answer["files"], (nlohmann::ordered_json{home_.file(".odbcinst.ini")}));
    EXPECT_EQ(answer["fixed"][0]["subject"], home_.file(".odbcinst.ini") + ":4");
    EXPECT_EQ(answer["fixed"][0]["what"], "the quotes around the value of Driver");
    for (const auto& finding : answer["findings"])
        EXPECT_NE(finding["severity"], "error") << finding;
    EXPECT_EQ(json({"doctor", "--fix"})["changed"], false);
    EXPECT_EQ(drivers(), "[ODBC Drivers]\nEcho=Installed\n[Echo]\nDriver=" JX_ECHO "\n");
}

TEST_F(FixingSession, ErrorsThatAreLeftMakeTheExitCode) {
    home_.put(".odbc.ini", "[open\r\n");
    const ProgramResult result = run({"lint", "--fix"});
    EXPECT_EQ(result.code, 10);
    EXPECT_NE(result.out.find("error syntax.unclosed-bracket"), std::string::npos);
    EXPECT_EQ(sources(), "[open\n");
}

TEST_F(FixingSession, AFileThatCannotBeChangedIsToldOf) {
    home_.put(".odbc.ini", "[A]\r\n");
    home_.put(".odbc.ini.jxlock", "not a lock");
    const ProgramResult result = run({"lint", "--fix", "--json"});
    EXPECT_EQ(result.code, 7);
    EXPECT_EQ(nlohmann::ordered_json::parse(result.out)["error"]["code"], 7);
    EXPECT_EQ(sources(), "[A]\r\n");
}

TEST_F(FixingSession, ModeAndAbsentFilesStay) {
    home_.put(".odbc.ini", "[A]\r\n");
    chmod(home_.file(".odbc.ini").c_str(), 0640);
    unlink(home_.file(".odbcinst.ini").c_str());
    run({"lint", "--fix"});
    struct stat state {};
    ASSERT_EQ(stat(home_.file(".odbc.ini").c_str(), &state), 0);
    EXPECT_EQ(state.st_mode & 0777U, 0640U);
    EXPECT_NE(access(home_.file(".odbcinst.ini").c_str(), F_OK), 0);
}

}  // namespace
}  // namespace jx::test
