/* A program without dialog starters of its own: the library's do nothing, and calls that would show a dialog go on. */
#include <odbcinst.h>

#include "host.h"

int host_failures;

int main(void) {
    CHECK(jxDllDialog(1, 102, DataSourcesDlgProc, NULL) == 0);
    CHECK(jxDllDialogReturnId(1, 102, DataSourcesDlgProc, NULL) == 0);
    CHECK(SQLManageDataSources(1) == 0);
    CHECK(SQLCreateDataSource(1, "Sales") == FALSE);
    return host_failures == 0 ? 0 : 1;
}
