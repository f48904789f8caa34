// Data sources that are there: each verb that changes them, with the whole file behind it.
#include "admin_test.h"
#include "transcript.h"

namespace jx::test {
namespace {

class DataSourceChangesSession : public AdminTest {};

constexpr const char* kEnsuringOne = R"sh($ odbcadmin dsn ensure Stock --driver Plain Server=db2 Port=1
Added data source Stock
$ odbcadmin dsn ensure Stock --driver Plain Server=db2
unchanged: nothing to do
$ odbcadmin dsn ensure stock SERVER=db3
Changed data source stock
$ odbcadmin dsn ensure Stock Server=db3 --exact
Changed data source Stock
$ odbcadmin -q dsn show Stock
[Stock]
Driver=/opt/libplain.so
Server=db3
$ odbcadmin dsn ensure New
! odbcadmin: There is no data source New yet
!   Say with --driver what it is to use.
[2]
$ odbcadmin dsn ensure New --driver Nothing
! odbcadmin: There is no driver Nothing in ~/.odbcinst.ini
!   See odbcadmin driver list; odbcadmin driver add registers one.
[3]
$ odbcadmin dsn ensure Default Server=x
! odbcadmin: There is no data source Default yet
!   Say with --driver what it is to use.
[2]
$ odbcadmin dsn ensure Default --driver Plain Server=x
Added data source Default
$ odbcadmin dsn show Default
[Default]
Driver=/opt/libplain.so
Server=x
; driver Plain, ~/.odbc.ini:23
$ odbcadmin dsn ensure ODBC --driver Plain
! odbcadmin: No data source can be called "ODBC": the section of that name has another use
!   Choose another name.
[5]
$ cat .odbcinst.ini
[ODBC Drivers]
Plain=Installed

[Plain]
Driver=/opt/libplain.so
FileUsage=0

[Default]
Driver=Plain
)sh";

TEST_F(DataSourceChangesSession, EnsuringOne) {
    EXPECT_EQ(played(home_, kEnsuringOne), kEnsuringOne);
}

constexpr const char* kSettingAndUnsettingKeys = R"sh($ odbcadmin dsn set Sales server=db4 Timeout=30
Changed data source Sales
! odbcadmin: written directly: Plain has no setup library
$ odbcadmin dsn set Sales Server=db4
unchanged: nothing to do
! odbcadmin: written directly: Plain has no setup library
$ odbcadmin dsn set Sales Driver=/x
! odbcadmin: Driver cannot be given as KEY=VALUE here
!   It comes from the name and from the options; see --help.
[2]
$ odbcadmin dsn set Sales Server
! odbcadmin: "Server" is not of the form KEY=VALUE
!   Put the whole of it in quotes when the value holds blanks.
[2]
$ odbcadmin dsn set Sales a=1 A=2
! odbcadmin: A is given twice
!   Give each key once.
[2]
$ odbcadmin dsn set Sales
! odbcadmin: KEY=VALUE is required
!   See odbcadmin dsn set --help
[2]
$ odbcadmin dsn set Nothing a=1
! odbcadmin: There is no data source Nothing in ~/.odbc.ini
!   See odbcadmin dsn list.
[3]
$ odbcadmin dsn set ODBC Trace=1
! odbcadmin: No data source can be called "ODBC": the section of that name has another use
!   Choose another name.
[5]
$ printf 'secret\r\n' | odbcadmin -q dsn set Sales PWD --stdin
$ printf 'two\nlines' | odbcadmin dsn set Sales PWD --stdin
! odbcadmin: This value of PWD cannot be stored: it holds a line break
!   The file could not give it back as it is.
[5]
$ odbcadmin dsn set Sales PWD=x --stdin </dev/null
! odbcadmin: --stdin takes one KEY without a VALUE
!   odbcadmin dsn set NAME KEY --stdin reads the value.
[2]
$ odbcadmin dsn set Sales PWD UID --stdin </dev/null
! odbcadmin: --stdin takes one KEY without a VALUE
!   odbcadmin dsn set NAME KEY --stdin reads the value.
[2]
$ odbcadmin dsn get Sales PWD --show-secrets
secret
$ odbcadmin dsn unset Sales timeout Nothing
Changed data source Sales
$ odbcadmin dsn unset Sales Timeout
unchanged: nothing to do
$ odbcadmin dsn unset Sales Server driver
! odbcadmin: A data source cannot be without its Driver
!   Use odbcadmin dsn ensure NAME --driver to change it.
[5]
$ odbcadmin dsn unset Sales
! odbcadmin: KEY is required
!   See odbcadmin dsn unset --help
[2]
$ odbcadmin dsn unset Nothing a
! odbcadmin: There is no data source Nothing in ~/.odbc.ini
!   See odbcadmin dsn list.
[3]
$ odbcadmin dsn unset ODBC Trace
! odbcadmin: No data source can be called "ODBC": the section of that name has another use
!   Choose another name.
[5]
$ cat .odbc.ini
; our data sources
[ODBC Data Sources]
Sales=Plain
Accounts=Plain

; the shop
[Sales]
Driver=/opt/libplain.so
Server = db4
PWD=secret

[Accounts]
Driver=/opt/libplain.so

[ODBC]
Trace=0
)sh";

