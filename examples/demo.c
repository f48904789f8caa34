/* Configures a database driver through the ODBC installer library and then uses it, step by step.
 *
 * Usage: demo PREFIX DRIVER FOLDER
 *   PREFIX  where jxodbc is installed     DRIVER  the driver library     FOLDER  an empty folder for two databases
 * Set HOME to an empty folder: .odbc.ini and .odbcinst.ini are written there. The exit code is 0 when every step did
 * what it says. */
#include <odbcinst.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "driver.h"

enum { kStepsAtMost = 32, kPathSize = 900 };

static struct {
    const char* name;
    int done;
} steps[kStepsAtMost];
static int step_count;

static void begin_step(const char* name) {
    printf("\n%d. %s\n", step_count + 1, name);
    steps[step_count++].name = name;
    steps[step_count - 1].done = 1;
}

/* Prints a call and its result; an unexpected result fails the step. */
static int expect(int as_expected, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    printf("    ");
    vprintf(format, arguments);
    printf("%s\n", as_expected ? "" : "   <-- not as expected");
    va_end(arguments);
    if (!as_expected)
        steps[step_count - 1].done = 0;
    return as_expected;
}

static void show_file(const char* name) {
    char path[kPathSize + 32], line[kPathSize + 64];
    FILE* file;
    snprintf(path, sizeof path, "%s/%s", getenv("HOME"), name);
    file = fopen(path, "r");
    printf("    --- ~/%s%s\n", name, file != NULL ? "" : " is not there");
    if (file == NULL)
        return;
    while (fgets(line, sizeof line, file) != NULL)
        printf("    | %s", line);
    fclose(file);
}

static int exists(const char* path) {
    FILE* file = fopen(path, "r");
    if (file != NULL)
        fclose(file);
    return file != NULL;
}

/* The file name of a path. */
static const char* file_name(const char* path) {
    const char* slash = strrchr(path, '/');
    return slash != NULL ? slash + 1 : path;
}

static void write_key(const char* section, const char* key, const char* value) {
    const BOOL result = SQLWritePrivateProfileString(section, key, value, ".odbcinst.ini");
    expect(result, "SQLWritePrivateProfileString(\"%s\", \"%s\", \"%s\", \".odbcinst.ini\") -> %d", section, key, value,
           result);
}

static void register_driver(const char* prefix, const char* driver) {
    char setup[kPathSize], keywords[kPathSize + 64], path[1024];
    WORD length = 0;
    begin_step("Register the driver, with libjxsetup.so as its setup library");
    snprintf(keywords, sizeof keywords, "SQLite3%cDriver=%s%cDriverODBCVer=03.00%cFileUsage=0%c", '\0', driver, '\0',
             '\0', '\0');
    const BOOL result = SQLInstallDriver(NULL, keywords, path, sizeof path, &length);
    expect(result && strncmp(path, driver, length) == 0,
           "SQLInstallDriver(NULL, \"SQLite3\\0Driver=%s\\0...\", path, %d, &length) -> %d: %s", driver,
           (int)sizeof path, result, path);
    /* A driver's own setup library lies beside it; this one comes with jxodbc. */
    snprintf(setup, sizeof setup, "%s/lib/libjxsetup.so", prefix);
    write_key("SQLite3", "Setup", setup);
    /* SQLInstallDriver makes the driver's section; the installation program adds it to the list. */
    write_key("ODBC Drivers", "SQLite3", "Installed");
    show_file(".odbcinst.ini");
}

static void list_drivers(void) {
    char list[1024] = "";
    const char* name;
    WORD length = 0;
    begin_step("List the installed drivers");
    const BOOL result = SQLGetInstalledDrivers(list, sizeof list, &length);
    expect(result && strcmp(list, "SQLite3") == 0, "SQLGetInstalledDrivers(list, %d, &length) -> %d, length %d",
           (int)sizeof list, result, length);
    for (name = list; *name != '\0'; name += strlen(name) + 1)
        printf("    driver: %s\n", name);
}

