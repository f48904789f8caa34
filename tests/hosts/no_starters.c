/* A program that does not define the dialog starters: the library's do nothing, even on a thread that has a screen, and
 * calls that would show a dialog go on without it. */
#include <jxscreen.h>
#include <odbcinst.h>
#include <string.h>

#include "host.h"

int host_failures;

static int seen;

static void note_opened(void* context, HWND dialog) {
    (void)context;
    (void)dialog;
    ++seen;
}

static int wait_for_nobody(void* context, HWND dialog) {
    note_opened(context, dialog);
    return 0;
}

int main(void) {
    JxwScreen screen;
    char name[16] = "";
    memset(&screen, 0, sizeof screen);
    screen.opened = note_opened;
    screen.wait = wait_for_nobody;
    CHECK(JXW_SetScreen(&screen) == 1);

    CHECK(jxDllDialog(1, 102, DataSourcesDlgProc, NULL) == 0);
    CHECK(jxDllDialogReturnId(1, 102, DataSourcesDlgProc, NULL) == 0);
    CHECK(SQLManageDataSources(1) == 0);
    CHECK(SQLCreateDataSource(1, "Sales") == FALSE);
    CHECK(SQLGetTranslator(0, name, sizeof name, NULL, NULL, 0, NULL, NULL) == FALSE);
    CHECK(SQLInstallODBC(1, "/nonexistent/odbc.inf", NULL, NULL) == FALSE);
    CHECK(seen == 0 && JXW_NextDialog(0) == 0);
    return host_failures == 0 ? 0 : 1;
}
