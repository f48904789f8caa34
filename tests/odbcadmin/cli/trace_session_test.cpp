// trace: switched on and off, and what programs then read.
#include "admin_test.h"
#include "transcript.h"

namespace jx::test {
namespace {

class TraceSession : public AdminTest {};

constexpr const char* kTracing =
    R"sh($ odbcadmin trace status
Tracing is off, file sql.log
$ odbcadmin --json trace status
{
  "schema": "odbcadmin/1",
  "trace": false,
  "autoStop": false,
  "file": "sql.log",
  "bytes": null
}
$ odbcadmin trace on
! odbcadmin: FILE is required
!   See odbcadmin trace on --help
[2]
$ odbcadmin trace on relative.log
Tracing to ~/relative.log
$ odbcadmin trace on /opt/none/odbc.log --dry-run
--- ~/.odbc.ini
+++ ~/.odbc.ini
@@ -14,4 +14,4 @@
 
 [ODBC]
 Trace=1
-TraceFile=~/relative.log
+TraceFile=/opt/none/odbc.log
$ odbcadmin trace on /opt/none/odbc.log --check
would change: ~/.odbc.ini
[9]
$ odbcadmin trace on /opt/none/odbc.log
Tracing to /opt/none/odbc.log
$ odbcadmin trace on /opt/none/odbc.log
unchanged: nothing to do
$ odbcadmin trace status
Tracing is on, file /opt/none/odbc.log
$ odbcadmin --json trace status
{
  "schema": "odbcadmin/1",
  "trace": true,
  "autoStop": false,
  "file": "/opt/none/odbc.log",
  "bytes": null
}
$ grep -A 3 '^.ODBC.$' .odbc.ini
[ODBC]
Trace=1
TraceFile=/opt/none/odbc.log
$ odbcadmin -q trace on /opt/none/other.log
$ odbcadmin -q trace status
Tracing is on, file /opt/none/other.log
$ odbcadmin trace off
Tracing is off
$ odbcadmin trace off
unchanged: nothing to do
$ odbcadmin trace off --check
unchanged: nothing to do
$ odbcadmin trace status
Tracing is off, file /opt/none/other.log
$ odbcadmin trace perhaps
! odbcadmin: odbcadmin trace has no command perhaps
!   See odbcadmin trace --help
[2]
$ odbcadmin trace
! odbcadmin: odbcadmin trace needs one of status, on, off
!   See odbcadmin trace --help
[2]
$ odbcadmin --home absent trace on /opt/none/odbc.log
! odbcadmin: Cannot use ~/absent as home: No such file or directory
!   Give --home a directory that exists.
[7]
)sh";

TEST_F(TraceSession, Tracing) {
    EXPECT_EQ(played(home_, kTracing), kTracing);
}

}  // namespace
}  // namespace jx::test
