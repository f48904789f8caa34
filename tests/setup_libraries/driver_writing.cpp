// A driver's setup library that calls the installer library back, as most do.
#include <odbcinst.h>

#include "call_record.h"

namespace {

const jx::test::LoadRecord loaded;

// The value of the list's first item.
std::string nameIn(LPCSTR attributes) {
    const std::string item = attributes;
    return item.substr(item.find('=') + 1);
}

}  // namespace

JX_ENTRY_POINT BOOL ConfigDSN(HWND hwnd, WORD request, LPCSTR driver, LPCSTR attributes) {
    jx::test::recordConfig("ConfigDSN", hwnd, request, driver, attributes);
    const std::string name = nameIn(attributes);
    if (request == ODBC_REMOVE_DSN)
        return SQLRemoveDSNFromIni(name.c_str());
    if (request == ODBC_ADD_DSN && SQLWriteDSNToIni(name.c_str(), driver) == FALSE)
        return FALSE;
    const char* lastItem = attributes + std::strlen(attributes) + 1;
    return SQLWritePrivateProfileString(name.c_str(), "Last", lastItem, ".odbc.ini");
}