/* The attribute list of data source Sales: two texts and an empty one. */
static void configure(WORD request, const char* request_name, const char* database) {
    char attributes[kPathSize + 32];
    const int length = snprintf(attributes, sizeof attributes, "DSN=Sales%cDatabase=%s%c", '\0', database, '\0');
    const BOOL result = SQLConfigDataSource(0, request, "SQLite3", attributes);
    expect(length < (int)sizeof attributes && result,
           "SQLConfigDataSource(0, %s, \"SQLite3\", \"DSN=Sales\\0Database=%s\\0\") -> %d", request_name, database,
           result);
    show_file(".odbc.ini");
}

static void read_back(const char* database) {
    char value[kPathSize];
    const int length = SQLGetPrivateProfileString("Sales", "Database", "", value, sizeof value, ".odbc.ini");
    expect(strcmp(value, database) == 0,
           "SQLGetPrivateProfileString(\"Sales\", \"Database\", \"\", value, %d, \".odbc.ini\") -> %d: %s",
           (int)sizeof value, length, value);
}

/* Every library in this process that is an installer library by its name must be the one of PREFIX. */
static void look_for_installer_libraries(const char* prefix) {
    char line[kPathSize + 128], ours[kPathSize + 32], last[kPathSize + 128] = "";
    FILE* maps = fopen("/proc/self/maps", "r");
    int found = 0;
    snprintf(ours, sizeof ours, "%s/lib/libodbcinst.so.1\n", prefix);
    while (maps != NULL && fgets(line, sizeof line, maps) != NULL) {
        const char* path = strchr(line, '/');
        if (path == NULL || strstr(path, "odbcinst") == NULL || strcmp(path, last) == 0)
            continue;
        snprintf(last, sizeof last, "%s", path);
        ++found;
        if (strcmp(path, ours) != 0)
            printf("    another installer library is on this machine, and the driver chose it:\n");
        expect(strcmp(path, ours) == 0, "loaded in this process: %.*s", (int)strcspn(path, "\n"), path);
    }
    if (maps != NULL)
        fclose(maps);
    expect(found == 1, "installer libraries in this process: %d", found);
}

/* Only .odbc.ini names the database, so it is made only when the driver read the data source there. */
static int connect_to(struct connection* connection, const char* prefix, const char* database) {
    char driver[kPathSize];
    SQLGetPrivateProfileString("Sales", "Driver", "", driver, sizeof driver, ".odbc.ini");
    expect(!exists(database), "%s is not there yet", database);
    const int connected = open_connection(connection, driver, "DSN=Sales");
    expect(connected, "SQLDriverConnect(\"DSN=Sales\") of %s -> %s", driver, connected ? "connected" : "failed");
    look_for_installer_libraries(prefix);
    return connected;
}

static void use_database(const char* prefix, const char* database) {
    struct connection connection;
    begin_step("Connect with DSN=Sales: the driver finds the library and reads the data source");
    if (connect_to(&connection, prefix, database)) {
        begin_step("Create a table, insert and select rows");
        expect(execute(&connection, "CREATE TABLE orders (id INTEGER, customer TEXT, total REAL)") == 0, "created");
        expect(execute(&connection, "INSERT INTO orders VALUES (1, 'Anna', 12.5), (2, 'Otto', 99)") == 0, "inserted");
        expect(execute(&connection, "SELECT id, customer, total FROM orders ORDER BY id") == 2, "2 rows");
        expect(exists(database), "%s came into being", database);
    }
    close_connection(&connection);
}

static void use_other_database(const char* prefix, const char* database) {
    struct connection connection;
    begin_step("Connect with DSN=Sales again: the driver opens the other database");
    if (connect_to(&connection, prefix, database)) {
        expect(execute(&connection, "SELECT count(*) FROM sqlite_master") == 1, "an empty database");
        expect(execute(&connection, "CREATE TABLE archive (id INTEGER)") == 0, "created");
        expect(exists(database), "%s came into being", database);
    }
    close_connection(&connection);
}

