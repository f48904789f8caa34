/* The dialog layer and the dialog procedures, called from C: a dialog is made from a small template, driven without a
 * screen and with one, and destroyed. */
#include <jxdialog.h>
#include <jxscreen.h>
#include <jxwindow.h>
#include <odbcinst.h>
#include <string.h>

#include "host.h"

enum { NAME = 201, TRACE = 202, ALWAYS = 203, NEVER = 204, NAMES = 205 };

static const JxwControl controls[] = {{JXW_LABEL, 0, 6, 8, 50, 8, "&Name:", 0},
                                      {JXW_EDIT, NAME, 60, 6, 120, 12, "", 0},
                                      {JXW_CHECKBOX, TRACE, 6, 20, 80, 8, "&Trace", 0},
                                      {JXW_RADIO, ALWAYS, 6, 30, 80, 8, "&Always", 0},
                                      {JXW_RADIO, NEVER, 6, 40, 80, 8, "Ne&ver", 0},
                                      {JXW_LISTBOX, NAMES, 6, 50, 80, 40, NULL, 0},
                                      {JXW_BUTTON, IDOK, 60, 100, 50, 14, "OK", JXW_DEFAULT},
                                      {JXW_NO_CONTROL, 0, 0, 0, 0, 0, NULL, 0}};
static const JxwTemplate templates[] = {{200, "Sample", 200, 120, controls}, {0, NULL, 0, 0, NULL}};

static int selections, double_clicks, posted;

static unsigned int sample_procedure(HWND dialog, int message, int wparam, uintptr_t lparam) {
    const int notification = (int)((lparam >> 16) & 0xFFFF);
    if (message == WM_INITDIALOG)
        return JXW_SetProp(dialog, "Record", lparam) == 1 && winCenterBox(dialog) == 1;
    if (message == WM_USER)
        ++posted;
    else if (message == WM_COMMAND && wparam == NAMES)
        notification == LBN_DBLCLK ? ++double_clicks : ++selections;
    else if (message == WM_COMMAND && wparam == IDOK)
        return (unsigned int)JXW_EndDialog(dialog, 42);
    return 0;
}

static void use_controls(HWND dialog) {
    char text[16];
    CHECK(JXW_SetWindowText(dialog, "Other") == 1);
    CHECK(JXW_SetDlgItemText(dialog, NAME, "Sales") == 1);
    CHECK(JXW_GetDlgItemText(dialog, NAME, text, sizeof text) == 5 && strcmp(text, "Sales") == 0);
    CHECK(JXW_CheckDlgButton(dialog, TRACE, 1) == 1 && JXW_IsDlgButtonChecked(dialog, TRACE) == 1);
    CHECK(JXW_CheckRadioButton(dialog, 0, 0, ALWAYS) == 1 && JXW_IsDlgButtonChecked(dialog, NEVER) == 0);
    CHECK(JXW_SendDlgItemMessage(dialog, NAMES, LB_ADDSTRING, 0, (uintptr_t) "First") == 0);
    CHECK(JXW_SendMessage(JXW_GetDlgItem(dialog, NAMES), LB_ADDSTRING, 0, (uintptr_t) "Second") == 1);
    CHECK(JXW_EnableWindow(JXW_GetDlgItem(dialog, NAME), 0) == 1);
    CHECK(JXW_IsWindowEnabled(JXW_GetDlgItem(dialog, NAME)) == 0);
    CHECK(JXW_EnableWindow(JXW_GetDlgItem(dialog, NAME), 1) == 1);
    CHECK(JXW_SetFocus(JXW_GetDlgItem(dialog, NAMES)) != 0 && JXW_GetFocus() == JXW_GetDlgItem(dialog, NAMES));
    CHECK(JXW_PostMessage(dialog, WM_USER, 0, 0) == 1 && posted == 0);
    CHECK(JXW_DispatchMessages(dialog) == 1 && posted == 1);
}

