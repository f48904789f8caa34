// Data sources: each verb with what it prints, refuses and leaves in the file.
#include "admin_test.h"
#include "transcript.h"

namespace jx::test {
namespace {

class DataSourcesSession : public AdminTest {};

constexpr const char* kReadingThem = R"sh($ odbcadmin dsn list
Sales     Plain
Accounts  Plain
$ odbcadmin -q dsn list
Sales
Accounts
$ odbcadmin dsn show sales
[Sales]
Driver=/opt/libplain.so
Server=db1
PWD=********
; driver Plain, ~/.odbc.ini:7
$ odbcadmin -q dsn show Sales --show-secrets
[Sales]
Driver=/opt/libplain.so
Server=db1
PWD=geheim
$ odbcadmin dsn show Slaes
! odbcadmin: There is no data source Slaes in ~/.odbc.ini
!   Did you mean Sales?
[3]
$ odbcadmin dsn show xyz
! odbcadmin: There is no data source xyz in ~/.odbc.ini
!   See odbcadmin dsn list.
[3]
$ odbcadmin dsn get Sales server
db1
$ odbcadmin dsn get Sales PWD
! odbcadmin: The value of PWD is a secret
!   --show-secrets prints it.
[1]
$ odbcadmin dsn get Sales PWD --show-secrets
geheim
$ odbcadmin dsn get Sales Sever
! odbcadmin: Data source Sales has no key Sever
!   Did you mean Server?
[3]
$ odbcadmin dsn get Sales xyz
! odbcadmin: Data source Sales has no key xyz
!   It has Driver, Server, PWD
[3]
$ odbcadmin dsn get Nobody Server
! odbcadmin: There is no data source Nobody in ~/.odbc.ini
!   See odbcadmin dsn list.
[3]
$ odbcadmin dsn show ' Sales'
! odbcadmin: There is no data source  Sales in ~/.odbc.ini
!   Did you mean Sales?
[3]
)sh";

TEST_F(DataSourcesSession, ReadingThem) {
    EXPECT_EQ(played(home_, kReadingThem), kReadingThem);
}

constexpr const char* kAddingOne = R"sh($ odbcadmin dsn add Stock --driver plain Server=db2 Port=
Added data source Stock
! odbcadmin: written directly: Plain has no setup library
$ odbcadmin dsn add Stock --driver Plain
! odbcadmin: There is a data source Stock in ~/.odbc.ini
!   Use odbcadmin dsn set or dsn ensure to change it.
[4]
$ odbcadmin dsn add STOCK --driver Plain
! odbcadmin: There is a data source STOCK in ~/.odbc.ini
!   Use odbcadmin dsn set or dsn ensure to change it.
[4]
$ odbcadmin dsn add Other --driver Plani
! odbcadmin: There is no driver Plani in ~/.odbcinst.ini
!   Did you mean Plain?
[3]
$ odbcadmin dsn add Other
! odbcadmin: --driver is required
!   See odbcadmin dsn add --help
[2]
$ odbcadmin dsn add Other --driver Plain Server
! odbcadmin: "Server" is not of the form KEY=VALUE
!   Put the whole of it in quotes when the value holds blanks.
[2]
$ odbcadmin dsn add Other --driver Plain =x
! odbcadmin: "=x" is not of the form KEY=VALUE
!   Put the whole of it in quotes when the value holds blanks.
[2]
$ odbcadmin dsn add Other --driver Plain driver=/x.so
! odbcadmin: driver cannot be given as KEY=VALUE here
!   It comes from the name and from the options; see --help.
[2]
$ odbcadmin dsn add Other --driver Plain DSN=x
! odbcadmin: DSN cannot be given as KEY=VALUE here
!   It comes from the name and from the options; see --help.
[2]
$ odbcadmin dsn add Other --driver Plain 'K= v'
! odbcadmin: This value of K cannot be stored: it begins or ends with a blank
!   The file could not give it back as it is.
[5]
$ odbcadmin dsn add Other --driver Plain ';K=v'
! odbcadmin: The key ";K" cannot be stored: it begins with ;
!   The file could not give it back as it is.
[5]
$ odbcadmin dsn add Other --driver Plain "$(printf 'K=a\rb')"
! odbcadmin: This value of K cannot be stored: it holds a line break
!   The file could not give it back as it is.
[5]
$ odbcadmin -q dsn add 'Two words' --driver Plain --direct '[K]=1' 'Opt=a=b;c # d' 'Q="x"'
! odbcadmin: The key "[K]" cannot be stored: it begins with [
!   The file could not give it back as it is.
[5]
$ odbcadmin -q dsn add 'Two words' --driver Plain 'Opt=a=b;c # d' 'Q="x"'
$ tail -n 9 .odbc.ini
[Stock]
Driver=/opt/libplain.so
Server=db2
Port=

[Two words]
Driver=/opt/libplain.so
Opt=a=b;c # d
Q="x"
)sh";

TEST_F(DataSourcesSession, AddingOne) {
    EXPECT_EQ(played(home_, kAddingOne), kAddingOne);
}

constexpr const char* kNamesThatAreRefusedForNewOnes = R"sh($ odbcadmin dsn add 'A(B)' --driver Plain
! odbcadmin: No data source can be called "A(B)": it holds one of []{}(),;?*=!@\
!   Choose another name.
[5]
$ odbcadmin dsn ensure 'A(B)' --driver Plain
! odbcadmin: No data source can be called "A(B)": it holds one of []{}(),;?*=!@\
!   Choose another name.
[5]
$ odbcadmin dsn copy Sales 'A(B)'
! odbcadmin: No data source can be called "A(B)": it holds one of []{}(),;?*=!@\
!   Choose another name.
[5]
$ odbcadmin dsn rename Sales 'A(B)'
! odbcadmin: No data source can be called "A(B)": it holds one of []{}(),;?*=!@\
!   Choose another name.
[5]
$ echo '{"schema": "odbcadmin/1", "dataSources": [{"name": "A(B)", "driver": "Plain"}]}' | odbcadmin apply -f -
! odbcadmin: No data source can be called "A(B)": it holds one of []{}(),;?*=!@\
!   Choose another name.
[5]
$ odbcadmin dsn add '' --driver Plain
! odbcadmin: No data source can be called "": it is empty
!   Choose another name.
[5]
$ odbcadmin dsn add 'a ' --driver Plain
! odbcadmin: No data source can be called "a ": it begins or ends with a blank
!   Choose another name.
[5]
$ odbcadmin dsn add 'a=b' --driver Plain
! odbcadmin: No data source can be called "a=b": it holds =
!   Choose another name.
[5]
$ odbcadmin dsn add 'a ;b' --driver Plain
! odbcadmin: No data source can be called "a ;b": a blank and ; begin a comment in it
!   Choose another name.
[5]
$ odbcadmin dsn add "$(printf 'a\nb')" --driver Plain
! odbcadmin: No data source can be called "a?b": it holds a line break
!   Choose another name.
[5]
$ odbcadmin dsn add 'odbc data sources' --driver Plain
! odbcadmin: No data source can be called "odbc data sources": the section of that name has another use
!   Choose another name.
[5]
$ odbcadmin dsn add 123456789012345678901234567890123 --driver Plain
! odbcadmin: No data source can be called "123456789012345678901234567890123": it has more than 32 bytes
!   Choose another name.
[5]
$ odbcadmin dsn copy Sales 12345678901234567890123456789012
Copied data source Sales to 12345678901234567890123456789012
$ odbcadmin dsn list
Sales                             Plain
Accounts                          Plain
12345678901234567890123456789012  Plain
)sh";

