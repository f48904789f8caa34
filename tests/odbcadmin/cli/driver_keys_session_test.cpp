// driver set, unset and rename, and those of translators: what they print, refuse and leave in the files.
#include "admin_test.h"
#include "transcript.h"

namespace jx::test {
namespace {

class DriverKeysSession : public AdminTest {};

constexpr const char* kKeysAreSetAndRemoved = R"sh($ odbcadmin driver set plain FileUsage=1 'Note=a=b; c'
Changed driver plain
$ odbcadmin driver set Plain Driver=lib/../p.so Setup=libs.so
Changed driver Plain
! odbcadmin: the library ~/p.so is not there
$ odbcadmin driver set Plain FileUsage=1
unchanged: nothing to do
$ odbcadmin driver unset Plain Note None
Changed driver Plain
$ cat .odbcinst.ini
[ODBC Drivers]
Plain=Installed

[Plain]
Driver=~/p.so
FileUsage=1
Setup=libs.so
$ odbcadmin driver set Plain FileUsage=2 --dry-run
--- ~/.odbcinst.ini
+++ ~/.odbcinst.ini
@@ -3,5 +3,5 @@
 
 [Plain]
 Driver=~/p.so
-FileUsage=1
+FileUsage=2
 Setup=libs.so
$ odbcadmin driver unset Plain Setup --check
would change: ~/.odbcinst.ini
[9]
)sh";

TEST_F(DriverKeysSession, KeysAreSetAndRemoved) {
    EXPECT_EQ(played(home_, kKeysAreSetAndRemoved), kKeysAreSetAndRemoved);
}

constexpr const char* kWhatIsRefused = R"sh($ odbcadmin driver set Plaim a=b
! odbcadmin: There is no driver Plaim in ~/.odbcinst.ini
!   Did you mean Plain?
[3]
$ odbcadmin driver set 'ODBC Drivers' a=b
! odbcadmin: No driver can be called "ODBC Drivers": the section of that name has another use
!   Choose another name.
[5]
$ odbcadmin driver set Plain
! odbcadmin: KEY=VALUE is required
!   See odbcadmin driver set --help
[2]
$ odbcadmin driver set Plain a
! odbcadmin: "a" is not of the form KEY=VALUE
!   Put the whole of it in quotes when the value holds blanks.
[2]
$ odbcadmin driver set Plain Driver=
! odbcadmin: A driver cannot be without its library
!   Give a path, or remove the driver.
[5]
$ odbcadmin driver set Plain '[x=y'
! odbcadmin: The key "[x" cannot be stored: it begins with [
!   ~/.odbcinst.ini could not give it back as it is; use another one.
[5]
$ odbcadmin driver set Plain 'PWD=********'
! odbcadmin: The value given for PWD is what a hidden secret is shown as, not the secret
!   Give the secret itself; --show-secrets prints one that is stored.
[5]
$ odbcadmin driver unset Plain driver
! odbcadmin: A driver cannot be without its library
!   Set another one, or remove the driver.
[5]
$ odbcadmin driver rename Plain 'A(B'
! odbcadmin: No driver can be called "A(B": its parentheses are not in pairs
!   Choose another name.
[5]
$ odbcadmin driver rename None Other
! odbcadmin: There is no driver None in ~/.odbcinst.ini
!   See odbcadmin driver list; odbcadmin driver add registers one.
[3]
$ odbcadmin -q driver add Other --lib libo.so
$ odbcadmin driver rename Plain OTHER
! odbcadmin: There is a driver OTHER in ~/.odbcinst.ini
!   Use odbcadmin driver ensure to change it.
[4]
)sh";

TEST_F(DriverKeysSession, WhatIsRefused) {
    EXPECT_EQ(played(home_, kWhatIsRefused), kWhatIsRefused);
    EXPECT_EQ(sources(), kSources);
}

constexpr const char* kRenamedWithThoseWhoNameIt = R"sh($ cat > .odbcinst.ini
$ printf '[ODBC Drivers]\nOld=Installed\nRest=Installed\n\n[Old]\n; inside\nDriver=/o.so\nPWD=x\n\n[Rest]\nDriver=/r.so\n\n[Default]\nDriver=OLD\n' > .odbcinst.ini
$ printf '; mine\r\n[ODBC Data Sources]\r\nA=old\r\nB=Rest\r\n[A]\r\nDriver=/o.so\r\n[C]\r\nDriver=Old\r\nOther=Old\r\n[ODBC]\r\nTrace=Old\r\n' > .odbc.ini
$ odbcadmin driver rename old 'New One'
Renamed driver Old to New One, also in data source A, C, Default
$ cat .odbcinst.ini
[ODBC Drivers]
Rest=Installed
New One=Installed

[Rest]
Driver=/r.so

[Default]
Driver=New One

[New One]
Driver=/o.so
PWD=x
$ tr '\r' '~' < .odbc.ini
; mine~
[ODBC Data Sources]~
A=New One~
B=Rest~
[A]~
Driver=/o.so~
[C]~
Driver=New One~
Other=Old~
[ODBC]~
Trace=Old~
$ odbcadmin driver rename 'new one' 'NEW ONE'
Renamed driver New One to NEW ONE, also in data source A, C, Default
$ odbcadmin --json driver rename 'NEW ONE' 'NEW ONE'
{
  "schema": "odbcadmin/1",
  "result": "unchanged",
  "changed": false,
  "message": "unchanged: nothing to do",
  "files": []
}
)sh";

