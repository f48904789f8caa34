// config: any section and key of any INI file, and what is refused.
#include "admin_test.h"
#include "transcript.h"

namespace jx::test {
namespace {

class ConfigSession : public AdminTest {};

constexpr const char* kReading =
    R"sh($ printf '; top\n[One]\na = 1\ntoken=abc\nUrl=db://anna:geheim@host/\n\n[Two]\nb=2\n[one]\nA=9\nc\n' >x.ini
$ odbcadmin config get x.ini one A
1
$ odbcadmin config get x.ini One c

$ odbcadmin config get x.ini One token
! odbcadmin: The value of token is a secret
!   --show-secrets prints it.
[1]
$ odbcadmin config get x.ini One token --show-secrets
abc
$ odbcadmin config get x.ini One Url
! odbcadmin: The value of Url is a secret
!   --show-secrets prints it.
[1]
$ odbcadmin config list x.ini
[One]
a=1
token=********
Url=db://anna:********@host/
c=
[Two]
b=2
$ odbcadmin config list x.ini two
[Two]
b=2
$ odbcadmin -q config list x.ini
One
Two
$ odbcadmin config get x.ini Ome a
! odbcadmin: There is no section Ome in x.ini
!   Did you mean One?
[3]
$ odbcadmin config get x.ini Nothing a
! odbcadmin: There is no section Nothing in x.ini
!   See odbcadmin config list FILE.
[3]
$ odbcadmin config get x.ini One tokem
! odbcadmin: Section One has no key tokem
!   Did you mean token?
[3]
$ odbcadmin config get x.ini One xyz
! odbcadmin: Section One has no key xyz
[3]
$ odbcadmin config list x.ini Three
! odbcadmin: There is no section Three in x.ini
!   See odbcadmin config list FILE.
[3]
$ odbcadmin config get absent.ini a b
! odbcadmin: Cannot open absent.ini: No such file or directory
!   The user's own files are called .odbc.ini and .odbcinst.ini here.
[7]
$ odbcadmin config list absent.ini
! odbcadmin: Cannot open absent.ini: No such file or directory
!   The user's own files are called .odbc.ini and .odbcinst.ini here.
[7]
$ odbcadmin config get x.ini One
! odbcadmin: KEY is required
!   See odbcadmin config get --help
[2]
$ odbcadmin config get .odbc.ini Sales Server
db1
$ rm .odbcinst.ini
$ odbcadmin config list .odbcinst.ini
)sh";

TEST_F(ConfigSession, Reading) {
    EXPECT_EQ(played(home_, kReading), kReading);
}

constexpr const char* kChanging = R"sh($ odbcadmin config set x.ini One a 1
Changed x.ini
$ odbcadmin config set x.ini One a 2
Changed x.ini
$ odbcadmin config set x.ini One a 2
unchanged: nothing to do
$ odbcadmin config set x.ini Two b ''
Changed x.ini
$ cat x.ini
[One]
a=2

[Two]
b=
$ odbcadmin config unset x.ini One A
Changed x.ini
$ odbcadmin config unset x.ini One A
unchanged: nothing to do
$ odbcadmin config unset x.ini Two
Changed x.ini
$ odbcadmin config unset x.ini Nothing
unchanged: nothing to do
$ odbcadmin config set .odbc.ini ODBC TraceAutoStop 1
Changed ~/.odbc.ini
$ odbcadmin config unset .odbc.ini 'ODBC Data Sources' Sales
Changed ~/.odbc.ini
$ cat x.ini .odbc.ini
[One]

; our data sources
[ODBC Data Sources]
Accounts=Plain

; the shop
[Sales]
Driver=/opt/libplain.so
Server = db1
PWD=geheim

[Accounts]
Driver=/opt/libplain.so

[ODBC]
Trace=0
TraceAutoStop=1
)sh";

TEST_F(ConfigSession, Changing) {
    EXPECT_EQ(played(home_, kChanging), kChanging);
}