TEST_F(DataSourcesSession, NamesThatAreRefusedForNewOnes) {
    EXPECT_EQ(played(home_, kNamesThatAreRefusedForNewOnes), kNamesThatAreRefusedForNewOnes);
}

// What an earlier version or an editor has put there can be used, changed and removed.
constexpr const char* kForbiddenNamesThatAreThere =
    R"sh($ printf '[ODBC Data Sources]\nA(B)=Plain\n[A(B)]\nDriver=/opt/libplain.so\n' >.odbc.ini
$ odbcadmin dsn set 'A(B)' k=v
Changed data source A(B)
! odbcadmin: written directly: Plain has no setup library
$ odbcadmin dsn ensure 'a(b)' k=w
Changed data source a(b)
$ odbcadmin dsn get 'A(B)' k
w
$ odbcadmin dsn copy 'A(B)' 'C(D)'
! odbcadmin: No data source can be called "C(D)": it holds one of []{}(),;?*=!@\
!   Choose another name.
[5]
$ odbcadmin export | odbcadmin apply -f -
unchanged: nothing to do
$ odbcadmin dsn rename 'A(B)' AB
Renamed data source A(B) to AB
$ cat .odbc.ini
[ODBC Data Sources]
AB=Plain

[AB]
Driver=/opt/libplain.so
k=w
)sh";

TEST_F(DataSourcesSession, ForbiddenNamesThatAreThere) {
    EXPECT_EQ(played(home_, kForbiddenNamesThatAreThere), kForbiddenNamesThatAreThere);
}

}  // namespace
}  // namespace jx::test