static void use_as_a_user(HWND dialog) {
    CHECK(JXW_UserEdit(dialog, NAME, "Orders") == 1);
    CHECK(JXW_UserCheck(dialog, NEVER) == 1 && JXW_IsDlgButtonChecked(dialog, ALWAYS) == 0);
    CHECK(JXW_UserSelect(dialog, NAMES, 1) == 1 && selections == 1);
    CHECK(JXW_UserDoubleClick(dialog, NAMES, 1) == 1 && double_clicks == 1);
    CHECK(JXW_UserAccessKey(dialog, 't') == 1 && JXW_IsDlgButtonChecked(dialog, TRACE) == 0);
    CHECK(JXW_UserFocus(dialog, NAME) == 1 && JXW_UserKey(dialog, JXW_KEY_NEXT) == 1);
    CHECK(JXW_UserCommand(dialog, NAME) == 0); /* not a button */
}

static void see(HWND dialog) {
    JxwDialogInfo whole;
    JxwControlInfo list;
    CHECK(JXW_NextDialog(0) == dialog && JXW_NextDialog(dialog) == 0);
    CHECK(JXW_GetDialogInfo(dialog, &whole) == 1 && strcmp(whole.title, "Other") == 0 && whole.controlCount == 7);
    CHECK(whole.centered == 1 && whole.ended == 0);
    CHECK(JXW_GetControlInfo(dialog, 5, &list) == 1 && list.id == NAMES && list.rowCount == 2 && list.selection == 1);
    CHECK(strcmp(JXW_GetRow(dialog, 5, 1), "Second") == 0 && JXW_GetRow(dialog, 5, 2) == NULL);
}

static int press_ok(void* context, HWND dialog) {
    ++*(int*)context;
    return JXW_UserCommand(dialog, IDOK);
}

static void use_a_screen(void) {
    JxwScreen screen;
    int waits = 0;
    CHECK(JXW_DialogBox("windows", 200, 0, sample_procedure, NULL) == -1);
    memset(&screen, 0, sizeof screen);
    screen.context = &waits;
    screen.wait = press_ok;
    CHECK(JXW_SetScreen(&screen) == 1);
    CHECK(JXW_DialogBox("windows", 200, 0, sample_procedure, NULL) == 42 && waits == 1);
    CHECK(JXW_SetScreen(NULL) == 1);
}

/* On an unknown window they do nothing; About needs only its eight texts. */
static void use_procedures(void) {
    const JxwProcedure procedures[] = {
        DataSourcesDlgProc,      AddDataSourceDlgProc, OdbcDriversDlgProc,    OdbcOptionsDlgProc,
        SelectTranslatorDlgProc, AddDriverDlgProc,     InstallDriversDlgProc, AdvancedInstallationOptionsDlgProc,
        VersionsDlgProc,         AboutDlgProc};
    char* texts[8] = {NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL};
    const HWND about = JXW_CreateDialog("odbcinst", 145, 0, AboutDlgProc, texts);
    size_t i;
    for (i = 0; i < sizeof procedures / sizeof *procedures; ++i)
        CHECK(procedures[i](0, WM_COMMAND, IDCANCEL, 0) == 0);
    CHECK(about != 0 && JXW_UserCommand(about, IDOK) == 1 && JXW_IsDialogEnded(about, NULL) == 1);
    CHECK(JXW_DestroyDialog(about) == 1);
}

void use_windows(void) {
    int record = 0, result = 0;
    HWND dialog;
    CHECK(JXW_RegisterModule("windows", NULL, templates) == 1);
    dialog = JXW_CreateDialog("windows", 200, 0, sample_procedure, &record);
    CHECK(dialog != 0 && JXW_IsWindow(dialog) == 1 && JXW_GetProp(dialog, "Record") == (uintptr_t)&record);
    use_controls(dialog);
    use_as_a_user(dialog);
    see(dialog);
    CHECK(JXW_IsDialogEnded(dialog, &result) == 0);
    CHECK(JXW_UserKey(dialog, JXW_KEY_ENTER) == 1 && JXW_IsDialogEnded(dialog, &result) == 1 && result == 42);
    CHECK(JXW_DestroyDialog(dialog) == 1 && JXW_IsWindow(dialog) == 0);
    use_a_screen();
    use_procedures();
}