constexpr const char* kRefused = R"sh($ odbcadmin config set x.ini 'a ;b' k v
! odbcadmin: The name "a ;b" cannot be stored: a blank and ; begin a comment in it
!   x.ini could not give it back as it is; use another one.
[5]
$ odbcadmin config set x.ini '' k v
! odbcadmin: The name "" cannot be stored: it is empty
!   x.ini could not give it back as it is; use another one.
[5]
$ odbcadmin config set x.ini ' a' k v
! odbcadmin: The name " a" cannot be stored: it begins or ends with a blank
!   x.ini could not give it back as it is; use another one.
[5]
$ odbcadmin config set x.ini One 'k=l' v
! odbcadmin: The key "k=l" cannot be stored: it holds =
!   x.ini could not give it back as it is; use another one.
[5]
$ odbcadmin config set x.ini One '' v
! odbcadmin: The key "" cannot be stored: it is empty
!   x.ini could not give it back as it is; use another one.
[5]
$ odbcadmin config set x.ini One ';k' v
! odbcadmin: The key ";k" cannot be stored: it begins with ;
!   x.ini could not give it back as it is; use another one.
[5]
$ odbcadmin config set x.ini One k ' v'
! odbcadmin: This value of k cannot be stored: it begins or ends with a blank
!   x.ini could not give it back as it is; use another one.
[5]
$ odbcadmin config set x.ini One k "$(printf 'a\nb')"
! odbcadmin: This value of k cannot be stored: it holds a line break
!   x.ini could not give it back as it is; use another one.
[5]
$ odbcadmin config unset x.ini ''
! odbcadmin: x.ini: cannot store a section without a name
!   Use another name or value.
[5]
$ odbcadmin config unset x.ini ' One'
! odbcadmin: The name " One" cannot be stored: it begins or ends with a blank
!   x.ini could not give it back as it is; use another one.
[5]
$ odbcadmin config set x.ini One k
! odbcadmin: VALUE is required
!   See odbcadmin config set --help
[2]
$ odbcadmin config set none/x.ini One k v
! odbcadmin: Cannot lock none/.x.ini.jxlock: No such file or directory
!   Make the directory first.
[7]
$ odbcadmin config set /dev/null One k v
! odbcadmin: Cannot open /dev/null: Operation not supported
!   There must be an ordinary file at this place, or nothing.
[7]
$ odbcadmin config set . One k v
! odbcadmin: Cannot open .: Is a directory
!   There must be a file at this place, or nothing.
[7]
$ odbcadmin config set '' One k v
! odbcadmin: Cannot find the file: Invalid argument
!   The file is as it was.
[7]
$ ls -A
.odbc.ini
.odbcinst.ini
)sh";

TEST_F(ConfigSession, Refused) {
    EXPECT_EQ(played(home_, kRefused), kRefused);
}

constexpr const char* kOddNamesComeBack = R"sh($ odbcadmin -q config set x.ini 'a]b' '-k' '[1,2]'
! odbcadmin: VALUE is required
!   See odbcadmin config set --help
[2]
$ odbcadmin -q config set x.ini '{}' '"q"' "it's \$HOME; # no comment"
$ odbcadmin -q config set x.ini '[x]' k '{a,b}'
$ odbcadmin -q config set -- x.ini --json --check -v
$ odbcadmin config get x.ini 'a]b' -- -k
! odbcadmin: There is no section a]b in x.ini
!   See odbcadmin config list FILE.
[3]
$ odbcadmin config get x.ini '{}' '"q"'
it's $HOME; # no comment
$ odbcadmin config get -- x.ini --json --check
-v
$ odbcadmin config list x.ini
[{}]
"q"=it's $HOME; # no comment
[[x]]
k={a,b}
[--json]
--check=-v
$ cat x.ini
[{}]
"q"=it's $HOME; # no comment

[[x]]
k={a,b}

[--json]
--check=-v
)sh";

TEST_F(ConfigSession, OddNamesComeBack) {
    EXPECT_EQ(played(home_, kOddNamesComeBack), kOddNamesComeBack);
}

}  // namespace
}  // namespace jx::test
