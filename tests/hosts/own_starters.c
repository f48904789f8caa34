/* A program that defines the two dialog starters itself: the library must start every dialog through them. */
#define _POSIX_C_SOURCE 200809L
#include <jxdialog.h>
#include <odbcinst.h>
#include <stdlib.h>
#include <string.h>

#include "host.h"

int host_failures;

static unsigned short received_template;
static JxDialogProcedure received_procedure;
static HWND received_owner;
static int calls, records, names;

JX_EXPORT int32_t jxDllDialog(HWND owner, unsigned short template_id, JxDialogProcedure procedure, void* record) {
    received_owner = owner;
    received_template = template_id;
    received_procedure = procedure;
    ++calls;
    if (record != NULL)
        ++records;
    /* The record of the translator dialog begins with the buffer that holds the first choice. */
    if (record != NULL && template_id == 143 && strcmp(*(char**)record, "Sample") == 0)
        ++names;
    return 42;
}

JX_EXPORT int32_t jxDllDialogReturnId(HWND owner, unsigned short template_id, JxDialogProcedure procedure,
                                      void* record) {
    return jxDllDialog(owner, template_id, procedure, record) + 1;
}

/* Called for the translator that is not installed. */
static unsigned int close_box(void* context, HWND owner, const char* text, const char* title, unsigned int style) {
    (void)context;
    (void)owner;
    (void)text;
    (void)title;
    (void)style;
    return IDOK;
}

int main(void) {
    char name[32] = "Sample";
    setenv("HOME", "/nonexistent", 1);
    JXW_SetMessageBoxHandler(close_box, NULL);

    CHECK(SQLManageDataSources(3) == 42);
    CHECK(calls == 1 && records == 1 && received_owner == 3 && received_template == 102);
    CHECK(received_procedure == DataSourcesDlgProc);

    CHECK(SQLCreateDataSource(4, NULL) == FALSE);
    CHECK(calls == 2 && records == 2 && received_owner == 4 && received_template == 100);
    CHECK(received_procedure == AddDataSourceDlgProc);

    SQLGetTranslator(5, name, sizeof name, NULL, NULL, 0, NULL, NULL);
    CHECK(calls == 3 && records == 3 && received_owner == 5 && received_template == 143);
    CHECK(received_procedure == SelectTranslatorDlgProc && names == 1);

    CHECK(SQLInstallODBC(6, "/nonexistent/odbc.inf", NULL, NULL) == FALSE);
    CHECK(calls == 4 && records == 4 && received_owner == 6 && received_template == 129);
    CHECK(received_procedure == InstallDriversDlgProc);
    return host_failures == 0 ? 0 : 1;
}
