// install: what a script offers, what is entered, and scripts that offer nothing.
#include "admin_test.h"
#include "transcript.h"

namespace jx::test {
namespace {

class InstallSession : public AdminTest {};

constexpr const char* kInstallingAndRemoving =
    R"sh($ printf '[ODBC Drivers]\n"Pack"=\n"Other"=\n[Pack]\n"Driver"=1,libpack.so,,,,2024-01-31,,,,,,,,,,1067,,,,1.0,\n[Other]\n"Driver"=1,libother.so,,,,2023-02-28,,,,,,,,,,2134,,,,2.0,\n' >odbc.inf
$ odbcadmin install odbc.inf --dry-run
--- ~/.odbcinst.ini
+++ ~/.odbcinst.ini
@@ -1,6 +1,14 @@
 [ODBC Drivers]
 Plain=Installed
+Pack=Installed
+Other=Installed
 
 [Plain]
 Driver=/opt/libplain.so
 FileUsage=0
+
+[Pack]
+Driver=~/libpack.so
+
+[Other]
+Driver=~/libother.so
$ odbcadmin install odbc.inf --check
would change: ~/.odbcinst.ini
[9]
$ odbcadmin install odbc.inf
driver  Pack   added  ~/libpack.so   missing
driver  Other  added  ~/libother.so  missing
Installed from ~/odbc.inf
$ cat .odbcinst.ini
[ODBC Drivers]
Plain=Installed
Pack=Installed
Other=Installed

[Plain]
Driver=/opt/libplain.so
FileUsage=0

[Pack]
Driver=~/libpack.so

[Other]
Driver=~/libother.so
$ odbcadmin install odbc.inf Pack --check
would change: ~/.odbcinst.ini
[9]
$ odbcadmin --json install odbc.inf Pack
{
  "schema": "odbcadmin/1",
  "result": "changed",
  "changed": true,
  "message": "Installed from ~/odbc.inf",
  "files": [
    "~/.odbcinst.ini"
  ],
  "drivers": [
    {
      "name": "Pack",
      "status": "unchanged",
      "library": "~/libpack.so",
      "state": "missing"
    }
  ],
  "translators": [],
  "dataSources": [],
  "missing": []
}
$ odbcadmin install odbc.inf --from /opt/pack Pack
! odbcadmin: There is no directory /opt/pack
!   Give --from the directory where the libraries lie.
[7]
$ odbcadmin driver show Pack
[Pack]
Driver=~/libpack.so
; library missing, used by no data source, ~/.odbcinst.ini
$ odbcadmin driver remove Pack
Removed driver Pack
$ odbcadmin -q driver list
Plain
Other
$ odbcadmin driver remove Plain
Removed driver Plain
! odbcadmin: these data sources use it still: Sales, Accounts (--with-dsns removes them too)
$ odbcadmin driver remove Pack
! odbcadmin: There is no driver Pack in ~/.odbcinst.ini
!   See odbcadmin driver list; odbcadmin driver add registers one.
[3]
$ odbcadmin install odbc.inf Nobody
! odbcadmin: There is no driver Nobody in ~/odbc.inf
!   It offers Pack, Other
[3]
$ odbcadmin install absent.inf
! odbcadmin: Cannot open ~/absent.inf: No such file or directory
!   Give the path of an installation script.
[7]
$ odbcadmin install .
! odbcadmin: Cannot open ~/: Is a directory
!   There must be a file at this place, or nothing.
[7]
$ odbcadmin install
! odbcadmin: FILE is required
!   See odbcadmin install --help
[2]
)sh";

TEST_F(InstallSession, InstallingAndRemoving) {
    EXPECT_EQ(played(home_, kInstallingAndRemoving), kInstallingAndRemoving);
}

constexpr const char* kScriptsThatHoldNothingToInstall =
    R"sh($ cp .odbcinst.ini before
$ : >empty.inf
$ odbcadmin install empty.inf
! odbcadmin: ~/empty.inf offers neither drivers nor translators
!   It must list them in sections [ODBC Drivers] and [ODBC Translators].
[3]
$ printf '[ODBC Drivers]\n' >none.inf
$ odbcadmin install none.inf
! odbcadmin: ~/none.inf offers neither drivers nor translators
!   It must list them in sections [ODBC Drivers] and [ODBC Translators].
[3]
$ printf '[ODBC Drivers]\n"Bare"=\n' >bare.inf
$ odbcadmin install bare.inf
! odbcadmin: Not installed from ~/bare.inf: driver Bare (its section in the script has no line "Driver" whose second field names the library)
!   Mend what is named and install again; what is entered already stays.
[1]
$ printf '[ODBC Drivers]\n"Odd"=\n[Odd]\n"Driver"=x\n' >odd.inf
$ odbcadmin install odd.inf
! KALDERO ODBC Admin: Not able to find comma 1 in File: ~/odd.inf Section: Odd Entry: Driver
! odbcadmin: Not installed from ~/odd.inf: driver Odd (its section in the script has no line "Driver" whose second field names the library)
!   Mend what is named and install again; what is entered already stays.
[1]
$ cmp .odbcinst.ini before
)sh";

TEST_F(InstallSession, ScriptsThatHoldNothingToInstall) {
    EXPECT_EQ(played(home_, kScriptsThatHoldNothingToInstall), kScriptsThatHoldNothingToInstall);
}

}  // namespace
}  // namespace jx::test
