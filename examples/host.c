/* A host for a beginner: shows the library's dialogs as text and lets the user work with them by lines of text.
 *
 *     cc -o host host.c $(pkg-config --cflags --libs jxodbc-odbcinst) -rdynamic
 *     printf 'press 109\ncheck 111\npress 1\npress 104\n' | ./host
 *
 * A line is one action in the dialog in front, on the control of that id: "press BUTTON", "check BOX", "select LIST
 * ROW", "double LIST ROW" for a double click, "type FIELD TEXT". A question is answered with "yes" or "no". When the
 * lines end, the open dialogs are closed. */
#include <jxscreen.h>
#include <jxwindow.h>
#include <odbcinst.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { kLineSize = 1024 };

/* The library starts each dialog through jxDllDialog. Its own does nothing; that of a program which exports one (link
 * with -rdynamic) is called in its place, also for the dialogs that dialogs start. */
JX_EXPORT int32_t jxDllDialog(HWND owner, unsigned short id, JxDialogProcedure procedure, void* record) {
    return JXW_DialogBox(BJXHINST, id, owner, procedure, record);
}

JX_EXPORT int32_t jxDllDialogReturnId(HWND owner, unsigned short id, JxDialogProcedure procedure, void* record) {
    return jxDllDialog(owner, id, procedure, record);
}

/* Prints a text of a dialog. Names come from files that others write: what would steer the terminal becomes "?". */
static void print(const char* text) {
    for (; *text != '\0'; ++text)
        putchar(*text == '\n' || ((unsigned char)*text >= ' ' && *text != 127) ? *text : '?');
}

static void print_control(HWND dialog, int index) {
    static const char* const kinds[] = {"", "label", "edit", "button", "check", "radio", "list", "group"};
    JxwControlInfo control;
    int row;
    if (!JXW_GetControlInfo(dialog, index, &control))
        return;
    printf("  %-6s %3u ", kinds[control.kind], (unsigned)control.id);
    if (control.kind == JXW_CHECKBOX || control.kind == JXW_RADIO)
        printf(control.checked ? "[x] " : "[ ] ");
    print(control.flags & JXW_PASSWORD ? "(hidden)" : control.text);
    puts(control.enabled ? "" : " (grey)");
    for (row = 0; row < control.rowCount; ++row) {
        printf(row == control.selection ? "    > " : "      ");
        print(JXW_GetRow(dialog, index, row));
        putchar('\n');
    }
}

static void print_dialog(HWND dialog) {
    JxwDialogInfo info;
    int index;
    if (!JXW_GetDialogInfo(dialog, &info))
        return;
    printf("\n%s\n", info.title);
    for (index = 0; index < info.controlCount; ++index)
        print_control(dialog, index);
}

/* Carries out one line; 0 when the dialog does not take it. */
static int act(HWND dialog, char* line) {
    char* rest = line + strcspn(line, " ");
    unsigned short id;
    if (*rest != '\0')
        *rest++ = '\0';
    id = (unsigned short)strtoul(rest, &rest, 10);
    rest += *rest == ' ';
    if (strcmp(line, "press") == 0)
        return JXW_UserCommand(dialog, id);
    if (strcmp(line, "check") == 0)
        return JXW_UserCheck(dialog, id);
    if (strcmp(line, "select") == 0)
        return JXW_UserSelect(dialog, id, atoi(rest));
    if (strcmp(line, "double") == 0)
        return JXW_UserDoubleClick(dialog, id, atoi(rest));
    return strcmp(line, "type") == 0 ? JXW_UserEdit(dialog, id, rest) : 0;
}

/* Reads a line without its end; 0 when there is none. */
static int read_line(char* line) {
    if (fgets(line, kLineSize, stdin) == NULL)
        return 0;
    line[strcspn(line, "\n")] = '\0';
    return 1;
}

/* A screen's callback: the library waits for the user. 0 says that there is none any more. */
static int wait_for_user(void* context, HWND dialog) {
    char line[kLineSize];
    (void)context;
    print_dialog(dialog);
    if (!read_line(line))
        return 0;
    if (!act(dialog, line))
        puts("The dialog does not take that.");
    return 1;
}

/* A screen's callback: a message box. */
static unsigned int show_message(void* context, HWND owner, const char* text, const char* title, unsigned int style) {
    char line[kLineSize] = "";
    (void)context;
    (void)owner;
    printf("\n%s: ", title);
    print(text);
    puts(style & MB_YESNO ? " (yes or no)" : "");
    if (!(style & MB_YESNO))
        return IDOK;
    return read_line(line) && strcmp(line, "yes") == 0 ? IDYES : IDNO;
}

int main(void) {
    JxwScreen screen = {0};
    screen.wait = wait_for_user;
    screen.messageBox = show_message;
    if (!JXW_SetScreen(&screen))
        return 1;
    return SQLManageDataSources(0) == 1 ? 0 : 1;
}
