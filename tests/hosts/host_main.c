/* A C program that links the installed libraries and calls every exported C function once.
 * Usage: c_host SETUP-LIBRARY */
#define _POSIX_C_SOURCE 200809L
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include "host.h"

int host_failures;
const char* host_folder;
const char* host_setup_library;

const char* in_folder(const char* name) {
    static char path[512];
    snprintf(path, sizeof path, "%s/%s", host_folder, name);
    return path;
}

void put_file(const char* name, const char* text) {
    FILE* file = fopen(in_folder(name), "w");
    CHECK(file != NULL);
    if (file == NULL)
        return;
    fputs(text, file);
    fclose(file);
}

int file_holds(const char* name, const char* text) {
    char held[2048];
    size_t length;
    FILE* file = fopen(in_folder(name), "r");
    if (file == NULL)
        return 0;
    length = fread(held, 1, sizeof held - 1, file);
    held[length] = '\0';
    fclose(file);
    if (strcmp(held, text) != 0)
        printf("%s holds\n%s---\n", name, held);
    return strcmp(held, text) == 0;
}

static const struct {
    const char* name;
    void (*run)(void);
} parts[] = {
    {"profiles", use_profiles},
    {"data sources", use_data_sources},
    {"exported data", use_exported_data}, /* before the work buffers were lent */
    {"installation", use_installation},
    {"dialogs", use_dialogs},
    {"memory", use_memory},
    {"text", use_text},
    {"files", use_files},
    {"opened profiles", use_opened_profiles},
    {"tasks", use_tasks},
    {"boxes", use_boxes},
    {"ini store", use_ini_store},
    {"windows", use_windows},
};

static void run_in_own_folder(void (*run)(void)) {
    char folder[] = "/tmp/jxodbc-host-XXXXXX";
    const char* names[] = {".odbc.ini", ".odbcinst.ini", "odbc.inf", "own.ini", "file.txt"};
    size_t i;
    host_folder = mkdtemp(folder);
    CHECK(host_folder != NULL);
    if (host_folder == NULL)
        return;
    setenv("HOME", host_folder, 1);
    run();
    for (i = 0; i < sizeof names / sizeof *names; ++i)
        unlink(in_folder(names[i]));
    CHECK(rmdir(host_folder) == 0); /* nothing else was left there */
}

int main(int count, char** arguments) {
    size_t i;
    if (count != 2)
        return 2;
    host_setup_library = arguments[1];
    unsetenv("ODBCINI");
    unsetenv("ODBCINSTINI");
    for (i = 0; i < sizeof parts / sizeof *parts; ++i) {
        const int before = host_failures;
        run_in_own_folder(parts[i].run);
        printf("%s: %s\n", parts[i].name, host_failures == before ? "ok" : "FAILED");
    }
    return host_failures == 0 ? 0 : 1;
}
