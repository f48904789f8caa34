/* Calls the installer functions as setup programs do, and prints the records when they fail.
 * Usage: configure install ITEM...             SQLInstallDriverEx with the items as its list
 *        configure add|add-system DRIVER ITEM...
 *        configure remove DRIVER               SQLRemoveDriver
 *        configure register-elsewhere ITEM...  install, in the next system directory when the first does not take it */
#include <jxodbc3/odbcinst.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { kSize = 4096 };

static int tell(BOOL done) {
    WORD number;
    DWORD code;
    char text[SQL_MAX_MESSAGE_LENGTH];
    if (done)
        return 0;
    for (number = 1; SQLInstallerError(number, &code, text, sizeof text, NULL) != SQL_NO_DATA; ++number)
        printf("    %u: %s\n", code, text);
    return 1;
}

/* The items, each with its NUL, and one NUL more. */
static const char* list_of(char** items) {
    static char list[kSize];
    size_t length = 0;
    for (; *items != NULL && length + strlen(*items) + 2 < sizeof list; ++items) {
        memcpy(list + length, *items, strlen(*items) + 1);
        length += strlen(*items) + 1;
    }
    list[length] = '\0';
    return list;
}

static BOOL install(char** items) {
    char path[kSize];
    WORD length;
    DWORD count;
    return SQLInstallDriverEx(list_of(items), NULL, path, sizeof path, &length, ODBC_INSTALL_COMPLETE, &count);
}

/* As a client does that brings its driver along: a system directory of its own where the system's is not to be written.
 */
static int install_elsewhere(char** items) {
    const char* elsewhere = getenv("JX_ELSEWHERE");
    DWORD count;
    if (install(items))
        return 1;
    tell(FALSE);
    if (elsewhere == NULL || setenv("ODBCSYSINI", elsewhere, 1) != 0 || !install(items))
        return tell(FALSE);
    return tell(SQLRemoveDriver(items[0], FALSE, &count)) || count != 0;
}

int main(int count, char** arguments) {
    const char* what = count > 2 ? arguments[1] : "";
    if (strcmp(what, "install") == 0)
        return tell(install(arguments + 2));
    if (strcmp(what, "register-elsewhere") == 0)
        return install_elsewhere(arguments + 2);
    if (strcmp(what, "add") == 0)
        return tell(SQLConfigDataSource(NULL, ODBC_ADD_DSN, arguments[2], list_of(arguments + 3)));
    if (strcmp(what, "add-system") == 0)
        return tell(SQLConfigDataSource(NULL, ODBC_ADD_SYS_DSN, arguments[2], list_of(arguments + 3)));
    if (strcmp(what, "remove") == 0)
        return tell(SQLRemoveDriver(arguments[2], TRUE, NULL));
    return 2;
}