static void remove_data_source(void) {
    char sections[256] = "";
    begin_step("Remove the data source");
    const BOOL result = SQLConfigDataSource(0, ODBC_REMOVE_DSN, "SQLite3", "DSN=Sales\0");
    expect(result, "SQLConfigDataSource(0, ODBC_REMOVE_DSN, \"SQLite3\", \"DSN=Sales\\0\") -> %d", result);
    const int length = SQLGetPrivateProfileString("Sales", NULL, "(gone)", sections, sizeof sections, ".odbc.ini");
    expect(strcmp(sections, "(gone)") == 0, "SQLGetPrivateProfileString(\"Sales\", NULL, \"(gone)\", ...) -> %d: %s",
           length, sections);
    show_file(".odbc.ini");
    show_file(".odbcinst.ini");
}

/* The script of a package with the same library under another name. */
static int put_script(const char* script, const char* library) {
    FILE* file = fopen(script, "w");
    if (file == NULL)
        return 0;
    fprintf(file,
            "[ODBC Drivers]\n\"SQLite3 Packaged\"=\n[SQLite3 Packaged]\n"
            "\"Driver\"=1,%s,,,,2024-01-15,,,OLDER,,,,,,,0,,,,00.99.98.0000,\n"
            "[SQLite3 Packaged-Keys]\nDriverODBCVer=03.00\nFileUsage=0\nCreateDSN=Notes\n",
            library);
    return fclose(file) == 0;
}

static void install_from_script(const char* driver, const char* folder) {
    char script[kPathSize + 32], source[kPathSize], value[64], drivers[] = "SQLite3 Packaged\0";
    begin_step("Install a second driver from a script, as a package brings it");
    snprintf(script, sizeof script, "%s/odbc.inf", folder);
    snprintf(source, sizeof source, "%.*s", (int)(file_name(driver) - driver), driver);
    expect(put_script(script, file_name(driver)), "%s written", script);
    const BOOL result = SQLInstallODBC(0, script, source, drivers);
    expect(!result, "SQLInstallODBC(0, \"%s\", \"%s\", \"SQLite3 Packaged\\0\") -> %d (always: the files tell)", script,
           source, result);
    SQLGetPrivateProfileString("ODBC Drivers", "SQLite3 Packaged", "", value, sizeof value, ".odbcinst.ini");
    expect(strcmp(value, "Installed") == 0, "SQLite3 Packaged in \"ODBC Drivers\": %s", value);
    SQLGetPrivateProfileString("ODBC Data Sources", "Notes", "", value, sizeof value, ".odbc.ini");
    expect(strcmp(value, "SQLite3 Packaged") == 0, "Notes in \"ODBC Data Sources\": %s", value);
    show_file(".odbcinst.ini");
    show_file(".odbc.ini");
}

static int summarize(void) {
    int step, done = 0;
    printf("\nSummary\n");
    for (step = 0; step < step_count; ++step) {
        printf("  %-6s %d. %s\n", steps[step].done ? "ok" : "FAILED", step + 1, steps[step].name);
        done += steps[step].done;
    }
    printf("  %d of %d steps did what they say\n", done, step_count);
    return done == step_count;
}

int main(int count, char** arguments) {
    char sales[kPathSize], archive[kPathSize], prefix[kPathSize];
    if (count != 4 || getenv("HOME") == NULL) {
        fprintf(stderr, "usage: demo PREFIX DRIVER FOLDER\n");
        return 2;
    }
    setvbuf(stdout, NULL, _IOLBF, 0);
    snprintf(prefix, sizeof prefix, "%s", arguments[1]);
    snprintf(sales, sizeof sales, "%s/sales.db", arguments[3]);
    snprintf(archive, sizeof archive, "%s/archive.db", arguments[3]);

    register_driver(prefix, arguments[2]);
    list_drivers();
    begin_step("Add data source Sales");
    configure(ODBC_ADD_DSN, "ODBC_ADD_DSN", sales);
    begin_step("Read it back");
    read_back(sales);
    use_database(prefix, sales);
    begin_step("Configure it: another database");
    configure(ODBC_CONFIG_DSN, "ODBC_CONFIG_DSN", archive);
    read_back(archive);
    use_other_database(prefix, archive);
    remove_data_source();
    install_from_script(arguments[2], arguments[3]);
    return summarize() ? 0 : 1;
}
