// The Install Drivers dialog: the user picks drivers of a script to install.
#include <odbcinst.h>

#include <string>

#include "admin/dialog_procedure.h"
#include "admin/script_drivers.h"
#include "config/list_box.h"

using namespace jx::admin;
using jx::install::InstallDriversRecord;

namespace {

void open(HWND dialog, InstallDriversRecord& record) {
    record.proceed = 0;
    // Without drivers in the script the dialog cancels itself.
    if (FillLB(dialog, JxInstallDriversList, record.install) == 1)
        JXW_PostMessage(dialog, WM_COMMAND, IDCANCEL, 0);
    enableControl(dialog, IDOK, jx::selectFirstRow(dialog, JxInstallDriversList));
}

// Deliberate: asks for the selection once per row, so the selected driver is added as often as the list has rows.
void SaveSelectedLBItems(HWND dialog, unsigned short listId, jx::install::_Install* install) {
    const short count = jx::rowCount(dialog, listId);
    for (short pass = 0; pass < count; ++pass) {
        const short row = jx::selectedRow(dialog, listId);
        std::string name;
        if (row == -1 || !jx::readRow(dialog, listId, row, name))
            return;
        appendItem(install, name, jx::install::DriverItem);
    }
}

void confirm(HWND dialog, InstallDriversRecord& record) {
    SaveSelectedLBItems(dialog, JxInstallDriversList, record.install);
    record.proceed = 1;
    endDialog(dialog);
}

void showAdvancedOptions(HWND dialog, InstallDriversRecord& record) {
    jxDllDialog(dialog, JxAdvancedOptionsDialog, AdvancedInstallationOptionsDlgProc, record.install);
}

constexpr Reaction<InstallDriversRecord> kReactions[] = {{IDOK, confirm}, {JxAdvancedButton, showAdvancedOptions}};

constexpr DialogKind<InstallDriversRecord> kDialog{.open = open, .reactions = kReactions, .closing = IDCANCEL};

}  // namespace

unsigned int InstallDriversDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    return answer(kDialog, hwnd, message, wparam, lparam);
}
