/* Registers an unchanged driver with libodbcinst.so.2, makes a data source for it, and lets the driver connect with
 * nothing but the data source's name: it finds its settings through the same library.
 * Usage: connect DRIVER-LIBRARY KEYWORD=VALUE...     exit status 0 when it connected, 1 when not, 2 for anything else
 */
#include <jxodbc3/odbcinst.h>
#include <stdio.h>
#include <string.h>

#include "driver.h"

static void print_records(void) {
    DWORD code;
    char text[SQL_MAX_MESSAGE_LENGTH];
    WORD number;
    for (number = 1; SQLInstallerError(number, &code, text, sizeof text, NULL) != SQL_NO_DATA; ++number)
        printf("    %u: %s\n", code, text);
}

/* Appends a text and its NUL to a list, whose final NUL moves on; 0 when there is no room. */
static int append(char* list, size_t size, size_t* length, const char* text) {
    const size_t added = strlen(text) + 1;
    if (*length + added + 1 > size)
        return 0;
    memcpy(list + *length, text, added);
    *length += added;
    list[*length] = '\0';
    return 1;
}

static int install(const char* library) {
    char list[4096] = "", item[2048], path[4096];
    size_t length = 0;
    DWORD count = 0;
    snprintf(item, sizeof item, "Driver=%s", library);
    if (!append(list, sizeof list, &length, "Example") || !append(list, sizeof list, &length, item))
        return 0;
    if (!SQLInstallDriverEx(list, NULL, path, sizeof path, NULL, ODBC_INSTALL_COMPLETE, &count))
        return 0;
    printf("    driver Example lies in %s\n", path);
    return 1;
}

static int add_data_source(char** items) {
    char list[4096] = "";
    size_t length = 0;
    if (!append(list, sizeof list, &length, "DSN=Sales"))
        return 0;
    for (; *items != NULL; ++items)
        if (!append(list, sizeof list, &length, *items))
            return 0;
    return SQLConfigDataSource(NULL, ODBC_ADD_DSN, "Example", list);
}

int main(int count, char** arguments) {
    struct connection connection;
    int connected;
    if (count < 2 || !install(arguments[1]) || !add_data_source(arguments + 2)) {
        print_records();
        return 2;
    }
    connected = open_connection(&connection, arguments[1], "DSN=Sales");
    close_connection(&connection);
    return connected ? 0 : 1;
}
