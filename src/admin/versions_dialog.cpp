// The Versions dialog: what the script says about its drivers' libraries.
#include <odbcinst.h>

#include <control_ids.h>
#include "admin/dialog_record.h"
#include "admin/script_drivers.h"

using namespace jx::admin;
using jx::install::_Install;

namespace {

unsigned int open(HWND dialog, uintptr_t lparam) {
    auto* install = takeRecord<_Install>(dialog, lparam);
    if (install == nullptr)
        return 0;
    FillLB(dialog, JxVersionsList, install);
    selectFirstRow(dialog, JxVersionsList, IDOK);
    winCenterBox(dialog);
    return 1;
}

unsigned int hearList(HWND dialog, int notification) {
    if (notification != LBN_SELCHANGE)
        return endDialog(dialog);
    DisplayDriverVersion(dialog, nullptr, JxVersionsList);
    return 0;
}

// Deliberate: IDOK, enabled or greyed when the dialog opens, has no case here; the dialog is closed with Cancel or a
// double click.
unsigned int command(HWND dialog, int id, int notification) {
    switch (id) {
        case JxVersionsList:
            return hearList(dialog, notification);
        case IDCANCEL:
            return endDialog(dialog);
        default:
            return 0;
    }
}

}  // namespace

unsigned int VersionsDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    switch (message) {
        case WM_INITDIALOG:
            return open(hwnd, lparam);
        case WM_COMMAND:
            return command(hwnd, wparam, notificationOf(lparam));
        default:
            return 0;
    }
}
