// Loading a driver's setup library and calling its ConfigDSN.
#include <jxfiles.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <cstdio>

#include "config/configuration_file.h"
#include "config/setup_library.h"
#include "config/text_bytes.h"
#include "rules/sections.h"

using jx::asBytes;

namespace {

// DataSourceItem: an attribute list with one item, the name of a data source.
class DataSourceItem {
public:
    explicit DataSourceItem(const char (&name)[50]) {
        std::snprintf(list_, sizeof list_ - 1, "DSN=%.*s", static_cast<int>(sizeof name), name);
    }

    const char* list() const { return list_; }

private:
    char list_[60]{};  // the bytes behind the name end the list
};

}  // namespace

int OdbcIns::LoadDriver() {
    unsigned char path[1024] = {};
    jx::driverFile().read(asBytes(driverName), asBytes(jx::rules::kSetup), path, sizeof path);
    hSetupLib = bosLoadLibrary(path, 0);
    if (hSetupLib == nullptr)
        return 1;
    pfnConfigDSN = jx::findRoutine<ConfigDsnRoutine>(hSetupLib, "CONFIGDSN", "ConfigDSN");
    return 0;
}

int OdbcIns::ConfigDSN(unsigned int hwnd, unsigned long fRequest, unsigned char* lpszAttributes) {
    if (pfnConfigDSN == nullptr || fRequest < ODBC_ADD_DSN || fRequest > ODBC_REMOVE_DSN)
        return 1;
    const bool adds = fRequest == ODBC_ADD_DSN;
    const DataSourceItem ownItem(dataSourceName);
    const char* attributes = jx::asChars(lpszAttributes);
    if (attributes == nullptr)
        attributes = adds ? "" : ownItem.list();
    if (pfnConfigDSN(hwnd, static_cast<WORD>(fRequest), driverName, attributes) == FALSE)
        return 1;
    if (adds)
        dataSourceAdded = 1;
    return 0;
}
