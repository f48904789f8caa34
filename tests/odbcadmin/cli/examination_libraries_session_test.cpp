// driver check, doctor and dsn test: files that are not libraries, and drivers that data sources name wrongly.
#include "admin_test.h"
#include "transcript.h"

namespace jx::test {
namespace {

class ExaminedLibraries : public AdminTest {};

constexpr const char* kLibrariesThatAreNone =
    R"sh($ odbcadmin driver check ~/absent.so
error library.missing ~/absent.so
  There is no ~/absent.so; its directory is there.
  Install the library there, or correct the path.
1 error, 0 warnings, 0 notes.
[10]
$ mkdir -p lib folder.so
$ odbcadmin driver check lib/absent.so
error library.missing lib/absent.so
  There is no lib/absent.so; its directory is there.
  Install the library there, or correct the path.
1 error, 0 warnings, 0 notes.
[10]
$ printf 'not a library\n' >text.so
$ odbcadmin driver check ./text.so
error library.text ./text.so
  ./text.so is a text file.
  Give the path of the library itself.
note library.loader-says ./text.so
  The loader says: ./text.so: file too short
  Programs show this sentence; the cause is above.
1 error, 0 warnings, 1 note.
[10]
$ : >empty.so
$ odbcadmin driver check ./empty.so
error library.empty ./empty.so
  ./empty.so is empty.
  Install it again.
note library.loader-says ./empty.so
  The loader says: ./empty.so: file too short
  Programs show this sentence; the cause is above.
1 error, 0 warnings, 1 note.
[10]
$ ln -s gone.so dangling.so
$ odbcadmin driver check ./dangling.so
error library.dangling-link ./dangling.so
  ./dangling.so is a symbolic link to gone.so, which is not there.
  Make the link anew to the library that is installed, or install what it points to.
1 error, 0 warnings, 0 notes.
[10]
$ ln -s loop.so loop.so
$ odbcadmin driver check ./loop.so
error library.dangling-link ./loop.so
  ./loop.so is a symbolic link to loop.so, which leads back to itself.
  Make the link anew to the library that is installed, or install what it points to.
1 error, 0 warnings, 0 notes.
[10]
$ printf '!<arch>\n' >archive.so
$ odbcadmin driver check ./archive.so
error library.archive ./archive.so
  ./archive.so is a static archive; only linkers can use it.
  Give the path of the shared library (.so) of the same product.
note library.loader-says ./archive.so
  The loader says: ./archive.so: file too short
  Programs show this sentence; the cause is above.
1 error, 0 warnings, 1 note.
[10]
$ printf 'INPUT(libreal.so)\n' >script.so
$ odbcadmin driver check ./script.so
error library.linker-script ./script.so
  ./script.so is a linker script, which stands in for a library while programs are built.
  Give the path of the library it stands for: libreal.so.
note library.loader-says ./script.so
  The loader says: ./script.so: file too short
  Programs show this sentence; the cause is above.
1 error, 0 warnings, 1 note.
[10]
$ printf '#!/bin/sh\n' >shell.so
$ odbcadmin driver check ./shell.so
error library.text ./shell.so
  ./shell.so is a text file.
  Give the path of the library itself.
note library.loader-says ./shell.so
  The loader says: ./shell.so: file too short
  Programs show this sentence; the cause is above.
1 error, 0 warnings, 1 note.
[10]
$ printf '\177ELF' >short.so
$ odbcadmin driver check ./short.so
error library.cut-short ./short.so
  ./short.so ends before what its header announces.
  It was copied or downloaded in part: install it again.
1 error, 0 warnings, 0 notes.
[10]
$ odbcadmin -q driver check ./text.so
error library.text ./text.so
note library.loader-says ./text.so
[10]
$ odbcadmin --json driver check ./text.so
{
  "schema": "odbcadmin/1",
  "checked": [
    "./text.so"
  ],
  "findings": [
    {
      "id": "library.text",
      "severity": "error",
      "subject": "./text.so",
      "fact": "./text.so is a text file.",
      "advice": "Give the path of the library itself."
    },
    {
      "id": "library.loader-says",
      "severity": "note",
      "subject": "./text.so",
      "fact": "The loader says: ./text.so: file too short",
      "advice": "Programs show this sentence; the cause is above."
    }
  ]
}
[10]
$ odbcadmin driver check ./text.so ./empty.so
error library.text ./text.so
  ./text.so is a text file.
  Give the path of the library itself.
note library.loader-says ./text.so
  The loader says: ./text.so: file too short
  Programs show this sentence; the cause is above.
error library.empty ./empty.so
  ./empty.so is empty.
  Install it again.
note library.loader-says ./empty.so
  The loader says: ./empty.so: file too short
  Programs show this sentence; the cause is above.
2 errors, 0 warnings, 2 notes.
[10]
$ odbcadmin driver check
error library.missing driver Plain
  There is no /opt/libplain.so; its directory is there.
  Install the library there, or correct the path.
1 error, 0 warnings, 0 notes.
[10]
$ odbcadmin driver check Plain
error library.missing driver Plain
  There is no /opt/libplain.so; its directory is there.
  Install the library there, or correct the path.
1 error, 0 warnings, 0 notes.
[10]
$ odbcadmin driver check Plaim
! odbcadmin: There is no driver Plaim in ~/.odbcinst.ini
!   Did you mean Plain?
[3]
)sh";

TEST_F(ExaminedLibraries, LibrariesThatAreNone) {
    EXPECT_EQ(played(home_, kLibrariesThatAreNone), kLibrariesThatAreNone);
}

constexpr const char* kDriversOfDataSources =
    R"sh($ chmod 600 .odbc.ini
$ odbcadmin doctor Sales
note names.no-setup-key driver Plain
  ~/.odbcinst.ini:4: the section has no value for Setup, so programs cannot add or change its data sources.
  Name its setup library; if it brings none: odbcadmin driver ensure Plain --lib /opt/libplain.so --setup libjxsetup.so
error library.missing driver Plain
  There is no /opt/libplain.so; its directory is there.
  Install the library there, or correct the path.
1 error, 0 warnings, 1 note.
[10]
$ odbcadmin -q doctor Sales
note names.no-setup-key driver Plain
error library.missing driver Plain
[10]
$ odbcadmin doctor sales Accounts
note names.no-setup-key driver Plain
  ~/.odbcinst.ini:4: the section has no value for Setup, so programs cannot add or change its data sources.
  Name its setup library; if it brings none: odbcadmin driver ensure Plain --lib /opt/libplain.so --setup libjxsetup.so
error library.missing driver Plain
  There is no /opt/libplain.so; its directory is there.
  Install the library there, or correct the path.
1 error, 0 warnings, 1 note.
[10]
$ odbcadmin doctor Nowhere
! odbcadmin: There is no data source or driver Nowhere in ~/.odbc.ini and ~/.odbcinst.ini
!   See odbcadmin dsn list and odbcadmin driver list.
[3]
$ sed -i 's#^Driver="/opt/libplain.so"#Driver=~/libplain.so#' .odbc.ini
$ odbcadmin doctor Sales
note names.no-setup-key driver Plain
  ~/.odbcinst.ini:4: the section has no value for Setup, so programs cannot add or change its data sources.
  Name its setup library; if it brings none: odbcadmin driver ensure Plain --lib /opt/libplain.so --setup libjxsetup.so
error library.missing driver Plain
  There is no /opt/libplain.so; its directory is there.
  Install the library there, or correct the path.
1 error, 0 warnings, 1 note.
[10]
$ sed -i 's#^Driver=~/libplain.so#Driver=Plain#' .odbc.ini
$ odbcadmin doctor Sales
note names.no-setup-key driver Plain
  ~/.odbcinst.ini:4: the section has no value for Setup, so programs cannot add or change its data sources.
  Name its setup library; if it brings none: odbcadmin driver ensure Plain --lib /opt/libplain.so --setup libjxsetup.so
error library.missing driver Plain
  There is no /opt/libplain.so; its directory is there.
  Install the library there, or correct the path.
1 error, 0 warnings, 1 note.
[10]
$ sed -i 's#^Driver=Plain#Driver=#' .odbc.ini
$ odbcadmin doctor Sales
note names.no-setup-key driver Plain
  ~/.odbcinst.ini:4: the section has no value for Setup, so programs cannot add or change its data sources.
  Name its setup library; if it brings none: odbcadmin driver ensure Plain --lib /opt/libplain.so --setup libjxsetup.so
error library.missing driver Plain
  There is no /opt/libplain.so; its directory is there.
  Install the library there, or correct the path.
1 error, 0 warnings, 1 note.
[10]
)sh";

