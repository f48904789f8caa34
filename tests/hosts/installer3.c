/* A C program that links the installed libodbcinst.so.2 and calls each of its functions once, plain, with A and with W.
 * Its home and the system's directory are a folder of its own. */
#define _XOPEN_SOURCE 700
#include <jxodbc3/odbcinst.h>
#include <stdlib.h>
#include <string.h>

#include "host.h"

int host_failures;

static char folder[] = "/tmp/jxodbc-host3-XXXXXX";

static const char* path_of(const char* name) {
    static char path[256];
    snprintf(path, sizeof path, "%s/%s", folder, name);
    return path;
}

/* A room for 256 units, the caller's until the sixteenth call after this one. */
static SQLWCHAR* room(void) {
    static SQLWCHAR rooms[16][256];
    static int turn;
    return rooms[turn++ % 16];
}

/* The text in UTF-16; w_list: a list that an empty text ends. */
static const SQLWCHAR* w(const char* text) {
    SQLWCHAR* units = room();
    int at = -1;
    do {
        ++at;
        units[at] = (unsigned char)text[at];
    } while (text[at] != '\0');
    return units;
}

static const SQLWCHAR* w_list(const char* list) {
    SQLWCHAR* units = room();
    int at = 0;
    for (; list[at] != '\0' || list[at + 1] != '\0'; ++at)
        units[at] = (unsigned char)list[at];
    units[at] = 0;
    units[at + 1] = 0;
    return units;
}

static int same(const SQLWCHAR* units, const char* text) {
    const SQLWCHAR* other = w(text);
    while (*units == *other && *units != 0) {
        ++units;
        ++other;
    }
    return *units == *other;
}

static void use_profile_strings(void) {
    char value[64];
    SQLWCHAR wide[64];
    CHECK(SQLWritePrivateProfileString("Sales", "Server", "plain", "odbc.ini") == TRUE);
    CHECK(SQLGetPrivateProfileString("Sales", "Server", "", value, sizeof value, "odbc.ini") == 5);
    CHECK(strcmp(value, "plain") == 0);
    CHECK(SQLWritePrivateProfileStringA("Sales", "Server", "ansi", ".odbc.ini") == TRUE);
    CHECK(SQLGetPrivateProfileStringA("Sales", "Server", "", value, sizeof value, "ODBC.INI") == 4);
    CHECK(SQLWritePrivateProfileStringW(w("Sales"), w("Server"), w("wide!!"), w("odbc.ini")) == TRUE);
    CHECK(SQLGetPrivateProfileStringW(w("Sales"), w("Server"), NULL, wide, 64, w("odbc.ini")) == 6);
    CHECK(same(wide, "wide!!"));
}

static void use_errors_and_mode(void) {
    char text[SQL_MAX_MESSAGE_LENGTH];
    SQLWCHAR wide[SQL_MAX_MESSAGE_LENGTH];
    DWORD code = 0;
    WORD length = 0;
    UWORD mode = 99;
    CHECK(SQLSetConfigMode(ODBC_SYSTEM_DSN) == TRUE);
    CHECK(SQLGetConfigMode(&mode) == TRUE && mode == ODBC_SYSTEM_DSN);
    CHECK(SQLSetConfigMode(ODBC_BOTH_DSN) == TRUE);
    CHECK(SQLPostInstallerError(ODBC_ERROR_GENERAL_ERR, "one") == SQL_SUCCESS);
    CHECK(SQLPostInstallerErrorA(ODBC_ERROR_INVALID_DSN, "two") == SQL_SUCCESS);
    CHECK(SQLPostInstallerErrorW(ODBC_ERROR_OUT_OF_MEM, w("three")) == SQL_SUCCESS);
    CHECK(SQLInstallerError(1, &code, text, sizeof text, &length) == SQL_SUCCESS && code == 1 && length == 3);
    CHECK(SQLInstallerErrorA(2, &code, text, sizeof text, NULL) == SQL_SUCCESS && strcmp(text, "two") == 0);
    CHECK(SQLInstallerErrorW(3, &code, wide, SQL_MAX_MESSAGE_LENGTH, &length) == SQL_SUCCESS && same(wide, "three"));
    CHECK(SQLInstallerError(4, &code, text, sizeof text, &length) == SQL_NO_DATA);
}

