// What programs read after a change: what was done, and in which files.
#include "admin_test.h"
#include "transcript.h"

namespace jx::test {
namespace {

class JsonChanges : public AdminTest {};

constexpr const char* kChangesAsJson =
    R"sh($ odbcadmin --json dsn add New --driver Plain Server=db3
{
  "schema": "odbcadmin/1",
  "result": "changed",
  "changed": true,
  "message": "Added data source New",
  "files": [
    "~/.odbc.ini"
  ],
  "remarks": [
    "written directly: Plain has no setup library"
  ]
}
$ odbcadmin --json dsn add New --driver Plain Server=db3
{
  "schema": "odbcadmin/1",
  "error": {
    "code": 4,
    "fact": "There is a data source New in ~/.odbc.ini",
    "advice": "Use odbcadmin dsn set or dsn ensure to change it."
  }
}
! odbcadmin: There is a data source New in ~/.odbc.ini
!   Use odbcadmin dsn set or dsn ensure to change it.
[4]
$ odbcadmin --json dsn set New Port=1
{
  "schema": "odbcadmin/1",
  "result": "changed",
  "changed": true,
  "message": "Changed data source New",
  "files": [
    "~/.odbc.ini"
  ],
  "remarks": [
    "written directly: Plain has no setup library"
  ]
}
$ odbcadmin --json dsn set New Port=1
{
  "schema": "odbcadmin/1",
  "result": "unchanged",
  "changed": false,
  "message": "unchanged: nothing to do",
  "files": [],
  "remarks": [
    "written directly: Plain has no setup library"
  ]
}
$ odbcadmin --json dsn ensure New --driver Plain Port=2
{
  "schema": "odbcadmin/1",
  "result": "changed",
  "changed": true,
  "message": "Changed data source New",
  "files": [
    "~/.odbc.ini"
  ]
}
$ odbcadmin --json dsn copy New Newer
{
  "schema": "odbcadmin/1",
  "result": "changed",
  "changed": true,
  "message": "Copied data source New to Newer",
  "files": [
    "~/.odbc.ini"
  ]
}
$ odbcadmin --json dsn rename Newer Newest
{
  "schema": "odbcadmin/1",
  "result": "changed",
  "changed": true,
  "message": "Renamed data source Newer to Newest",
  "files": [
    "~/.odbc.ini"
  ]
}
$ odbcadmin --json dsn remove Newest --dry-run
{
  "schema": "odbcadmin/1",
  "result": "would change",
  "changed": false,
  "message": "would change: ~/.odbc.ini",
  "files": [
    "~/.odbc.ini"
  ],
  "difference": "--- ~/.odbc.ini\n+++ ~/.odbc.ini\n@@ -3,7 +3,6 @@\n Sales=Plain\n Accounts=Plain\n New=Plain\n-Newest=Plain\n \n ; the shop\n [Sales]\n@@ -22,7 +21,3 @@\n Server=db3\n Port=2\n \n-[Newest]\n-Driver=/opt/libplain.so\n-Server=db3\n-Port=2\n"
}
$ odbcadmin --json dsn remove Newest --check
{
  "schema": "odbcadmin/1",
  "result": "would change",
  "changed": false,
  "message": "would change: ~/.odbc.ini",
  "files": [
    "~/.odbc.ini"
  ]
}
[9]
$ odbcadmin --json dsn remove Newest
{
  "schema": "odbcadmin/1",
  "result": "changed",
  "changed": true,
  "message": "Removed data source Newest",
  "files": [
    "~/.odbc.ini"
  ],
  "remarks": [
    "written directly: Plain has no setup library"
  ]
}
$ odbcadmin --json dsn default New
{
  "schema": "odbcadmin/1",
  "result": "changed",
  "changed": true,
  "message": "The default data source is now a copy of New",
  "files": [
    "~/.odbcinst.ini",
    "~/.odbc.ini"
  ]
}
$ odbcadmin --json driver add Other --lib /opt/other.so --no-setup
{
  "schema": "odbcadmin/1",
  "result": "changed",
  "changed": true,
  "message": "Added driver Other",
  "files": [
    "~/.odbcinst.ini"
  ]
}
! odbcadmin: the library /opt/other.so is not there
$ odbcadmin --json driver remove Other
{
  "schema": "odbcadmin/1",
  "result": "changed",
  "changed": true,
  "message": "Removed driver Other",
  "files": [
    "~/.odbcinst.ini"
  ]
}
$ odbcadmin --json translator add Latin --lib /opt/latin.so
{
  "schema": "odbcadmin/1",
  "result": "changed",
  "changed": true,
  "message": "Added translator Latin",
  "files": [
    "~/.odbcinst.ini"
  ]
}
$ odbcadmin --json translator remove Latin
{
  "schema": "odbcadmin/1",
  "result": "changed",
  "changed": true,
  "message": "Removed translator Latin",
  "files": [
    "~/.odbcinst.ini"
  ]
}
$ odbcadmin --json config set x.ini A b c
{
  "schema": "odbcadmin/1",
  "result": "changed",
  "changed": true,
  "message": "Changed x.ini",
  "files": [
    "x.ini"
  ]
}
$ odbcadmin --json config remove x.ini A b
{
  "schema": "odbcadmin/1",
  "error": {
    "code": 2,
    "fact": "odbcadmin config has no command remove",
    "advice": "See odbcadmin config --help"
  }
}
! odbcadmin: odbcadmin config has no command remove
!   See odbcadmin config --help
[2]
$ odbcadmin --json trace on /opt/none/odbc.log
{
  "schema": "odbcadmin/1",
  "result": "changed",
  "changed": true,
  "message": "Tracing to /opt/none/odbc.log",
  "files": [
    "~/.odbc.ini"
  ]
}
)sh";

TEST_F(JsonChanges, ChangesAsJson) {
    EXPECT_EQ(played(home_, kChangesAsJson), kChangesAsJson);
}

}  // namespace
}  // namespace jx::test