TEST_F(ExaminedLibraries, DriversOfDataSources) {
    EXPECT_EQ(played(home_, kDriversOfDataSources), kDriversOfDataSources);
}

constexpr const char* kTestsThatCannotConnect =
    R"sh($ odbcadmin dsn test Sales
! odbcadmin: Cannot connect to Sales: the loader says: /opt/libplain.so: cannot open shared object file: No such file or directory
!   See odbcadmin doctor Sales
[11]
$ odbcadmin dsn test Nowhere
! odbcadmin: There is no data source Nowhere in ~/.odbc.ini
!   See odbcadmin dsn list.
[3]
$ odbcadmin dsn test sale
! odbcadmin: There is no data source sale in ~/.odbc.ini
!   Did you mean Sales?
[3]
$ odbcadmin dsn test
! odbcadmin: NAME is required
!   See odbcadmin dsn test --help
[2]
$ odbcadmin --json dsn test Sales
{
  "schema": "odbcadmin/1",
  "name": "Sales",
  "lib": "/opt/libplain.so",
  "connected": false,
  "result": "the loader says: /opt/libplain.so: cannot open shared object file: No such file or directory",
  "user": "",
  "driver": "",
  "database": "",
  "diagnostics": []
}
[11]
$ printf 'text\n' >text.so
$ odbcadmin driver ensure Text --lib "$PWD/text.so" --no-setup
Added driver Text
! odbcadmin: the library ~/text.so cannot be used; odbcadmin driver check tells why
$ odbcadmin dsn add T --driver Text
Added data source T
! odbcadmin: written directly: Text has no setup library
$ odbcadmin dsn test T
! odbcadmin: Cannot connect to T: the loader says: ~/text.so: file too short
!   See odbcadmin doctor T
[11]
$ odbcadmin dsn test T --timeout 0
! odbcadmin: --timeout is not a number of seconds: 0
!   Try --timeout 5
[2]
$ odbcadmin dsn test T --timeout x
! odbcadmin: --timeout is not a number of seconds: x
!   Try --timeout 5
[2]
$ printf '[ODBC Data Sources]\nU=Nobody\n[U]\nServer=a\n' >.odbc.ini
$ odbcadmin dsn test U
! odbcadmin: The data source U leads to no library
!   See odbcadmin explain U
[11]
)sh";

TEST_F(ExaminedLibraries, TestsThatCannotConnect) {
    EXPECT_EQ(played(home_, kTestsThatCannotConnect), kTestsThatCannotConnect);
}

}  // namespace
}  // namespace jx::test
