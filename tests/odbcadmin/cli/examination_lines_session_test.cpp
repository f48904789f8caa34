// lint and doctor: names that do not match, and lines that mean something else.
#include "admin_test.h"
#include "transcript.h"

namespace jx::test {
namespace {

class ExaminedLines : public AdminTest {};

constexpr const char* kNamesThatDoNotMatch =
    R"sh($ chmod 600 .odbc.ini
$ printf '[ODBC Data Sources]\nA=Plain\nB=Plane\nC=Plain\nODBC=Plain\nD(E)=Plain\n[A]\nDriver=/opt/libplain.so\n[B]\nDriver=/opt/libplain.so\n[D(E)]\nDriver=/opt/libplain.so\n[F]\nDriver=/opt/libplain.so\n' >.odbc.ini
$ odbcadmin lint
error names.driver-unknown data source B
  ~/.odbc.ini:3: its driver is "Plane", and ~/.odbcinst.ini has no such section.
  Add it: odbcadmin driver add Plane --lib PATH
error names.no-section data source C
  ~/.odbc.ini:4 lists it, and ~/.odbc.ini has no section [C].
  Add the section: odbcadmin dsn ensure C --driver Plain, or take it off the list: odbcadmin dsn remove C
error names.reserved data source ODBC
  ~/.odbc.ini:5: the section [ODBC] has a meaning of its own.
  Delete the line, and choose another name for the data source.
warning names.forbidden-character data source D(E)
  ~/.odbc.ini:6: the name holds "(", which the standard forbids in names of data sources.
  Rename it: odbcadmin dsn rename 'D(E)' NEW
warning names.not-listed data source F
  ~/.odbc.ini:13 has its section, and [ODBC Data Sources] does not list it: programs that offer a choice leave it out.
  List it: odbcadmin dsn ensure F --driver Plain
note names.no-setup-key driver Plain
  ~/.odbcinst.ini:4: the section has no value for Setup, so programs cannot add or change its data sources.
  Name its setup library; if it brings none: odbcadmin driver ensure Plain --lib /opt/libplain.so --setup libjxsetup.so
3 errors, 2 warnings, 1 note.
[10]
$ odbcadmin doctor A
note names.no-setup-key driver Plain
  ~/.odbcinst.ini:4: the section has no value for Setup, so programs cannot add or change its data sources.
  Name its setup library; if it brings none: odbcadmin driver ensure Plain --lib /opt/libplain.so --setup libjxsetup.so
error library.missing driver Plain
  There is no /opt/libplain.so; its directory is there.
  Install the library there, or correct the path.
1 error, 0 warnings, 1 note.
[10]
$ odbcadmin doctor B
error names.driver-unknown data source B
  ~/.odbc.ini:3: its driver is "Plane", and ~/.odbcinst.ini has no such section.
  Add it: odbcadmin driver add Plane --lib PATH
error library.missing data source B
  There is no /opt/libplain.so; its directory is there.
  Install the library there, or correct the path.
2 errors, 0 warnings, 0 notes.
[10]
$ odbcadmin doctor C
error names.no-section data source C
  ~/.odbc.ini:4 lists it, and ~/.odbc.ini has no section [C].
  Add the section: odbcadmin dsn ensure C --driver Plain, or take it off the list: odbcadmin dsn remove C
note names.no-setup-key driver Plain
  ~/.odbcinst.ini:4: the section has no value for Setup, so programs cannot add or change its data sources.
  Name its setup library; if it brings none: odbcadmin driver ensure Plain --lib /opt/libplain.so --setup libjxsetup.so
error library.missing driver Plain
  There is no /opt/libplain.so; its directory is there.
  Install the library there, or correct the path.
2 errors, 0 warnings, 1 note.
[10]
$ odbcadmin doctor F
warning names.not-listed data source F
  ~/.odbc.ini:13 has its section, and [ODBC Data Sources] does not list it: programs that offer a choice leave it out.
  List it: odbcadmin dsn ensure F --driver Plain
error library.missing data source F
  There is no /opt/libplain.so; its directory is there.
  Install the library there, or correct the path.
1 error, 1 warning, 0 notes.
[10]
$ odbcadmin dsn list
A     Plain
B     Plane
C     Plain
ODBC  Plain
D(E)  Plain
F     /opt/libplain.so  (not listed)
$ odbcadmin explain F
data source F
  broken  listed  not in [ODBC Data Sources]  ~/.odbc.ini
          List it: odbcadmin dsn ensure F --driver DRIVER
  ok      section  [F]               ~/.odbc.ini:13
  ok      Driver   /opt/libplain.so  ~/.odbc.ini:14
/opt/libplain.so
  broken  library  missing
          See odbcadmin driver check /opt/libplain.so
$ printf '[ODBC Drivers]\nPlain=Installed\nGone=Installed\nPlain=Installed\n[Plain]\nDriver=/opt/libplain.so\nSetup=/opt/libsetup.so\n[Odd]\nDriver=/opt/odd.so\n' >.odbcinst.ini
$ odbcadmin lint
warning syntax.duplicate-key ~/.odbcinst.ini:4
  The key "Plain" stands in line 2 already, and that one counts.
  Delete the one that is not meant.
error names.driver-unknown data source B
  ~/.odbc.ini:3: its driver is "Plane", and ~/.odbcinst.ini has no such section.
  Add it: odbcadmin driver add Plane --lib PATH
error names.no-section data source C
  ~/.odbc.ini:4 lists it, and ~/.odbc.ini has no section [C].
  Add the section: odbcadmin dsn ensure C --driver Plain, or take it off the list: odbcadmin dsn remove C
error names.reserved data source ODBC
  ~/.odbc.ini:5: the section [ODBC] has a meaning of its own.
  Delete the line, and choose another name for the data source.
warning names.forbidden-character data source D(E)
  ~/.odbc.ini:6: the name holds "(", which the standard forbids in names of data sources.
  Rename it: odbcadmin dsn rename 'D(E)' NEW
warning names.not-listed data source F
  ~/.odbc.ini:13 has its section, and [ODBC Data Sources] does not list it: programs that offer a choice leave it out.
  List it: odbcadmin dsn ensure F --driver Plain
error names.no-section driver Gone
  ~/.odbcinst.ini:3 lists it, and there is no section [Gone].
  Add it anew: odbcadmin driver ensure Gone --lib PATH, or take it off the list: odbcadmin driver remove Gone
warning names.not-listed driver Odd
  ~/.odbcinst.ini:8 has its section, and [ODBC Drivers] does not list it: programs that offer a choice leave it out.
  List it: odbcadmin driver ensure Odd --lib /opt/odd.so
note names.no-setup-key driver Odd
  ~/.odbcinst.ini:8: the section has no value for Setup, so programs cannot add or change its data sources.
  Name its setup library; if it brings none: odbcadmin driver ensure Odd --lib /opt/odd.so --setup libjxsetup.so
4 errors, 4 warnings, 1 note.
[10]
$ odbcadmin driver list
Plain  missing  /opt/libplain.so
Gone   missing
Odd    missing  /opt/odd.so       (not listed)
)sh";

TEST_F(ExaminedLines, NamesThatDoNotMatch) {
    EXPECT_EQ(played(home_, kNamesThatDoNotMatch), kNamesThatDoNotMatch);
}

constexpr const char* kLinesThatMeanSomethingElse =
    R"sh($ chmod 600 .odbc.ini
$ printf '[ODBC Data Sources]\nA=Plain\n[A]\nDriver=/opt/libplain.so # the driver\nServer="db1"\nPWD=$SECRET\nPath=~/data\nUID = anna \nPort=5432 ; the port\nServer=db2\n[A\nX=1\n' >.odbc.ini
$ odbcadmin lint
note syntax.trailing-blanks ~/.odbc.ini:8
  Blanks at the end of the line are not part of its value.
  Delete them: other programs may take them in.
warning syntax.duplicate-key ~/.odbc.ini:10
  The key "Server" stands in line 5 already, and that one counts.
  Delete the one that is not meant.
error syntax.unclosed-bracket ~/.odbc.ini:11
  The header "[A" is never closed: the keys below it belong to the section above it.
  Add the "]".
note names.no-setup-key driver Plain
  ~/.odbcinst.ini:4: the section has no value for Setup, so programs cannot add or change its data sources.
  Name its setup library; if it brings none: odbcadmin driver ensure Plain --lib /opt/libplain.so --setup libjxsetup.so
1 error, 1 warning, 2 notes.
[10]
$ odbcadmin doctor A
note syntax.trailing-blanks ~/.odbc.ini:8
  Blanks at the end of the line are not part of its value.
  Delete them: other programs may take them in.
warning syntax.duplicate-key ~/.odbc.ini:10
  The key "Server" stands in line 5 already, and that one counts.
  Delete the one that is not meant.
error syntax.unclosed-bracket ~/.odbc.ini:11
  The header "[A" is never closed: the keys below it belong to the section above it.
  Add the "]".
note names.no-setup-key driver Plain
  ~/.odbcinst.ini:4: the section has no value for Setup, so programs cannot add or change its data sources.
  Name its setup library; if it brings none: odbcadmin driver ensure Plain --lib /opt/libplain.so --setup libjxsetup.so
error library.missing driver Plain
  There is no /opt/libplain.so; its directory is there.
  Install the library there, or correct the path.
2 errors, 1 warning, 2 notes.
[10]
$ odbcadmin -q lint
note syntax.trailing-blanks ~/.odbc.ini:8
warning syntax.duplicate-key ~/.odbc.ini:10
error syntax.unclosed-bracket ~/.odbc.ini:11
note names.no-setup-key driver Plain
[10]
$ odbcadmin --json lint
{
  "schema": "odbcadmin/1",
  "findings": [
    {
      "id": "syntax.trailing-blanks",
      "severity": "note",
      "subject": "~/.odbc.ini:8",
      "fact": "Blanks at the end of the line are not part of its value.",
      "advice": "Delete them: other programs may take them in."
    },
    {
      "id": "syntax.duplicate-key",
      "severity": "warning",
      "subject": "~/.odbc.ini:10",
      "fact": "The key \"Server\" stands in line 5 already, and that one counts.",
      "advice": "Delete the one that is not meant."
    },
    {
      "id": "syntax.unclosed-bracket",
      "severity": "error",
      "subject": "~/.odbc.ini:11",
      "fact": "The header \"[A\" is never closed: the keys below it belong to the section above it.",
      "advice": "Add the \"]\"."
    },
    {
      "id": "names.no-setup-key",
      "severity": "note",
      "subject": "driver Plain",
      "fact": "~/.odbcinst.ini:4: the section has no value for Setup, so programs cannot add or change its data sources.",
      "advice": "Name its setup library; if it brings none: odbcadmin driver ensure Plain --lib /opt/libplain.so --setup libjxsetup.so"
    }
  ]
}
[10]
$ printf '[A]\r\nDriver=x\r\n\r\n' >dos.ini
$ odbcadmin lint dos.ini
warning syntax.carriage-return ~/dos.ini
  3 of 3 lines end with a carriage return; here it counts as part of the line end, elsewhere as part of the value.
  Save the file with Unix line ends.
0 errors, 1 warning, 0 notes.
$ printf '[A]\nKey=\303\n' >bytes.ini
$ odbcadmin lint bytes.ini
warning syntax.not-utf8 ~/bytes.ini:2
  The line is not UTF-8: programs differ in how they read it.
  Save the file as UTF-8.
0 errors, 1 warning, 0 notes.
$ printf 'just text\nof a letter\n' >letter.ini
$ odbcadmin lint letter.ini
error syntax.key-before-section ~/letter.ini:1
  The key "just text" stands before any section, so it belongs to none.
  Move it below the header of its section.
error syntax.key-before-section ~/letter.ini:2
  The key "of a letter" stands before any section, so it belongs to none.
  Move it below the header of its section.
2 errors, 0 warnings, 0 notes.
[10]
$ printf '[A]\n[A]\n[a]\nx=1\nX=2\nx=3\n' >twice.ini
$ odbcadmin lint twice.ini
warning syntax.duplicate-section ~/twice.ini:2
  The section "A" begins in line 1 already; here the two count as one, elsewhere one may hide the other.
  Put the keys together under one header.
warning syntax.duplicate-section ~/twice.ini:3
  The section "a" begins in line 1 already; here the two count as one, elsewhere one may hide the other.
  Put the keys together under one header.
warning syntax.duplicate-key ~/twice.ini:5
  The key "X" stands in line 4 already, and that one counts.
  Delete the one that is not meant.
warning syntax.duplicate-key ~/twice.ini:6
  The key "x" stands in line 4 already, and that one counts.
  Delete the one that is not meant.
0 errors, 4 warnings, 0 notes.
$ odbcadmin lint dos.ini twice.ini letter.ini
warning syntax.carriage-return ~/dos.ini
  3 of 3 lines end with a carriage return; here it counts as part of the line end, elsewhere as part of the value.
  Save the file with Unix line ends.
warning syntax.duplicate-section ~/twice.ini:2
  The section "A" begins in line 1 already; here the two count as one, elsewhere one may hide the other.
  Put the keys together under one header.
warning syntax.duplicate-section ~/twice.ini:3
  The section "a" begins in line 1 already; here the two count as one, elsewhere one may hide the other.
  Put the keys together under one header.
warning syntax.duplicate-key ~/twice.ini:5
  The key "X" stands in line 4 already, and that one counts.
  Delete the one that is not meant.
warning syntax.duplicate-key ~/twice.ini:6
  The key "x" stands in line 4 already, and that one counts.
  Delete the one that is not meant.
error syntax.key-before-section ~/letter.ini:1
  The key "just text" stands before any section, so it belongs to none.
  Move it below the header of its section.
error syntax.key-before-section ~/letter.ini:2
  The key "of a letter" stands before any section, so it belongs to none.
  Move it below the header of its section.
2 errors, 5 warnings, 0 notes.
[10]
)sh";

TEST_F(ExaminedLines, LinesThatMeanSomethingElse) {
    EXPECT_EQ(played(home_, kLinesThatMeanSomethingElse), kLinesThatMeanSomethingElse);
}

}  // namespace
}  // namespace jx::test
