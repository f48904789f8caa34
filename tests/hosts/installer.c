/* The installer functions, the exported data and the dialog starters, called from C. */
#include <odbcinst.h>
#include <string.h>

#include "host.h"

static const char drivers[] =
    "[ODBC Drivers]\nSample Driver=Installed\n"
    "[Sample Driver]\nDriver=/opt/sample/libsample.so\nSetup=";

/* Registers "Sample Driver", with the installed setup library. */
static void put_drivers(void) {
    char text[1024];
    snprintf(text, sizeof text, "%s%s\n[ODBC Translators]\nSample=Installed\n[Sample]\nSetup=%s\n", drivers,
             host_setup_library, host_setup_library);
    put_file(".odbcinst.ini", text);
}

void use_profiles(void) {
    char value[32];
    memset(value, 'x', sizeof value);
    CHECK(SQLWritePrivateProfileString("A", "b", "c", ".odbc.ini") == TRUE);
    CHECK(file_holds(".odbc.ini", "[A]\nb=c\n"));
    CHECK(SQLGetPrivateProfileString("A", "b", "", value, sizeof value, ".odbc.ini") == 1);
    CHECK(strcmp(value, "c") == 0 && value[31] == '\0');
    CHECK(SQLGetPrivateProfileString("A", "none", "fallback", value, 5, ".ODBC.INI") == 4);
    CHECK(strcmp(value, "fall") == 0);
}

void use_data_sources(void) {
    char list[64];
    WORD length = 0;
    put_drivers();
    CHECK(SQLValidDSN(NULL) == TRUE);
    CHECK(SQLWriteDSNToIni("Sales", "Sample Driver") == TRUE);
    CHECK(file_holds(".odbc.ini",
                     "[ODBC Data Sources]\nSales=Sample Driver\n\n[Sales]\nDriver=/opt/sample/libsample.so\n"));
    CHECK(SQLConfigDataSource(0, ODBC_CONFIG_DSN, "Sample Driver", "DSN=Sales\0Server=a\0") == TRUE);
    CHECK(SQLGetPrivateProfileString("Sales", "Server", "", list, sizeof list, ".odbc.ini") == 1);
    CHECK(SQLRemoveDefaultDataSource() == TRUE);
    CHECK(SQLRemoveDSNFromIni("Sales") == TRUE);
    CHECK(SQLGetPrivateProfileString("Sales", "Driver", "", list, sizeof list, ".odbc.ini") == 0);
    CHECK(SQLGetInstalledDrivers(list, sizeof list, &length) == TRUE);
    CHECK(length == 14 && memcmp(list, "Sample Driver\0", 15) == 0);
    put_file("odbc.inf", "[ODBC Drivers]\n\"Offered Driver\"=\n");
    CHECK(SQLGetAvailableDrivers(in_folder("odbc.inf"), list, sizeof list, &length) == TRUE);
    CHECK(length == 15 && memcmp(list, "Offered Driver\0", 16) == 0);
}

void use_installation(void) {
    static const char keywords[] =
        "Sample Driver\0Driver=/opt/sample/libsample.so\0Setup=libsetup.so\0CreateDSN=Sales\0";
    char path[64] = "", chosen[] = "Batch Driver=1\0";
    WORD length = 0;
    CHECK(SQLInstallDriver(NULL, keywords, path, sizeof path, &length) == TRUE);
    CHECK(length == 11 && strcmp(path, "/opt/sample") == 0);
    CHECK(SQLInstallDriver(NULL, keywords, NULL, 0, NULL) == FALSE);
    put_file("odbc.inf", "[Batch Driver]\n\"Driver\"=1,libbatch.so,,,,2024-03-15,,,,,,,,,,,,,,02.50.00.0001,\n");
    CHECK(SQLInstallODBC(0, in_folder("odbc.inf"), "/opt/batch", chosen) == FALSE);
    CHECK(strcmp(chosen, "Batch Driver") == 0); /* the call cut it at the = */
    CHECK(SQLInstallODBC(0, NULL, NULL, NULL) == FALSE);
    CHECK(InstallDriversDlgProc(0, 0, 0, 0) == 0);
    CHECK(file_holds(".odbcinst.ini",
                     "[Sample Driver]\nDriver=/opt/sample/libsample.so\nSetup=/opt/sample/libsetup.so\n\n"
                     "[ODBC Drivers]\nBatch Driver=Installed\n\n[Batch Driver]\nDriver=/opt/batch/libbatch.so\n"));
    CHECK(file_holds(".odbc.ini",
                     "[ODBC Data Sources]\nSales=Sample Driver\n\n[Sales]\nDriver=/opt/sample/libsample.so\n"));
}

void use_exported_data(void) {
    CHECK(strcmp(INS_ODBCINI_ODBC, "ODBC") == 0);
    CHECK(strcmp(INS_ODBCINI_DS, "ODBC Data Sources") == 0);
    CHECK(strcmp(INS_ODBCINI_DRIVER, "Driver") == 0);
    CHECK(strcmp(INS_ODBCINI_DRIVERS, "ODBC Drivers") == 0);
    CHECK(strcmp(INS_ODBCINI_DEFAULT, "Default") == 0);
    CHECK(strcmp(INS_ODBCINI_FILENAME, ".odbc.ini") == 0);
    CHECK(strcmp(INS_ODBCINST_FILENAME, ".odbcinst.ini") == 0);
    CHECK(strcmp(INS_ODBCINST_TRANSLATORS, "ODBC Translators") == 0);
    CHECK(strcmp(BJXHINST, "odbcinst") == 0);
    CHECK(HWNDDSDLG == 0 && HWNDADDLG == 0);
    CHECK(inbuf == NULL && outbuf == NULL && bigbuf == NULL);
}

void use_dialogs(void) {
    char name[32] = "Sample", path[256];
    WORD name_length = 0, path_length = 0;
    DWORD option = 7;
    unsigned char text[256], source[] = "a", target[] = "b";
    put_drivers();
    CHECK(SQLManageDataSources(0) == 0);
    CHECK(SQLCreateDataSource(1, "Sales") == FALSE);
    CHECK(SQLGetTranslator(1, name, sizeof name, &name_length, path, sizeof path, &path_length, &option) == TRUE);
    CHECK(name_length == 6 && option == 0);
    CHECK(path_length == strlen(host_setup_library) && strcmp(path, host_setup_library) == 0);
    CHECK(jxDllDialog(1, 100, AddDataSourceDlgProc, NULL) == 0);
    CHECK(jxDllDialogReturnId(1, 102, DataSourcesDlgProc, NULL) == 0);
    CHECK(SelectTranslatorDlgProc(0, 0, 0, 0) == 0);
    CHECK(Decompress(0, source, target) == 1 && target[0] == 'b');
    CHECK(winGetString(text, 58) == strlen((const char*)text) && text[0] != '\0');
    CHECK(winGetString(text, 9999) == 0);
}
