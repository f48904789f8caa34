// Drivers and translators: each verb with what it prints, refuses and leaves in the file.
#include "admin_test.h"
#include "transcript.h"

namespace jx::test {
namespace {

class DriversSession : public AdminTest {};

constexpr const char* kDriversAreListedAndShown = R"sh($ odbcadmin driver list
Plain  missing  /opt/libplain.so
$ odbcadmin -q driver list
Plain
$ odbcadmin driver show plain
[Plain]
Driver=/opt/libplain.so
FileUsage=0
; library missing, used by Sales, Accounts, ~/.odbcinst.ini
$ odbcadmin driver show Plaim
! odbcadmin: There is no driver Plaim in ~/.odbcinst.ini
!   Did you mean Plain?
[3]
$ odbcadmin driver show xyz
! odbcadmin: There is no driver xyz in ~/.odbcinst.ini
!   See odbcadmin driver list; odbcadmin driver add registers one.
[3]
$ printf '[Loose]\nDriver=/x.so\nPWD=geheim\n[Default]\nDriver=Loose\n[ODBC Drivers]\nGone=Installed\n' >.odbcinst.ini
$ odbcadmin driver list
Gone   missing
Loose  missing  /x.so  (not listed)
$ odbcadmin driver show Loose
[Loose]
Driver=/x.so
PWD=********
; library missing, used by Default, ~/.odbcinst.ini
$ odbcadmin driver show Gone
[Gone]
; library missing, used by no data source, ~/.odbcinst.ini
$ odbcadmin driver show Default
! odbcadmin: There is no driver Default in ~/.odbcinst.ini
!   See odbcadmin driver list; odbcadmin driver add registers one.
[3]
$ : >.odbcinst.ini
$ odbcadmin driver list
There are no drivers in ~/.odbcinst.ini
$ odbcadmin translator list
There are no translators in ~/.odbcinst.ini
)sh";

TEST_F(DriversSession, DriversAreListedAndShown) {
    EXPECT_EQ(played(home_, kDriversAreListedAndShown), kDriversAreListedAndShown);
}

constexpr const char* kDriversAreAdded =
    R"sh($ odbcadmin driver add New --lib /opt/new.so --setup /opt/set.so FileUsage=1 'Opt=a=b'
Added driver New
! odbcadmin: the library /opt/new.so is not there
! odbcadmin: the setup library /opt/set.so is not there
$ odbcadmin -q driver add 'A(B) 3.5, 64-bit' --lib libb.so --no-setup
$ odbcadmin -q driver add Here --lib lib/../b.so --no-setup
$ odbcadmin driver add new --lib /x.so
! odbcadmin: There is a driver new in ~/.odbcinst.ini
!   Use odbcadmin driver ensure to change it.
[4]
$ odbcadmin driver add Other
! odbcadmin: --lib is required
!   See odbcadmin driver add --help
[2]
$ odbcadmin driver add Other --lib /x.so Driver=/y.so
! odbcadmin: Driver cannot be given as KEY=VALUE here
!   It comes from the name and from the options; see --help.
[2]
$ odbcadmin driver add Other --lib /x.so 'K= v'
! odbcadmin: This value of K cannot be stored: it begins or ends with a blank
!   ~/.odbcinst.ini could not give it back as it is; use another one.
[5]
$ odbcadmin driver add Other --lib ''
! odbcadmin: The driver Other has no library yet
!   Give it with --lib.
[2]
$ odbcadmin driver add Latin1 --lib /x.so --setup
! odbcadmin: --setup: 1 required FILE missing
!   See odbcadmin driver add --help
[2]
$ cat .odbcinst.ini
[ODBC Drivers]
Plain=Installed
New=Installed
A(B) 3.5, 64-bit=Installed
Here=Installed

[Plain]
Driver=/opt/libplain.so
FileUsage=0

[New]
Driver=/opt/new.so
Setup=/opt/set.so
FileUsage=1
Opt=a=b

[A(B) 3.5, 64-bit]
Driver=libb.so

[Here]
Driver=~/b.so
)sh";

TEST_F(DriversSession, DriversAreAdded) {
    EXPECT_EQ(played(home_, kDriversAreAdded), kDriversAreAdded);
}