TEST_F(DataSourceChangesSession, SettingAndUnsettingKeys) {
    EXPECT_EQ(played(home_, kSettingAndUnsettingKeys), kSettingAndUnsettingKeys);
}

constexpr const char* kCopyingAndRenaming = R"sh($ odbcadmin dsn copy sales Test
Copied data source Sales to Test
$ odbcadmin dsn copy Sales Accounts
! odbcadmin: There is a data source Accounts in ~/.odbc.ini
!   Use odbcadmin dsn set or dsn ensure to change it.
[4]
$ odbcadmin dsn copy Sales SALES
! odbcadmin: There is a data source SALES in ~/.odbc.ini
!   Use odbcadmin dsn set or dsn ensure to change it.
[4]
$ odbcadmin dsn copy Nothing New
! odbcadmin: There is no data source Nothing in ~/.odbc.ini
!   See odbcadmin dsn list.
[3]
$ odbcadmin dsn copy Sales Default
! odbcadmin: The default data source cannot be renamed, copied or made so
!   Use odbcadmin dsn default NAME.
[5]
$ odbcadmin dsn rename Default New
! odbcadmin: The default data source cannot be renamed, copied or made so
!   Use odbcadmin dsn default NAME.
[5]
$ odbcadmin dsn rename Test 'New name'
Renamed data source Test to New name
$ odbcadmin dsn rename 'New name' 'NEW NAME'
Renamed data source New name to NEW NAME
$ odbcadmin dsn rename 'NEW NAME' 'NEW NAME'
unchanged: nothing to do
$ odbcadmin dsn rename 'NEW NAME' accounts
! odbcadmin: There is a data source accounts in ~/.odbc.ini
!   Use odbcadmin dsn set or dsn ensure to change it.
[4]
$ odbcadmin dsn copy Sales
! odbcadmin: odbcadmin dsn copy needs a new name, or --to user or system
!   See odbcadmin dsn copy --help
[2]
$ cat .odbc.ini
; our data sources
[ODBC Data Sources]
Sales=Plain
Accounts=Plain
NEW NAME=Plain

; the shop
[Sales]
Driver=/opt/libplain.so
Server = db1
PWD=geheim

[Accounts]
Driver=/opt/libplain.so

[ODBC]
Trace=0

[NEW NAME]
Driver=/opt/libplain.so
Server=db1
PWD=geheim
)sh";

TEST_F(DataSourceChangesSession, CopyingAndRenaming) {
    EXPECT_EQ(played(home_, kCopyingAndRenaming), kCopyingAndRenaming);
}

