/* A program linked to a fixed place takes the address of every exported function: the linker does not warn, and the
 * dynamic loader gives the same address. Usage: addresses SETUP-LIBRARY */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <odbcinst.h>
#include <string.h>

#include "host.h"

int host_failures;

typedef void (*routine)(void);

#define ENTRY(name) \
    { #name, (routine)name }
static const struct {
    const char* name;
    routine address;
} functions[] = {ENTRY(SQLGetPrivateProfileString),
                 ENTRY(SQLWritePrivateProfileString),
                 ENTRY(SQLWriteDSNToIni),
                 ENTRY(SQLRemoveDSNFromIni),
                 ENTRY(SQLValidDSN),
                 ENTRY(SQLRemoveDefaultDataSource),
                 ENTRY(SQLConfigDataSource),
                 ENTRY(SQLManageDataSources),
                 ENTRY(SQLCreateDataSource),
                 ENTRY(SQLGetInstalledDrivers),
                 ENTRY(SQLGetAvailableDrivers),
                 ENTRY(SQLGetTranslator),
                 ENTRY(SQLInstallDriver),
                 ENTRY(SQLInstallODBC),
                 ENTRY(DataSourcesDlgProc),
                 ENTRY(AddDataSourceDlgProc),
                 ENTRY(OdbcDriversDlgProc),
                 ENTRY(OdbcOptionsDlgProc),
                 ENTRY(SelectTranslatorDlgProc),
                 ENTRY(AboutDlgProc),
                 ENTRY(AddDriverDlgProc),
                 ENTRY(InstallDriversDlgProc),
                 ENTRY(AdvancedInstallationOptionsDlgProc),
                 ENTRY(VersionsDlgProc),
                 ENTRY(jxDllDialog),
                 ENTRY(jxDllDialogReturnId),
                 ENTRY(Decompress),
                 ENTRY(winGetString)};

int main(void) {
    size_t i;
    for (i = 0; i < sizeof functions / sizeof functions[0]; ++i) {
        void* const found = dlsym(RTLD_DEFAULT, functions[i].name);
        CHECK(found != NULL && memcmp(&found, &functions[i].address, sizeof found) == 0);
    }
    return host_failures != 0;
}
