/* Connects to a data source by its name and prints the rows of statements: libodbcinst.so.2 says which driver that is,
 * and the driver finds its settings through the same library.
 * Usage: query DATA-SOURCE STATEMENT...     exit status 0 when all succeeded, 1 when not, 2 for wrong use
 */
#include <jxodbc3/odbcinst.h>
#include <stdio.h>

#include "driver.h"

enum { kPathSize = 4096 };

/* The driver's library, which a data source names by its path or by the name under which it is registered. */
static int find_driver(const char* source, char* library) {
    char value[kPathSize] = "";
    SQLGetPrivateProfileString(source, "Driver", "", value, sizeof value, "odbc.ini");
    if (value[0] != '/')
        return SQLGetPrivateProfileString(value, "Driver", "", library, kPathSize, "odbcinst.ini") > 0;
    snprintf(library, kPathSize, "%s", value);
    return 1;
}

int main(int count, char** arguments) {
    struct connection connection;
    char library[kPathSize], text[512];
    int i, done;
    if (count < 3) {
        fprintf(stderr, "Usage: query DATA-SOURCE STATEMENT...\n");
        return 2;
    }
    if (!find_driver(arguments[1], library)) {
        fprintf(stderr, "There is no data source %s\n", arguments[1]);
        return 1;
    }
    snprintf(text, sizeof text, "DSN=%s", arguments[1]);
    done = open_connection(&connection, library, text);
    for (i = 2; i < count && done; ++i)
        done = execute(&connection, arguments[i]) >= 0;
    close_connection(&connection);
    return done ? 0 : 1;
}
