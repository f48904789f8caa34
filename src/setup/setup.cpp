// The entry points of libjxsetup.so, the setup library for drivers that bring none.
#include <new>

#include <odbcinst.h>
#include "setup/setup_routine.h"

// Adds, changes or removes the data source that lpszAttributes names, for the installed driver lpszDriver. FALSE, with
// nothing changed, on a list or a value that cannot be stored as it was given. With a window and a screen on this
// thread the user adds and changes in a dialog, which begins with the attributes given; FALSE then when the user gave
// up.
extern "C" JX_EXPORT BOOL ConfigDSN(HWND hwnd, WORD fRequest, LPCSTR lpszDriver, LPCSTR lpszAttributes) {
    try {
        const auto outcome = jx::setup::configureDataSource(jx::setup::usersFiles(), {hwnd != 0, hwnd},
                                                            {fRequest, lpszDriver, lpszAttributes});
        return outcome == jx::setup::SetupOutcome::done ? TRUE : FALSE;
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