constexpr const char* kTheDefaultOne = R"sh($ odbcadmin dsn default
! odbcadmin: There is no default data source
!   odbcadmin dsn default NAME makes one of a data source.
[3]
$ odbcadmin dsn default Nothing
! odbcadmin: There is no data source Nothing in ~/.odbc.ini
!   See odbcadmin dsn list.
[3]
$ odbcadmin dsn default Sales
The default data source is now a copy of Sales
$ odbcadmin dsn default Sales
unchanged: nothing to do
$ odbcadmin dsn default
Default  Plain  same as Sales
$ odbcadmin dsn set Default Server=other
Changed data source Default
! odbcadmin: written directly: Plain has no setup library
$ odbcadmin dsn default
Default  Plain
$ odbcadmin dsn list
Sales     Plain
Accounts  Plain
Default   Plain
$ odbcadmin dsn default Default
! odbcadmin: The default data source cannot be a copy of itself
!   Name another one.
[3]
$ odbcadmin dsn default Sales --unset
! odbcadmin: NAME excludes --unset
!   See odbcadmin dsn default --help
[2]
$ odbcadmin dsn default --unset
Removed the default data source
$ odbcadmin dsn default --unset
unchanged: nothing to do
$ tail -n 3 .odbc.ini
[ODBC]
Trace=0

)sh";

TEST_F(DataSourceChangesSession, TheDefaultOne) {
    EXPECT_EQ(played(home_, kTheDefaultOne), kTheDefaultOne);
}

constexpr const char* kRemovingSome = R"sh($ odbcadmin dsn remove Sales Nothing
! odbcadmin: There is no data source Nothing in ~/.odbc.ini
!   See odbcadmin dsn list.
[3]
$ odbcadmin dsn remove Sales Nothing --if-exists
Removed data source Sales
! odbcadmin: written directly: Plain has no setup library
$ odbcadmin dsn remove Sales
! odbcadmin: There is no data source Sales in ~/.odbc.ini
!   See odbcadmin dsn list.
[3]
$ odbcadmin dsn remove Sales --if-exists
unchanged: nothing to do
$ odbcadmin dsn remove ODBC
! odbcadmin: No data source can be called "ODBC": the section of that name has another use
!   Choose another name.
[5]
$ odbcadmin dsn remove ODBC --if-exists
! odbcadmin: No data source can be called "ODBC": the section of that name has another use
!   Choose another name.
[5]
$ odbcadmin dsn remove
! odbcadmin: NAME is required
!   See odbcadmin dsn remove --help
[2]
$ odbcadmin dsn remove accounts --direct
Removed data source Accounts
! odbcadmin: written directly: as --direct asks
$ cat .odbc.ini
; our data sources
[ODBC Data Sources]

; the shop
[ODBC]
Trace=0
)sh";

TEST_F(DataSourceChangesSession, RemovingSome) {
    EXPECT_EQ(played(home_, kRemovingSome), kRemovingSome);
}

// A section with a driver counts as a data source; one without can still be shown.
constexpr const char* kOnesThatAreNotListed =
    R"sh($ printf '[Loose]\nDriver=/opt/libplain.so\n[Other]\nKey=1\n[Stray]\nDriver=/x.so\n' >.odbc.ini
$ odbcadmin dsn list
Loose  /opt/libplain.so  (not listed)
Stray  /x.so             (not listed)
$ odbcadmin dsn show Other
[Other]
Key=1
; no driver, ~/.odbc.ini:3
$ odbcadmin dsn set Loose a=b
Changed data source Loose
! odbcadmin: written directly: its driver is not registered
$ odbcadmin dsn remove Stray
Removed data source Stray
! odbcadmin: written directly: its driver is not registered
$ odbcadmin dsn ensure Loose
Changed data source Loose
$ odbcadmin dsn ensure Other
! odbcadmin: The driver of data source Other is not known: no driver is registered with its library
!   Say with --driver what it is to use.
[2]
$ cat .odbc.ini
[Loose]
Driver=/opt/libplain.so
a=b
[Other]
Key=1

[ODBC Data Sources]
Loose=Plain
)sh";

TEST_F(DataSourceChangesSession, OnesThatAreNotListed) {
    EXPECT_EQ(played(home_, kOnesThatAreNotListed), kOnesThatAreNotListed);
}

}  // namespace
}  // namespace jx::test
