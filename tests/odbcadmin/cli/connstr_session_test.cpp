// dsn connstr, and dsn add --connstr: what is printed, and what comes back of it.
#include "admin_test.h"
#include "transcript.h"

namespace jx::test {
namespace {

class ConnstrSession : public AdminTest {};

constexpr const char* kThereAndBack = R"sh($ odbcadmin dsn connstr sales
DRIVER={Plain};Server=db1;
! odbcadmin: PWD left out: --show-secrets prints secrets, too
$ odbcadmin dsn connstr Sales --show-secrets
DRIVER={Plain};Server=db1;PWD=geheim;
$ odbcadmin dsn connstr Sales --dsn
DSN=Sales;
$ odbcadmin -q dsn set Sales 'PWD=a;b}c' 'Opt={x}' 'Note=two words' 'Empty=' 'Uri=db://u:secret@h'
$ odbcadmin dsn connstr Sales
DRIVER={Plain};Server=db1;Opt={{x}}};Note=two words;Empty=;
! odbcadmin: PWD, Uri left out: --show-secrets prints secrets, too
$ odbcadmin dsn add Copy --connstr "$(odbcadmin dsn connstr Sales --show-secrets)" --direct
Added data source Copy
! odbcadmin: written directly: as --direct asks
$ odbcadmin dsn show Copy -q --show-secrets
[Copy]
Driver=/opt/libplain.so
Server=db1
PWD=a;b}c
Opt={x}
Note=two words
Empty=
Uri=db://u:secret@h
$ odbcadmin --json dsn connstr Sales
{
  "schema": "odbcadmin/1",
  "name": "Sales",
  "connectionString": "DRIVER={Plain};Server=db1;Opt={{x}}};Note=two words;Empty=;",
  "leftOut": [
    "PWD",
    "Uri"
  ]
}
! odbcadmin: PWD, Uri left out: --show-secrets prints secrets, too
)sh";

TEST_F(ConnstrSession, ThereAndBack) {
    EXPECT_EQ(played(home_, kThereAndBack), kThereAndBack);
}

constexpr const char* kWhichDriver =
    R"sh($ printf '[By path]\nDriver=/opt/libplain.so\nDSN=x\nA=b\n[By name]\nDriver=plain\n[Other]\nDriver=/no.so\n[None]\nA=b\n[Odd]\nDriver=/no.so\na;b=c\n' > .odbc.ini
$ odbcadmin dsn connstr 'By path'
DRIVER={Plain};A=b;
$ odbcadmin dsn connstr 'By name'
DRIVER={Plain};
$ odbcadmin dsn connstr Other
DRIVER={/no.so};
$ odbcadmin dsn connstr None
! odbcadmin: The data source None leads to no driver
!   See odbcadmin explain None
[1]
$ odbcadmin dsn connstr Odd
! odbcadmin: The key "a;b" cannot stand in a connection string: it holds = or ;
!   Use --dsn, which leaves the keys in the file.
[5]
$ odbcadmin dsn connstr Odd --dsn
DSN=Odd;
$ odbcadmin dsn connstr Od
! odbcadmin: There is no data source Od in ~/.odbc.ini
!   Did you mean Odd?
[3]
$ odbcadmin dsn add New --connstr 'Driver=/opt/libplain.so;X=y' --direct -q
$ odbcadmin dsn connstr New
DRIVER={Plain};X=y;
)sh";

TEST_F(ConnstrSession, TheDriverIsNamedAsItIsRegistered) {
    EXPECT_EQ(played(home_, kWhichDriver), kWhichDriver);
}

constexpr const char* kWhatIsRefused = R"sh($ odbcadmin dsn add New --connstr 'DSN=Sales;UID=a'
! odbcadmin: The connection string holds DSN, which leads to keys that are kept elsewhere
!   Give one with DRIVER={...}, as dsn connstr prints it.
[2]
$ odbcadmin dsn add New --connstr 'DRIVER={Plain};filedsn=/x.dsn'
! odbcadmin: The connection string holds filedsn, which leads to keys that are kept elsewhere
!   Give one with DRIVER={...}, as dsn connstr prints it.
[2]
$ odbcadmin dsn add New --connstr 'Server=a'
! odbcadmin: The connection string has no DRIVER
!   See odbcadmin dsn add --help
[2]
$ odbcadmin dsn add New
! odbcadmin: --driver is required
!   See odbcadmin dsn add --help
[2]
$ odbcadmin dsn add New --connstr 'DRIVER={Plain};PWD={geheim'
! odbcadmin: The connection string cannot be read: attribute 2, PWD, has a { that is never closed
!   Put a value with ; or { in braces: PWD={a;b}
[2]
$ odbcadmin dsn add New --connstr 'DRIVER={Plain};A=b' a=c
! odbcadmin: A is given twice
!   Give it once, in the connection string or beside it.
[2]
$ odbcadmin dsn add New --connstr 'DRIVER={Plain}' --driver Plain
! odbcadmin: DRIVER is given twice
!   Give it once, in the connection string or beside it.
[2]
$ odbcadmin dsn add New --connstr 'DRIVER={Plaim}'
! odbcadmin: There is no driver Plaim in ~/.odbcinst.ini
!   Did you mean Plain?
[3]
$ odbcadmin dsn add New --connstr 'DRIVER={Plain};PWD=********'
! odbcadmin: The value given for PWD is what a hidden secret is shown as, not the secret
!   Give the secret itself; --show-secrets prints one that is stored.
[5]
$ odbcadmin dsn add New --connstr 'DRIVER={Plain};A={ b }'
! odbcadmin: This value of A cannot be stored: it begins or ends with a blank
!   The file could not give it back as it is.
[5]
$ odbcadmin dsn add New --connstr 'Server=a' --driver Plain B=c --direct
Added data source New
! odbcadmin: written directly: as --direct asks
$ odbcadmin dsn show New -q
[New]
Driver=/opt/libplain.so
B=c
Server=a
)sh";

TEST_F(ConnstrSession, WhatIsRefused) {
    EXPECT_EQ(played(home_, kWhatIsRefused), kWhatIsRefused);
}

}  // namespace
}  // namespace jx::test
