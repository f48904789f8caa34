// The Install Drivers dialog: which drivers of a script are to be installed.
#include <odbcinst.h>

#include <control_ids.h>
#include "admin/dialog_record.h"
#include "admin/script_drivers.h"

using namespace jx::admin;
using jx::install::InstallDriversRecord;

namespace {

unsigned int open(HWND dialog, uintptr_t lparam) {
    auto* record = takeRecord<InstallDriversRecord>(dialog, lparam);
    if (record == nullptr)
        return 0;
    record->proceed = 0;
    // A script without drivers: the dialog cancels itself as soon as it runs.
    if (FillLB(dialog, JxInstallDriversList, record->install) == 1)
        JXW_PostMessage(dialog, WM_COMMAND, IDCANCEL, 0);
    selectFirstRow(dialog, JxInstallDriversList, IDOK);
    winCenterBox(dialog);
    return 1;
}

unsigned int confirm(HWND dialog, InstallDriversRecord& record) {
    SaveSelectedLBItems(dialog, JxInstallDriversList, record.install);
    record.proceed = 1;
    return endDialog(dialog);
}

unsigned int showAdvancedOptions(HWND dialog, InstallDriversRecord& record) {
    jxDllDialog(dialog, JxAdvancedOptionsDialog, AdvancedInstallationOptionsDlgProc, record.install);
    return 0;
}

unsigned int act(HWND dialog, InstallDriversRecord& record, int id) {
    switch (id) {
        case IDOK:
            return confirm(dialog, record);
        case JxAdvancedButton:
            return showAdvancedOptions(dialog, record);
        default:
            return 0;
    }
}

// What needs no record comes first, so that a dialog without one can be closed.
unsigned int command(HWND dialog, int id) {
    if (id == JxClaimedCommand)
        return 1;
    if (id == IDCANCEL)
        return endDialog(dialog);
    auto* record = recordOf<InstallDriversRecord>(dialog);
    return record != nullptr ? act(dialog, *record, id) : 0;
}

}  // namespace

unsigned int InstallDriversDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    switch (message) {
        case WM_INITDIALOG:
            return open(hwnd, lparam);
        case WM_COMMAND:
            return command(hwnd, wparam);
        default:
            return 0;
    }
}
