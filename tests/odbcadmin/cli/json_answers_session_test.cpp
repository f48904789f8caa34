// What programs read: lists, sections and failures as JSON.
#include "admin_test.h"
#include "transcript.h"

namespace jx::test {
namespace {

class JsonAnswers : public AdminTest {};

constexpr const char* kListsAndSectionsAsJson =
    R"sh($ odbcadmin --json dsn list
{
  "schema": "odbcadmin/1",
  "dataSources": [
    {
      "name": "Sales",
      "driver": "Plain",
      "listed": true,
      "default": false,
      "scope": "user",
      "shadowed": false
    },
    {
      "name": "Accounts",
      "driver": "Plain",
      "listed": true,
      "default": false,
      "scope": "user",
      "shadowed": false
    }
  ]
}
$ odbcadmin --json dsn show Sales
{
  "schema": "odbcadmin/1",
  "name": "Sales",
  "driver": "Plain",
  "listed": true,
  "default": false,
  "scope": "user",
  "shadowed": false,
  "file": "~/.odbc.ini",
  "line": 7,
  "hides": null,
  "attributes": {
    "Driver": "/opt/libplain.so",
    "Server": "db1",
    "PWD": null
  }
}
$ odbcadmin --json --show-secrets dsn show Sales
{
  "schema": "odbcadmin/1",
  "name": "Sales",
  "driver": "Plain",
  "listed": true,
  "default": false,
  "scope": "user",
  "shadowed": false,
  "file": "~/.odbc.ini",
  "line": 7,
  "hides": null,
  "attributes": {
    "Driver": "/opt/libplain.so",
    "Server": "db1",
    "PWD": "geheim"
  }
}
$ odbcadmin --json dsn get Sales Server
{
  "schema": "odbcadmin/1",
  "name": "Sales",
  "scope": "user",
  "file": "~/.odbc.ini",
  "hides": null,
  "key": "Server",
  "value": "db1",
  "masked": false,
  "line": 9
}
$ odbcadmin --json dsn get Sales PWD
{
  "schema": "odbcadmin/1",
  "name": "Sales",
  "scope": "user",
  "file": "~/.odbc.ini",
  "hides": null,
  "key": "PWD",
  "value": null,
  "masked": true,
  "line": 10
}
$ odbcadmin --json driver list
{
  "schema": "odbcadmin/1",
  "drivers": [
    {
      "name": "Plain",
      "library": "/opt/libplain.so",
      "setup": "",
      "state": "missing",
      "listed": true,
      "scope": "user",
      "shadowed": false
    }
  ]
}
$ odbcadmin --json driver show Plain
{
  "schema": "odbcadmin/1",
  "name": "Plain",
  "library": "/opt/libplain.so",
  "setup": "",
  "state": "missing",
  "listed": true,
  "scope": "user",
  "shadowed": false,
  "line": 4,
  "file": "~/.odbcinst.ini",
  "hides": null,
  "keys": {
    "Driver": "/opt/libplain.so",
    "FileUsage": "0"
  },
  "dataSources": [
    "Sales",
    "Accounts"
  ]
}
$ odbcadmin --json translator list
{
  "schema": "odbcadmin/1",
  "translators": []
}
$ odbcadmin --json config list .odbc.ini ODBC
{
  "schema": "odbcadmin/1",
  "file": "~/.odbc.ini",
  "sections": [
    {
      "name": "ODBC",
      "line": 15,
      "keys": {
        "Trace": "0"
      }
    }
  ]
}
$ odbcadmin --json config get .odbc.ini ODBC Trace
{
  "schema": "odbcadmin/1",
  "section": "ODBC",
  "key": "Trace",
  "value": "0",
  "masked": false,
  "line": 16
}
$ odbcadmin --json explain Sales
{
  "schema": "odbcadmin/1",
  "name": "Sales",
  "steps": [
    {
      "ok": true,
      "subject": "data source Sales",
      "step": "listed",
      "where": "~/.odbc.ini:3",
      "value": "for the driver Plain",
      "advice": ""
    },
    {
      "ok": true,
      "subject": "data source Sales",
      "step": "section",
      "where": "~/.odbc.ini:7",
      "value": "[Sales]",
      "advice": ""
    },
    {
      "ok": true,
      "subject": "data source Sales",
      "step": "Driver",
      "where": "~/.odbc.ini:8",
      "value": "/opt/libplain.so",
      "advice": ""
    },
    {
      "ok": true,
      "subject": "driver Plain",
      "step": "listed",
      "where": "~/.odbcinst.ini:2",
      "value": "Installed",
      "advice": ""
    },
    {
      "ok": true,
      "subject": "driver Plain",
      "step": "section",
      "where": "~/.odbcinst.ini:4",
      "value": "[Plain]",
      "advice": ""
    },
    {
      "ok": true,
      "subject": "driver Plain",
      "step": "Driver",
      "where": "~/.odbcinst.ini:5",
      "value": "/opt/libplain.so",
      "advice": ""
    },
    {
      "ok": false,
      "subject": "/opt/libplain.so",
      "step": "library",
      "where": "",
      "value": "missing",
      "advice": "See odbcadmin driver check /opt/libplain.so"
    }
  ]
}
$ rm .odbc.ini .odbcinst.ini
$ odbcadmin --json dsn list
{
  "schema": "odbcadmin/1",
  "dataSources": []
}
$ odbcadmin --json driver list
{
  "schema": "odbcadmin/1",
  "drivers": []
}
)sh";

TEST_F(JsonAnswers, ListsAndSectionsAsJson) {
    EXPECT_EQ(played(home_, kListsAndSectionsAsJson), kListsAndSectionsAsJson);
}

constexpr const char* kFailuresAsJson =
    R"sh($ odbcadmin --json dsn show Nothing
{
  "schema": "odbcadmin/1",
  "error": {
    "code": 3,
    "fact": "There is no data source Nothing in ~/.odbc.ini",
    "advice": "See odbcadmin dsn list."
  }
}
! odbcadmin: There is no data source Nothing in ~/.odbc.ini
!   See odbcadmin dsn list.
[3]
$ odbcadmin --json dsn get Sales Nothing
{
  "schema": "odbcadmin/1",
  "error": {
    "code": 3,
    "fact": "Data source Sales has no key Nothing",
    "advice": "It has Driver, Server, PWD"
  }
}
! odbcadmin: Data source Sales has no key Nothing
!   It has Driver, Server, PWD
[3]
$ odbcadmin --json dsn add 'A(B)' --driver Plain
{
  "schema": "odbcadmin/1",
  "error": {
    "code": 5,
    "fact": "No data source can be called \"A(B)\": it holds one of []{}(),;?*=!@\\",
    "advice": "Choose another name."
  }
}
! odbcadmin: No data source can be called "A(B)": it holds one of []{}(),;?*=!@\
!   Choose another name.
[5]
$ odbcadmin --json dsn add A --driver Nothing
{
  "schema": "odbcadmin/1",
  "error": {
    "code": 3,
    "fact": "There is no driver Nothing in ~/.odbcinst.ini",
    "advice": "See odbcadmin driver list; odbcadmin driver add registers one."
  }
}
! odbcadmin: There is no driver Nothing in ~/.odbcinst.ini
!   See odbcadmin driver list; odbcadmin driver add registers one.
[3]
$ odbcadmin --json dsn remove Nothing
{
  "schema": "odbcadmin/1",
  "error": {
    "code": 3,
    "fact": "There is no data source Nothing in ~/.odbc.ini",
    "advice": "See odbcadmin dsn list."
  }
}
! odbcadmin: There is no data source Nothing in ~/.odbc.ini
!   See odbcadmin dsn list.
[3]
$ odbcadmin --json driver show Nothing
{
  "schema": "odbcadmin/1",
  "error": {
    "code": 3,
    "fact": "There is no driver Nothing in ~/.odbcinst.ini",
    "advice": "See odbcadmin driver list; odbcadmin driver add registers one."
  }
}
! odbcadmin: There is no driver Nothing in ~/.odbcinst.ini
!   See odbcadmin driver list; odbcadmin driver add registers one.
[3]
$ odbcadmin --json driver remove Nothing
{
  "schema": "odbcadmin/1",
  "error": {
    "code": 3,
    "fact": "There is no driver Nothing in ~/.odbcinst.ini",
    "advice": "See odbcadmin driver list; odbcadmin driver add registers one."
  }
}
! odbcadmin: There is no driver Nothing in ~/.odbcinst.ini
!   See odbcadmin driver list; odbcadmin driver add registers one.
[3]
$ odbcadmin --json config get absent.ini A b
{
  "schema": "odbcadmin/1",
  "error": {
    "code": 7,
    "fact": "Cannot open absent.ini: No such file or directory",
    "advice": "The user's own files are called .odbc.ini and .odbcinst.ini here."
  }
}
! odbcadmin: Cannot open absent.ini: No such file or directory
!   The user's own files are called .odbc.ini and .odbcinst.ini here.
[7]
$ odbcadmin --json explain Nothing
{
  "schema": "odbcadmin/1",
  "error": {
    "code": 3,
    "fact": "There is no data source or driver Nothing in ~/.odbc.ini and ~/.odbcinst.ini",
    "advice": "See odbcadmin dsn list and odbcadmin driver list."
  }
}
! odbcadmin: There is no data source or driver Nothing in ~/.odbc.ini and ~/.odbcinst.ini
!   See odbcadmin dsn list and odbcadmin driver list.
[3]
$ odbcadmin --json apply -f absent.json
{
  "schema": "odbcadmin/1",
  "error": {
    "code": 7,
    "fact": "Cannot read absent.json: No such file or directory",
    "advice": "Give a file, or - for standard input."
  }
}
! odbcadmin: Cannot read absent.json: No such file or directory
!   Give a file, or - for standard input.
[7]
$ odbcadmin --json install absent.inf
{
  "schema": "odbcadmin/1",
  "error": {
    "code": 7,
    "fact": "Cannot open ~/absent.inf: No such file or directory",
    "advice": "Give the path of an installation script."
  }
}
! odbcadmin: Cannot open ~/absent.inf: No such file or directory
!   Give the path of an installation script.
[7]
$ odbcadmin --json nothing
{
  "schema": "odbcadmin/1",
  "error": {
    "code": 2,
    "fact": "odbcadmin has no command nothing",
    "advice": "See odbcadmin --help"
  }
}
! odbcadmin: odbcadmin has no command nothing
!   See odbcadmin --help
[2]
)sh";

TEST_F(JsonAnswers, FailuresAsJson) {
    EXPECT_EQ(played(home_, kFailuresAsJson), kFailuresAsJson);
}

}  // namespace
}  // namespace jx::test