// The same rules and words for the command's verbs, and for the screens.
constexpr const char* kNamesThatAreRefused = R"sh($ odbcadmin driver add 'A(B' --lib /x.so
! odbcadmin: No driver can be called "A(B": its parentheses are not in pairs
!   Choose another name.
[5]
$ odbcadmin driver ensure 'A(B' --lib /x.so
! odbcadmin: No driver can be called "A(B": its parentheses are not in pairs
!   Choose another name.
[5]
$ odbcadmin translator add 'A(B' --lib /x.so
! odbcadmin: No translator can be called "A(B": its parentheses are not in pairs
!   Choose another name.
[5]
$ echo '{"schema": "odbcadmin/1", "drivers": [{"name": "A(B", "keys": {"Driver": "/x.so"}}]}' | odbcadmin apply -f -
! odbcadmin: No driver can be called "A(B": its parentheses are not in pairs
!   Choose another name.
[5]
$ odbcadmin driver add '' --lib /x.so
! odbcadmin: The driver has no name
!   Give it one.
[5]
$ odbcadmin driver add 'a;b' --lib /x.so
! odbcadmin: No driver can be called "a;b": it holds one of []{};="\
!   Choose another name.
[5]
$ odbcadmin driver add 'a=b' --lib /x.so
! odbcadmin: No driver can be called "a=b": it holds =
!   Choose another name.
[5]
$ odbcadmin driver add ' a' --lib /x.so
! odbcadmin: No driver can be called " a": it begins or ends with a blank
!   Choose another name.
[5]
$ odbcadmin driver add Default --lib /x.so
! odbcadmin: No driver can be called "Default": the section of that name has another use
!   Choose another name.
[5]
$ odbcadmin driver add 'ODBC Drivers' --lib /x.so
! odbcadmin: No driver can be called "ODBC Drivers": the section of that name has another use
!   Choose another name.
[5]
$ odbcadmin driver add 12345678901234567890123456789012345678901234567890 --lib /x.so
! odbcadmin: No driver can be called "12345678901234567890123456789012345678901234567890": it has more than 49 bytes
!   Choose another name.
[5]
$ odbcadmin driver remove 'ODBC Drivers'
! odbcadmin: No driver can be called "ODBC Drivers": the section of that name has another use
!   Choose another name.
[5]
$ odbcadmin translator remove Default
! odbcadmin: No translator can be called "Default": the section of that name has another use
!   Choose another name.
[5]
$ odbcadmin -q driver add 1234567890123456789012345678901234567890123456789 --lib /x.so
$ odbcadmin -q driver list
Plain
1234567890123456789012345678901234567890123456789
)sh";

TEST_F(DriversSession, NamesThatAreRefused) {
    EXPECT_EQ(played(home_, kNamesThatAreRefused), kNamesThatAreRefused);
}

constexpr const char* kPathsThatAreRefused = R"sh($ odbcadmin driver add Long --lib "/$(printf '%01023d' 0)" | wc -c
0
! odbcadmin: The path of the driver's library is too long
!   At most 1023 bytes are possible.
$ odbcadmin driver add Long --lib "/$(printf '%01023d' 0)" 2>&1 | cut -c1-70
odbcadmin: The path of the driver's library is too long
  At most 1023 bytes are possible.
$ odbcadmin -q driver add Long --lib "/$(printf '%01022d' 0)"
$ odbcadmin -q driver list
Plain
Long
)sh";

TEST_F(DriversSession, PathsThatAreRefused) {
    EXPECT_EQ(played(home_, kPathsThatAreRefused), kPathsThatAreRefused);
}

constexpr const char* kDriversAreEnsured = R"sh($ odbcadmin driver ensure Plain --lib /opt/two.so --no-setup FileUsage=2
Changed driver Plain
! odbcadmin: the library /opt/two.so is not there
$ odbcadmin driver ensure Plain --lib /opt/two.so --no-setup FileUsage=2
unchanged: nothing to do
! odbcadmin: the library /opt/two.so is not there
$ odbcadmin driver ensure PLAIN --setup /opt/set.so
Changed driver PLAIN
! odbcadmin: the setup library /opt/set.so is not there
$ odbcadmin driver ensure Plain
unchanged: nothing to do
$ odbcadmin driver ensure Other
! odbcadmin: The driver Other has no library yet
!   Give it with --lib.
[2]
$ odbcadmin driver ensure Other --lib /opt/other.so --no-setup
Added driver Other
! odbcadmin: the library /opt/other.so is not there
$ printf '[Loose]\nDriver=/l.so\n' >>.odbcinst.ini
$ odbcadmin driver ensure Loose --no-setup
Changed driver Loose
$ cat .odbcinst.ini
[ODBC Drivers]
Plain=Installed
Other=Installed
Loose=Installed

[Plain]
Driver=/opt/two.so
FileUsage=2
Setup=/opt/set.so

[Other]
Driver=/opt/other.so
[Loose]
Driver=/l.so
)sh";

TEST_F(DriversSession, DriversAreEnsured) {
    EXPECT_EQ(played(home_, kDriversAreEnsured), kDriversAreEnsured);
}

constexpr const char* kDriversAreRemoved = R"sh($ odbcadmin driver remove Plain
Removed driver Plain
! odbcadmin: these data sources use it still: Sales, Accounts (--with-dsns removes them too)
$ odbcadmin driver remove Plain
! odbcadmin: There is no driver Plain in ~/.odbcinst.ini
!   See odbcadmin driver list; odbcadmin driver add registers one.
[3]
$ cat .odbcinst.ini
[ODBC Drivers]

$ odbcadmin -q driver add Plain --lib /opt/libplain.so
$ odbcadmin driver remove plain --with-dsns
Removed driver plain and data source Sales, Accounts
$ odbcadmin dsn list
There are no data sources in ~/.odbc.ini
$ odbcadmin driver remove Plain --with-dsns
! odbcadmin: There is no driver Plain in ~/.odbcinst.ini
!   See odbcadmin driver list; odbcadmin driver add registers one.
[3]
$ odbcadmin -q driver add Alone --lib /a.so
$ odbcadmin driver remove Alone --with-dsns
Removed driver Alone
)sh";