TEST_F(DriverKeysSession, RenamedWithThoseWhoNameIt) {
    EXPECT_EQ(played(home_, kRenamedWithThoseWhoNameIt), kRenamedWithThoseWhoNameIt);
}

// Of the two files the second one is locked: the first one stays, too.
TEST_F(DriverKeysSession, ARenamingIsWholeOrNot) {
    home_.put(".odbc.ini.jxlock", "not a lock");
    EXPECT_EQ(run({"driver", "rename", "Plain", "Other"}).code, 7);
    EXPECT_EQ(drivers(), kDrivers);
    EXPECT_EQ(sources(), kSources);
    unlink(home_.file(".odbc.ini.jxlock").c_str());
    const std::string difference = out({"driver", "rename", "Plain", "Other", "--dry-run"});
    EXPECT_NE(difference.find("+Other=Installed"), std::string::npos);
    EXPECT_NE(difference.find("+Sales=Other"), std::string::npos);
    EXPECT_EQ(drivers(), kDrivers);
    EXPECT_EQ(json({"driver", "rename", "Plain", "Other"})["files"].size(), 2U);
    EXPECT_EQ(out({"dsn", "list"}), "Sales     Other\nAccounts  Other\n");
}

// The same of a driver that goes with its data sources.
TEST_F(DriverKeysSession, RemovingADriverWithItsDataSourcesIsWholeOrNot) {
    for (const char* lock : {".odbc.ini.jxlock", ".odbcinst.ini.jxlock"}) {
        home_.put(lock, "not a lock");
        EXPECT_EQ(run({"driver", "remove", "Plain", "--with-dsns"}).code, 7);
        EXPECT_EQ(drivers(), kDrivers);
        EXPECT_EQ(sources(), kSources);
        unlink(home_.file(lock).c_str());
    }
    EXPECT_EQ(json({"driver", "remove", "Plain", "--with-dsns"})["files"].size(), 2U);
    EXPECT_EQ(out({"dsn", "list", "-q"}) + out({"driver", "list", "-q"}), "");
}

constexpr const char* kTranslators = R"sh($ odbcadmin -q translator add Latin --lib liblatin.so
$ odbcadmin translator set Latin Translator=libl2.so Setup=libs.so
Changed translator Latin
$ odbcadmin translator unset Latin Translator
! odbcadmin: A translator cannot be without its library
!   Set another one, or remove the translator.
[5]
$ odbcadmin translator unset Latin Setup
Changed translator Latin
$ odbcadmin translator rename Latin Latin1
Renamed translator Latin to Latin1
$ odbcadmin translator list
Latin1  libl2.so
$ odbcadmin translator remove Latin --if-exists
unchanged: nothing to do
$ odbcadmin translator rm Latin1 --if-exists
Removed translator Latin1
$ odbcadmin translator ls
There are no translators in ~/.odbcinst.ini
)sh";

TEST_F(DriverKeysSession, TranslatorsLikewise) {
    EXPECT_EQ(played(home_, kTranslators), kTranslators);
    EXPECT_EQ(sources(), kSources);
}

}  // namespace
}  // namespace jx::test
