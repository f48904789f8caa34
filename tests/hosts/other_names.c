/* A program that exports functions with the library's names, as a second library in the process could: the library must
 * still call its own functions. Adding a data source calls SQLRemoveDSNFromIni and the profile functions.
 * Usage: other_names SETUP-LIBRARY */
#define _POSIX_C_SOURCE 200809L
#include <dlfcn.h>
#include <odbcinst.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include "host.h"

int host_failures;
static int captured;

JX_EXPORT BOOL SQLRemoveDSNFromIni(LPCSTR name) {
    (void)name;
    ++captured;
    return FALSE;
}

JX_EXPORT BOOL SQLWriteDSNToIni(LPCSTR name, LPCSTR driver) {
    (void)name;
    (void)driver;
    ++captured;
    return FALSE;
}

JX_EXPORT unsigned int Decompress(unsigned int hwnd, unsigned char* source, unsigned char* target) {
    (void)hwnd;
    (void)source;
    (void)target;
    ++captured;
    return 0;
}

/* A batch installation uses the library's own Decompress. */
static void install_batch(const char* folder) {
    char script[64], value[32], drivers[] = "Batch Driver\0";
    FILE* file;
    snprintf(script, sizeof script, "%s/odbc.inf", folder);
    file = fopen(script, "w");
    if (file == NULL)
        return;
    fputs("[Batch Driver]\n\"Driver\"=1,lib.so,,,,,,,,,,,,,,,,,,,\n", file);
    fclose(file);
    SQLInstallODBC(0, script, "/opt", drivers);
    CHECK(SQLGetPrivateProfileString("Batch Driver", "Driver", "", value, sizeof value, ".odbcinst.ini") == 11);
    CHECK(strcmp(value, "/opt/lib.so") == 0);
    unlink(script);
}

int main(int count, char** arguments) {
    char folder[] = "/tmp/jxodbc-host-XXXXXX", path[64], value[16];
    if (count != 2 || mkdtemp(folder) == NULL)
        return 2;
    setenv("HOME", folder, 1);
    CHECK(SQLWritePrivateProfileString("Sample Driver", "Driver", "/opt/sample.so", ".odbcinst.ini"));
    CHECK(SQLWritePrivateProfileString("Sample Driver", "Setup", arguments[1], ".odbcinst.ini"));
    /* Adding what exists removes the old entry through the library's own SQLRemoveDSNFromIni. */
    CHECK(SQLWritePrivateProfileString("Sales", "Old", "1", ".odbc.ini"));
    CHECK(SQLConfigDataSource(0, ODBC_ADD_DSN, "Sample Driver", "DSN=Sales\0New=2\0"));
    CHECK(SQLGetPrivateProfileString("Sales", "Old", "", value, sizeof value, ".odbc.ini") == 0);
    CHECK(SQLGetPrivateProfileString("Sales", "New", "", value, sizeof value, ".odbc.ini") == 1);
    install_batch(folder);
    CHECK(captured == 0);
    snprintf(path, sizeof path, "%s/.odbc.ini", folder);
    unlink(path);
    snprintf(path, sizeof path, "%s/.odbcinst.ini", folder);
    unlink(path);
    CHECK(rmdir(folder) == 0);
    return host_failures == 0 ? 0 : 1;
}