TEST_F(DriversSession, DriversAreRemoved) {
    EXPECT_EQ(played(home_, kDriversAreRemoved), kDriversAreRemoved);
}

constexpr const char* kForbiddenDriverNames =
    R"sh($ printf '[ODBC Drivers]\nA;B=Installed\n[A;B]\nDriver=/a.so\n' >.odbcinst.ini
$ odbcadmin driver ensure 'a;b' --lib /b.so --no-setup
Changed driver a;b
! odbcadmin: the library /b.so is not there
$ odbcadmin driver show 'A;B'
[A;B]
Driver=/b.so
; library missing, used by no data source, ~/.odbcinst.ini
$ odbcadmin driver remove 'A;B'
Removed driver A;B
$ odbcadmin driver ensure 'A;B' --lib /b.so
! odbcadmin: No driver can be called "A;B": it holds one of []{};="\
!   Choose another name.
[5]
)sh";

TEST_F(DriversSession, ForbiddenDriverNames) {
    EXPECT_EQ(played(home_, kForbiddenDriverNames), kForbiddenDriverNames);
}

constexpr const char* kTranslators = R"sh($ odbcadmin translator add Latin --lib /opt/latin.so --setup /opt/set.so
Added translator Latin
$ odbcadmin translator add latin --lib /x.so
! odbcadmin: There is something called latin in ~/.odbcinst.ini
!   Remove it first, or choose another name.
[4]
$ odbcadmin translator add Plain --lib /x.so
! odbcadmin: There is something called Plain in ~/.odbcinst.ini
!   Remove it first, or choose another name.
[4]
$ odbcadmin translator add Other
! odbcadmin: --lib is required
!   See odbcadmin translator add --help
[2]
$ odbcadmin translator list
Latin  /opt/latin.so
$ odbcadmin -q translator list
Latin
$ odbcadmin driver show Latin
! odbcadmin: There is no driver Latin in ~/.odbcinst.ini
!   See odbcadmin driver list; odbcadmin driver add registers one.
[3]
$ odbcadmin translator remove Latim
! odbcadmin: There is no translator Latim in ~/.odbcinst.ini
!   Did you mean Latin?
[3]
$ odbcadmin translator remove Plain
! odbcadmin: There is no translator Plain in ~/.odbcinst.ini
!   See odbcadmin translator list; odbcadmin translator add registers one.
[3]
$ cat .odbcinst.ini
[ODBC Drivers]
Plain=Installed

[Plain]
Driver=/opt/libplain.so
FileUsage=0

[ODBC Translators]
Latin=Installed

[Latin]
Translator=/opt/latin.so
Setup=/opt/set.so
$ odbcadmin translator remove LATIN
Removed translator LATIN
$ odbcadmin translator list
There are no translators in ~/.odbcinst.ini
)sh";

TEST_F(DriversSession, Translators) {
    EXPECT_EQ(played(home_, kTranslators), kTranslators);
}

constexpr const char* kTracing = R"sh($ odbcadmin trace status
Tracing is off, file sql.log
$ odbcadmin trace off
unchanged: nothing to do
$ odbcadmin trace on t.log
Tracing to ~/t.log
$ odbcadmin trace on t.log
unchanged: nothing to do
$ odbcadmin trace status
Tracing is on, file ~/t.log
$ printf 12345 >t.log
$ odbcadmin trace status
Tracing is on, file ~/t.log (5 bytes)
$ odbcadmin trace off
Tracing is off
$ odbcadmin config set .odbc.ini ODBC TraceAutoStop 1
Changed ~/.odbc.ini
$ odbcadmin config set .odbc.ini ODBC Trace Yes
Changed ~/.odbc.ini
$ odbcadmin trace status
Tracing is on, file ~/t.log (5 bytes), stops by itself
$ odbcadmin trace on ''
! odbcadmin: The trace file has no name
!   Give a path.
[2]
$ odbcadmin trace on
! odbcadmin: FILE is required
!   See odbcadmin trace on --help
[2]
$ tail -n 4 .odbc.ini
[ODBC]
Trace=Yes
TraceFile=~/t.log
TraceAutoStop=1
)sh";

TEST_F(DriversSession, Tracing) {
    EXPECT_EQ(played(home_, kTracing), kTracing);
}

constexpr const char* kTracingSettingsAreNotMadeToTurnItOff = R"sh($ rm .odbc.ini
$ odbcadmin trace off
unchanged: nothing to do
$ ls -A
.odbcinst.ini
)sh";

TEST_F(DriversSession, TracingSettingsAreNotMadeToTurnItOff) {
    EXPECT_EQ(played(home_, kTracingSettingsAreNotMadeToTurnItOff), kTracingSettingsAreNotMadeToTurnItOff);
}

}  // namespace
}  // namespace jx::test
