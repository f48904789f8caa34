// export and apply: what a document holds, another home, and every document that is refused.
#include "admin_test.h"
#include "transcript.h"

namespace jx::test {
namespace {

class ExchangeSession : public AdminTest {};

constexpr const char* kExporting =
    R"sh($ odbcadmin export
{
  "schema": "odbcadmin/1",
  "drivers": [
    {
      "name": "Plain",
      "keys": {
        "Driver": "/opt/libplain.so",
        "FileUsage": "0"
      }
    }
  ],
  "translators": [],
  "dataSources": [
    {
      "name": "Sales",
      "driver": "Plain",
      "keys": {
        "Server": "db1",
        "PWD": null
      }
    },
    {
      "name": "Accounts",
      "driver": "Plain",
      "keys": {}
    }
  ]
}
! odbcadmin: 1 secret is left out (null); --show-secrets includes it
$ odbcadmin export --show-secrets | grep PWD
        "PWD": "geheim"
$ odbcadmin -q export | grep -c Sales
1
$ odbcadmin --json export | head -n 2
{
  "schema": "odbcadmin/1",
! odbcadmin: 1 secret is left out (null); --show-secrets includes it
$ odbcadmin translator add 'MS Code Page' --lib /opt/libcpage.so
Added translator MS Code Page
$ odbcadmin export | grep -A 6 translators
  "translators": [
    {
      "name": "MS Code Page",
      "keys": {
        "Translator": "/opt/libcpage.so"
      }
    }
! odbcadmin: 1 secret is left out (null); --show-secrets includes it
$ printf '[Loose]\nKey=1\n' >>.odbc.ini
$ odbcadmin export | grep -c Loose
0
! odbcadmin: 1 secret is left out (null); --show-secrets includes it
[1]
$ rm .odbc.ini .odbcinst.ini
$ odbcadmin export
{
  "schema": "odbcadmin/1",
  "drivers": [],
  "translators": [],
  "dataSources": []
}
$ printf '[ODBC Data Sources]\nA=B\n[A]\nx=1\n' >.odbc.ini
$ odbcadmin export
! odbcadmin: Cannot export data source A: its driver B is not registered
!   See odbcadmin explain; odbcadmin export NAME... exports others without it.
[1]
)sh";

TEST_F(ExchangeSession, Exporting) {
    EXPECT_EQ(played(home_, kExporting), kExporting);
}

constexpr const char* kApplying =
    R"sh($ odbcadmin -q export >form.json
$ odbcadmin apply -f form.json
unchanged: nothing to do
$ odbcadmin apply -f form.json --dry-run
unchanged: nothing to do
$ odbcadmin apply -f form.json --check
unchanged: nothing to do
$ sed 's/db1/db2/' form.json >other.json
$ odbcadmin apply -f other.json --check
would change: ~/.odbc.ini
[9]
$ odbcadmin apply -f other.json --dry-run
--- ~/.odbc.ini
+++ ~/.odbc.ini
@@ -6,7 +6,7 @@
 ; the shop
 [Sales]
 Driver=/opt/libplain.so
-Server = db1
+Server = db2
 PWD=********
 
 [Accounts]
$ odbcadmin apply -f other.json
Applied 1 driver, 0 translators, 2 data sources
$ odbcadmin dsn get Sales Server
db2
$ odbcadmin dsn get Sales PWD --show-secrets
geheim
$ cat form.json | odbcadmin -q apply -f -
$ odbcadmin dsn get Sales Server
db1
)sh";

TEST_F(ExchangeSession, Applying) {
    EXPECT_EQ(played(home_, kApplying), kApplying);
}

constexpr const char* kMovingToAnotherHome =
    R"sh($ mkdir new
$ odbcadmin export --show-secrets | odbcadmin apply -f - --home new
Applied 1 driver, 0 translators, 2 data sources
$ cat new/.odbc.ini
[ODBC Data Sources]
Sales=Plain
Accounts=Plain

[Sales]
Driver=/opt/libplain.so
Server=db1
PWD=geheim

[Accounts]
Driver=/opt/libplain.so
$ cat new/.odbcinst.ini
[ODBC Drivers]
Plain=Installed

[Plain]
Driver=/opt/libplain.so
FileUsage=0
$ odbcadmin -q export | odbcadmin --home new apply -f -
unchanged: nothing to do
$ mkdir newer
$ odbcadmin -q export | odbcadmin --home newer apply -f -
Applied 1 driver, 0 translators, 2 data sources
$ cat newer/.odbc.ini
[ODBC Data Sources]
Sales=Plain
Accounts=Plain

[Sales]
Driver=/opt/libplain.so
Server=db1

[Accounts]
Driver=/opt/libplain.so
$ odbcadmin -q export | odbcadmin apply -f - --home absent
! odbcadmin: Cannot use ~/absent as home: No such file or directory
!   Give --home a directory that exists.
[7]
)sh";

TEST_F(ExchangeSession, MovingToAnotherHome) {
    EXPECT_EQ(played(home_, kMovingToAnotherHome), kMovingToAnotherHome);
}

constexpr const char* kDocumentsThatAreRefused =
    R"sh($ cp .odbc.ini before
$ odbcadmin apply -f absent.json
! odbcadmin: Cannot read absent.json: No such file or directory
!   Give a file, or - for standard input.
[7]
$ odbcadmin apply
! odbcadmin: --file is required
!   See odbcadmin apply --help
[2]
$ echo '' | odbcadmin apply -f -
! odbcadmin: The input is not valid: parse error at line 2, column 1: syntax error while parsing value - unexpected end of input; expected '[', '{', or a literal
!   odbcadmin export shows what it must look like. Nothing was changed.
[6]
$ echo '{' | odbcadmin apply -f -
! odbcadmin: The input is not valid: parse error at line 2, column 1: syntax error while parsing object key - unexpected end of input; expected string literal
!   odbcadmin export shows what it must look like. Nothing was changed.
[6]
$ echo '[]' | odbcadmin apply -f -
! odbcadmin: The input is not valid: the document is not an object
!   odbcadmin export shows what it must look like. Nothing was changed.
[6]
$ echo '{}' | odbcadmin apply -f -
! odbcadmin: The input is not valid: "schema" is not "odbcadmin/1"
!   odbcadmin export shows what it must look like. Nothing was changed.
[6]
$ echo '{"extra":{}}' | odbcadmin apply -f -
! odbcadmin: The input is not valid: the document has a member "extra", which is not known
!   odbcadmin export shows what it must look like. Nothing was changed.
[6]
$ echo '{"schema":"odbcadmin/2"}' | odbcadmin apply -f -
! odbcadmin: The input is not valid: "schema" is not "odbcadmin/1"
!   odbcadmin export shows what it must look like. Nothing was changed.
[6]
$ echo '{"schema":"odbcadmin/1"}' | odbcadmin apply -f -
unchanged: nothing to do
$ echo '{"schema":"odbcadmin/1","drivers":[1]}' | odbcadmin apply -f -
! odbcadmin: The input is not valid: drivers[0] is not an object
!   odbcadmin export shows what it must look like. Nothing was changed.
[6]
$ echo '{"schema":"odbcadmin/1","drivers":[{"keys":{}}]}' | odbcadmin apply -f -
! odbcadmin: The input is not valid: drivers[0] has no text "name"
!   odbcadmin export shows what it must look like. Nothing was changed.
[6]
$ echo '{"schema":"odbcadmin/1","drivers":[{"name":7,"keys":{}}]}' | odbcadmin apply -f -
! odbcadmin: The input is not valid: drivers[0] has no text "name"
!   odbcadmin export shows what it must look like. Nothing was changed.
[6]
$ echo '{"schema":"odbcadmin/1","drivers":[{"name":"N","keys":{}}]}' | odbcadmin apply -f -
! odbcadmin: The input is not valid: drivers[0] has no key "Driver"
!   odbcadmin export shows what it must look like. Nothing was changed.
[6]
$ echo '{"schema":"odbcadmin/1","drivers":[{"name":"A(B","keys":{"Driver":"/n.so"}}]}' | odbcadmin apply -f -
! odbcadmin: No driver can be called "A(B": its parentheses are not in pairs
!   Choose another name.
[5]
$ echo '{"schema":"odbcadmin/1","drivers":[{"name":"ODBC","keys":{"Driver":"/n.so"}}]}' | odbcadmin apply -f -
! odbcadmin: No driver can be called "ODBC": the section of that name has another use
!   Choose another name.
[5]
$ echo '{"schema":"odbcadmin/1","dataSources":[{"name":"A"}]}' | odbcadmin apply -f -
! odbcadmin: The input is not valid: dataSources[0] has no text "driver"
!   odbcadmin export shows what it must look like. Nothing was changed.
[6]
$ echo '{"schema":"odbcadmin/1","dataSources":[{"name":"A","driver":"Nowhere"}]}' | odbcadmin apply -f -
! odbcadmin: There is no driver Nowhere in ~/.odbcinst.ini
!   See odbcadmin driver list; odbcadmin driver add registers one.
[3]
$ echo '{"schema":"odbcadmin/1","dataSources":[{"name":"A(B)","driver":"Plain","keys":{}}]}' | odbcadmin apply -f -
! odbcadmin: No data source can be called "A(B)": it holds one of []{}(),;?*=!@\
!   Choose another name.
[5]
$ echo '{"schema":"odbcadmin/1","dataSources":[{"name":"A","driver":"Plain","keys":{"a=b":"1"}}]}' | odbcadmin apply -f -
! odbcadmin: The key "a=b" cannot be stored: it holds =
!   ~/.odbc.ini could not give it back as it is; use another one.
[5]
$ echo '{"schema":"odbcadmin/1","dataSources":[{"name":"A","driver":"Plain","keys":{"a":1}}]}' | odbcadmin apply -f -
! odbcadmin: The input is not valid: key "a" of dataSources[0] is neither text nor null
!   odbcadmin export shows what it must look like. Nothing was changed.
[6]
$ printf '%s' '{"schema":"odbcadmin/1","dataSources":[{"name":"A","driver":"Plain","keys":{"a":"1\n2"}}]}' | odbcadmin apply -f -
! odbcadmin: This value of a cannot be stored: it holds a line break
!   ~/.odbc.ini could not give it back as it is; use another one.
[5]
$ echo '{"schema":"odbcadmin/1","dataSources":[{"name":"A","driver":"Plain","keys":{"a":null}}]}' | odbcadmin apply -f - --check
would change: ~/.odbc.ini
[9]
$ cmp .odbc.ini before
)sh";

TEST_F(ExchangeSession, DocumentsThatAreRefused) {
    EXPECT_EQ(played(home_, kDocumentsThatAreRefused), kDocumentsThatAreRefused);
}

}  // namespace
}  // namespace jx::test
