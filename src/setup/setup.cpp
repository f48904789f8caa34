// The entry points of libjxsetup.so, the setup library for drivers that have none of their own.
#include <new>

#include <odbcinst.h>
#include "setup/data_source_file.h"
#include "setup/setup_dialog.h"

namespace {

using jx::setup::DataSourceRequest;

// Lets the user add or change a data source in the dialog, which shows the attributes of the list at first. Returns
// nothing when no dialog was shown.
std::optional<bool> carryOutInDialog(HWND owner, bool adds, const char* driver, DataSourceRequest begin) {
    if (!jx::setup::isInstalled(driver))
        return std::nullopt;
    jx::setup::SetupForm form{adds, driver, {}, std::move(begin)};
    if (!adds) {
        std::optional<DataSourceRequest> stored = jx::setup::readDataSource(form.now.name);
        if (!stored)
            return std::nullopt;
        form.before = stored->attributes;
        jx::setup::overlay(stored->attributes, form.now.attributes);
        form.now = std::move(*stored);
    }
    jx::setup::runSetupDialog(owner, form);
    return form.opened ? std::optional(form.stored) : std::nullopt;
}

bool carryOut(WORD request, const char* driver, const DataSourceRequest& parsed) {
    switch (request) {
        case ODBC_ADD_DSN:
            return jx::setup::addDataSource(driver, parsed);
        case ODBC_CONFIG_DSN:
            return jx::setup::changeDataSource(driver, parsed);
        case ODBC_REMOVE_DSN:
            return jx::setup::removeDataSource(parsed);
        default:
            return false;
    }
}

bool configure(HWND owner, WORD request, const char* driver, const char* attributes) {
    const bool adds = request == ODBC_ADD_DSN;
    if (owner != 0 && (adds || request == ODBC_CONFIG_DSN)) {
        const std::optional<DataSourceRequest> begin = jx::setup::parseNamelessRequest(attributes);
        const std::optional<bool> asked = begin ? carryOutInDialog(owner, adds, driver, *begin) : std::nullopt;
        if (asked)
            return *asked;
    }
    const std::optional<DataSourceRequest> parsed = jx::setup::parseRequest(attributes);
    return parsed && carryOut(request, driver, *parsed);
}

}  // namespace

// Adds, changes or removes the data source that lpszAttributes names, for the installed driver lpszDriver. With a
// window and a screen on this thread, adding and changing shows a dialog, in which the user can edit the given
// attributes first. FALSE, and nothing changed, when the list is bad, a value cannot be stored as given, or the user
// cancelled.
extern "C" JX_EXPORT BOOL ConfigDSN(HWND hwnd, WORD fRequest, LPCSTR lpszDriver, LPCSTR lpszAttributes) {
    try {
        return configure(hwnd, fRequest, lpszDriver, lpszAttributes) ? TRUE : FALSE;
    } catch (const std::bad_alloc&) {
        return FALSE;
    }
}

// For translators without options: sets *pvOption (which may be null) to 0 and returns TRUE.
extern "C" JX_EXPORT BOOL ConfigTranslator(HWND hwnd, DWORD* pvOption) {
    static_cast<void>(hwnd);
    if (pvOption != nullptr)
        *pvOption = 0;
    return TRUE;
}
