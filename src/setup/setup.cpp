// The entry points of libjxsetup.so, the setup library for drivers that bring none.
#include <new>

#include "api/odbcinst.h"
#include "setup/data_source_file.h"

namespace {

bool carryOut(WORD request, const char* driver, const char* attributes) {
    const std::optional<jx::setup::DataSourceRequest> parsed = jx::setup::parseRequest(attributes);
    if (!parsed)
        return false;
    switch (request) {
        case ODBC_ADD_DSN:
            return jx::setup::addDataSource(driver, *parsed);
        case ODBC_CONFIG_DSN:
            return jx::setup::changeDataSource(driver, *parsed);
        case ODBC_REMOVE_DSN:
            return jx::setup::removeDataSource(*parsed);
        default:
            return false;
    }
}

}  // namespace

// Adds, changes or removes the data source that lpszAttributes names, for the installed driver lpszDriver. FALSE, with
// nothing changed, on a list or a value that cannot be stored as it was given. A window shows nothing more.
extern "C" JX_EXPORT BOOL ConfigDSN(HWND hwnd, WORD fRequest, LPCSTR lpszDriver, LPCSTR lpszAttributes) {
    static_cast<void>(hwnd);
    try {
        return carryOut(fRequest, lpszDriver, lpszAttributes) ? TRUE : FALSE;
    } catch (const std::bad_alloc&) {
        return FALSE;
    }
}

// A translator without options of its own: option 0, always TRUE. A null pvOption is skipped.
extern "C" JX_EXPORT BOOL ConfigTranslator(HWND hwnd, DWORD* pvOption) {
    static_cast<void>(hwnd);
    if (pvOption != nullptr)
        *pvOption = 0;
    return TRUE;
}
