// explain and lint: the way to a library, and the mistakes in a file.
#include "admin_test.h"
#include "transcript.h"

namespace jx::test {
namespace {

class ExaminationSession : public AdminTest {};

constexpr const char* kExplaining =
    R"sh($ odbcadmin explain Sales
data source Sales
  ok      listed   for the driver Plain  ~/.odbc.ini:3
  ok      section  [Sales]               ~/.odbc.ini:7
  ok      Driver   /opt/libplain.so      ~/.odbc.ini:8
driver Plain
  ok      listed   Installed         ~/.odbcinst.ini:2
  ok      section  [Plain]           ~/.odbcinst.ini:4
  ok      Driver   /opt/libplain.so  ~/.odbcinst.ini:5
/opt/libplain.so
  broken  library  missing
          See odbcadmin driver check /opt/libplain.so
$ odbcadmin explain sales
data source Sales
  ok      listed   for the driver Plain  ~/.odbc.ini:3
  ok      section  [Sales]               ~/.odbc.ini:7
  ok      Driver   /opt/libplain.so      ~/.odbc.ini:8
driver Plain
  ok      listed   Installed         ~/.odbcinst.ini:2
  ok      section  [Plain]           ~/.odbcinst.ini:4
  ok      Driver   /opt/libplain.so  ~/.odbcinst.ini:5
/opt/libplain.so
  broken  library  missing
          See odbcadmin driver check /opt/libplain.so
$ odbcadmin explain Plain
driver Plain
  ok      listed   Installed         ~/.odbcinst.ini:2
  ok      section  [Plain]           ~/.odbcinst.ini:4
  ok      Driver   /opt/libplain.so  ~/.odbcinst.ini:5
/opt/libplain.so
  broken  library  missing
          See odbcadmin driver check /opt/libplain.so
$ odbcadmin explain Sale
! odbcadmin: There is no data source or driver Sale in ~/.odbc.ini and ~/.odbcinst.ini
!   Did you mean Sales?
[3]
$ odbcadmin explain Nothing
! odbcadmin: There is no data source or driver Nothing in ~/.odbc.ini and ~/.odbcinst.ini
!   See odbcadmin dsn list and odbcadmin driver list.
[3]
$ odbcadmin explain
! odbcadmin: NAME is required
!   See odbcadmin explain --help
[2]
$ sed -i 's/^Accounts=Plain/Accounts=Plainn/' .odbc.ini
$ odbcadmin explain Accounts
data source Accounts
  ok      listed   for the driver Plainn  ~/.odbc.ini:4
  ok      section  [Accounts]             ~/.odbc.ini:12
  ok      Driver   /opt/libplain.so       ~/.odbc.ini:13
driver Plainn
  broken  section  no driver of that name  ~/.odbcinst.ini
          Did you mean Plain?
/opt/libplain.so
  broken  library  missing
          See odbcadmin driver check /opt/libplain.so
$ printf '[ODBC Data Sources]\nA=B\n' >.odbc.ini
$ odbcadmin explain A
data source A
  ok      listed   for the driver B  ~/.odbc.ini:2
  broken  section  no section [A]    ~/.odbc.ini
          Add the section, or remove the name from the list.
driver B
  broken  section  no driver of that name  ~/.odbcinst.ini
          Add it: odbcadmin driver add B --lib PATH
$ printf '[A]\nx=1\n' >.odbc.ini
$ odbcadmin explain A
data source A
  broken  listed  not in [ODBC Data Sources]  ~/.odbc.ini
          List it: odbcadmin dsn ensure A --driver DRIVER
  ok      section  [A]       ~/.odbc.ini:1
  broken  Driver   no value  ~/.odbc.ini
          Enter the full path of the driver's library.
$ rm .odbc.ini .odbcinst.ini
$ odbcadmin explain A
! odbcadmin: There is no data source or driver A in ~/.odbc.ini and ~/.odbcinst.ini
!   See odbcadmin dsn list and odbcadmin driver list.
[3]
)sh";

TEST_F(ExaminationSession, Explaining) {
    EXPECT_EQ(played(home_, kExplaining), kExplaining);
}

constexpr const char* kLinting =
    R"sh($ chmod 600 .odbc.ini
$ odbcadmin lint
note names.no-setup-key driver Plain
  ~/.odbcinst.ini:4: the section has no value for Setup, so programs cannot add or change its data sources.
  Name its setup library; if it brings none: odbcadmin driver ensure Plain --lib /opt/libplain.so --setup libjxsetup.so
0 errors, 0 warnings, 1 note.
$ odbcadmin -q lint
note names.no-setup-key driver Plain
$ printf '[A\nkey\n=v\n[A]\nx=1\nx=2\n[a]\n' >bad.ini
$ odbcadmin lint bad.ini
error syntax.unclosed-bracket ~/bad.ini:1
  The header "[A" is never closed: the keys below it belong to the section above it.
  Add the "]".
warning syntax.no-equals ~/bad.ini:2
  The line "key" has no "=": it is a key with an empty value.
  Add the "=" and the value, or begin the line with ";" if it is a comment.
error syntax.no-key ~/bad.ini:3
  There is no key before the "=": the line means nothing.
  Name the key, or delete the line.
warning syntax.duplicate-key ~/bad.ini:6
  The key "x" stands in line 5 already, and that one counts.
  Delete the one that is not meant.
warning syntax.duplicate-section ~/bad.ini:7
  The section "a" begins in line 4 already; here the two count as one, elsewhere one may hide the other.
  Put the keys together under one header.
2 errors, 3 warnings, 0 notes.
[10]
$ odbcadmin --json lint bad.ini | head -n 14
{
  "schema": "odbcadmin/1",
  "findings": [
    {
      "id": "syntax.unclosed-bracket",
      "severity": "error",
      "subject": "~/bad.ini:1",
      "fact": "The header \"[A\" is never closed: the keys below it belong to the section above it.",
      "advice": "Add the \"]\"."
    },
    {
      "id": "syntax.no-equals",
      "severity": "warning",
      "subject": "~/bad.ini:2",
$ odbcadmin lint absent.ini
! odbcadmin: There is no file ~/absent.ini
!   Give files that exist.
[7]
$ printf 'key=1\n\0\n' >nul.ini
$ odbcadmin lint nul.ini
error syntax.key-before-section ~/nul.ini:1
  The key "key" stands before any section, so it belongs to none.
  Move it below the header of its section.
error syntax.nul ~/nul.ini:2
  There is a NUL byte in the line: a name that holds one is never found, and a value ends there.
  Delete it; if there is one behind each letter, save the file as UTF-8.
error syntax.key-before-section ~/nul.ini:2
  The key "?" stands before any section, so it belongs to none.
  Move it below the header of its section.
3 errors, 0 warnings, 0 notes.
[10]
$ printf '\357\273\277[A]\r\nx=1\r\n' >windows.ini
$ odbcadmin lint windows.ini
warning syntax.byte-order-mark ~/windows.ini:1
  The file begins with a byte order mark; here it is passed over, elsewhere it hides the first section.
  Save the file as UTF-8 without it.
warning syntax.carriage-return ~/windows.ini
  2 of 2 lines end with a carriage return; here it counts as part of the line end, elsewhere as part of the value.
  Save the file with Unix line ends.
0 errors, 2 warnings, 0 notes.
)sh";

TEST_F(ExaminationSession, Linting) {
    EXPECT_EQ(played(home_, kLinting), kLinting);
}

}  // namespace
}  // namespace jx::test