static void use_drivers(void) {
    char text[256];
    SQLWCHAR wide[256];
    WORD length;
    DWORD count = 0;
    CHECK(SQLInstallDriverEx("PG\0Driver=/opt/pg.so\0", NULL, text, sizeof text, &length, ODBC_INSTALL_COMPLETE,
                             &count) == TRUE &&
          count == 1);
    CHECK(SQLInstallDriverExA("PG\0Driver=/opt/pg.so\0", NULL, text, sizeof text, &length, ODBC_INSTALL_COMPLETE,
                              &count) == TRUE);
    CHECK(SQLInstallDriverExW(w_list("PG\0Driver=/opt/pg.so\0"), NULL, wide, 256, &length, ODBC_INSTALL_COMPLETE,
                              &count) == TRUE &&
          count == 3);
    CHECK(SQLGetInstalledDrivers(text, sizeof text, &length) == TRUE && strcmp(text, "PG") == 0 && length == 3);
    CHECK(SQLGetInstalledDriversA(text, sizeof text, &length) == TRUE);
    CHECK(SQLGetInstalledDriversW(wide, 256, &length) == TRUE && same(wide, "PG"));
    CHECK(SQLConfigDriver(NULL, ODBC_CONFIG_DRIVER, "PG", "CPTimeout=1", text, sizeof text, &length) == TRUE);
    CHECK(SQLConfigDriverA(NULL, ODBC_INSTALL_DRIVER, "PG", NULL, text, sizeof text, &length) == TRUE);
    CHECK(SQLConfigDriverW(NULL, ODBC_CONFIG_DRIVER, w("PG"), w("CPTimeout=2"), wide, 256, &length) == TRUE);
    CHECK(SQLInstallDriverManager(text, sizeof text, &length) == TRUE);
    CHECK(SQLInstallDriverManagerA(text, sizeof text, &length) == TRUE);
    CHECK(SQLInstallDriverManagerW(wide, 256, &length) == TRUE);
    CHECK(SQLRemoveDriverManager(&count) == TRUE && count == 2);
}

static void use_sources(void) {
    CHECK(SQLValidDSN("Sales") == TRUE);
    CHECK(SQLValidDSNA("a;b") == FALSE);
    CHECK(SQLValidDSNW(w("Sales")) == TRUE);
    CHECK(SQLWriteDSNToIni("One", "PG") == TRUE);
    CHECK(SQLWriteDSNToIniA("Two", "PG") == TRUE);
    CHECK(SQLWriteDSNToIniW(w("Three"), w("PG")) == TRUE);
    CHECK(SQLRemoveDSNFromIni("One") == TRUE);
    CHECK(SQLRemoveDSNFromIniA("Two") == TRUE);
    CHECK(SQLRemoveDSNFromIniW(w("Three")) == TRUE);
    CHECK(SQLRemoveDefaultDataSource() == TRUE);
    CHECK(SQLConfigDataSource(NULL, ODBC_ADD_DSN, "PG", "DSN=Four\0Server=a\0") == TRUE);
    CHECK(SQLConfigDataSourceA(NULL, ODBC_CONFIG_DSN, "PG", "DSN=Four\0Server=b\0") == TRUE);
    CHECK(SQLConfigDataSourceW(NULL, ODBC_REMOVE_DSN, w("PG"), w_list("DSN=Four\0")) == TRUE);
}

