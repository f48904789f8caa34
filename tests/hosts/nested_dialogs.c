/* A program that shows dialogs on its own screen. It defines the two starters, so dialogs that the library's dialogs
 * start appear too, each in front of the one that started it. */
#define _POSIX_C_SOURCE 200809L
#include <jxscreen.h>
#include <jxwindow.h>
#include <odbcinst.h>
#include <stdlib.h>
#include <string.h>

#include "host.h"

int host_failures;

JX_EXPORT int32_t jxDllDialog(HWND owner, unsigned short template_id, JxDialogProcedure procedure, void* record) {
    return JXW_DialogBox(BJXHINST, template_id, owner, procedure, record);
}

JX_EXPORT int32_t jxDllDialogReturnId(HWND owner, unsigned short template_id, JxDialogProcedure procedure,
                                      void* record) {
    return jxDllDialog(owner, template_id, procedure, record);
}

/* The dialog that must be in front, and the button pressed there. */
static const struct {
    const char* title;
    unsigned short button;
} steps[] = {
    {"Data Sources", 108}, {"ODBC Drivers", 119},         {"Add Driver", IDCANCEL},
    {"ODBC Drivers", 104}, {"Data Sources", 109},         {"Options", IDCANCEL},
    {"Data Sources", 107}, {"Add Data Source", IDCANCEL}, {"Data Sources", 104},
};

static size_t step;
static int open_dialogs, most_open;

static void note_opened(void* context, HWND dialog) {
    (void)context;
    (void)dialog;
    if (++open_dialogs > most_open)
        most_open = open_dialogs;
}

static void note_closed(void* context, HWND dialog) {
    (void)context;
    (void)dialog;
    --open_dialogs;
}

/* Every dialog behind the one in front is disabled. */
static void check_order(HWND front) {
    HWND dialog = 0;
    while ((dialog = JXW_NextDialog(dialog)) != 0)
        CHECK(JXW_IsWindowEnabled(dialog) == (dialog == front));
}

static int take_step(void* context, HWND dialog) {
    JxwDialogInfo info;
    (void)context;
    if (step == sizeof steps / sizeof *steps)
        return 0;
    CHECK(JXW_GetDialogInfo(dialog, &info) == 1 && strcmp(info.title, steps[step].title) == 0);
    check_order(dialog);
    return JXW_UserCommand(dialog, steps[step++].button);
}

int main(void) {
    JxwScreen screen;
    memset(&screen, 0, sizeof screen);
    screen.opened = note_opened;
    screen.closed = note_closed;
    screen.wait = take_step;
    setenv("HOME", "/nonexistent", 1);
    unsetenv("ODBCINI");
    unsetenv("ODBCINSTINI");

    CHECK(JXW_SetScreen(&screen) == 1);
    CHECK(SQLManageDataSources(0) == 1);
    CHECK(step == sizeof steps / sizeof *steps);
    CHECK(most_open == 3 && open_dialogs == 0 && JXW_NextDialog(0) == 0);
    CHECK(JXW_SetScreen(NULL) == 1);
    return host_failures == 0 ? 0 : 1;
}
