// The entry points of libjxsetup.so, the setup library for drivers that have none of their own.
#include <new>

#include <odbcinst.h>
#include "setup/setup_routine.h"

// Adds, changes or removes the data source that lpszAttributes names, for the installed driver lpszDriver. With a
// window and a screen on this thread, adding and changing shows a dialog, in which the user can edit the given
// attributes first. FALSE, and nothing changed, when the list is bad, a value cannot be stored as given, or the user
// cancelled.
extern "C" JX_EXPORT BOOL ConfigDSN(HWND hwnd, WORD fRequest, LPCSTR lpszDriver, LPCSTR lpszAttributes) {
    try {
        const auto outcome = jx::setup::configureDataSource(jx::setup::usersFiles(), {hwnd != 0, hwnd},
                                                            {fRequest, lpszDriver, lpszAttributes});
        return outcome == jx::setup::SetupOutcome::done ? TRUE : FALSE;
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