static void use_file_data_sources(void) {
    char text[64];
    SQLWCHAR wide[64];
    WORD length = 0;
    CHECK(SQLWriteFileDSN(path_of("a"), "ODBC", "DRIVER", "PG") == TRUE);
    CHECK(SQLWriteFileDSNA(path_of("a"), "ODBC", "SERVER", "db") == TRUE);
    CHECK(SQLWriteFileDSNW(w(path_of("a")), w("ODBC"), w("PORT"), w("1")) == TRUE);
    CHECK(SQLReadFileDSN(path_of("a"), "ODBC", "SERVER", text, sizeof text, &length) == TRUE && length == 2);
    CHECK(SQLReadFileDSNA(path_of("a.dsn"), "ODBC", NULL, text, sizeof text, &length) == TRUE);
    CHECK(strcmp(text, "DRIVER;SERVER;PORT") == 0);
    CHECK(SQLReadFileDSNW(w(path_of("a")), w("ODBC"), w("PORT"), wide, 64, &length) == TRUE && same(wide, "1"));
}

static void use_translators(void) {
    static const char list[] = "T\0Translator=/opt/t.so\0";
    char text[64];
    SQLWCHAR wide[64];
    WORD length;
    DWORD count = 0;
    CHECK(SQLInstallTranslator(NULL, list, NULL, text, sizeof text, &length, ODBC_INSTALL_COMPLETE, &count) == TRUE);
    CHECK(SQLInstallTranslatorA(NULL, list, NULL, text, sizeof text, &length, ODBC_INSTALL_COMPLETE, &count) == TRUE);
    CHECK(SQLInstallTranslatorW(NULL, w_list(list), NULL, wide, 64, &length, ODBC_INSTALL_COMPLETE, &count) == TRUE);
    CHECK(SQLInstallTranslatorEx(list, NULL, text, sizeof text, &length, ODBC_INSTALL_COMPLETE, &count) == TRUE);
    CHECK(SQLInstallTranslatorExA(list, NULL, text, sizeof text, &length, ODBC_INSTALL_COMPLETE, &count) == TRUE);
    CHECK(SQLInstallTranslatorExW(w_list(list), NULL, wide, 64, &length, ODBC_INSTALL_COMPLETE, &count) == TRUE);
    CHECK(count == 6);
    CHECK(SQLRemoveTranslator("T", &count) == TRUE);
    CHECK(SQLRemoveTranslatorA("T", &count) == TRUE);
    CHECK(SQLRemoveTranslatorW(w("T"), &count) == TRUE && count == 3);
}

static void use_screens(void) {
    char text[8];
    SQLWCHAR wide[8];
    CHECK(SQLCreateDataSource(NULL, "Sales") == FALSE);
    CHECK(SQLCreateDataSourceA(NULL, "Sales") == FALSE);
    CHECK(SQLCreateDataSourceW(NULL, w("Sales")) == FALSE);
    CHECK(SQLManageDataSources(NULL) == FALSE);
    CHECK(SQLGetTranslator(NULL, text, 8, NULL, text, 8, NULL, NULL) == FALSE);
    CHECK(SQLGetTranslatorA(NULL, text, 8, NULL, text, 8, NULL, NULL) == FALSE);
    CHECK(SQLGetTranslatorW(NULL, wide, 8, NULL, wide, 8, NULL, NULL) == FALSE);
}

static void use_removal(void) {
    DWORD count = 9;
    CHECK(SQLRemoveDriver("PG", FALSE, &count) == TRUE && count == 2);
    CHECK(SQLRemoveDriverA("PG", FALSE, &count) == TRUE && count == 1);
    CHECK(SQLRemoveDriverW(w("PG"), FALSE, &count) == TRUE && count == 0);
    CHECK(SQLRemoveDriver("PG", FALSE, &count) == FALSE);
}

int main(void) {
    static const char* const files[] = {".odbc.ini", "odbcinst.ini", "a.dsn"};
    size_t i;
    if (mkdtemp(folder) == NULL || setenv("HOME", folder, 1) != 0 || setenv("ODBCSYSINI", folder, 1) != 0)
        return 2;
    use_profile_strings();
    use_errors_and_mode();
    use_drivers();
    use_sources();
    use_file_data_sources();
    use_translators();
    use_screens();
    use_removal();
    for (i = 0; i < sizeof files / sizeof *files; ++i)
        CHECK(remove(path_of(files[i])) == 0);
    CHECK(remove(folder) == 0);
    return host_failures == 0 ? 0 : 1;
}
