// The Advanced Installation Options dialog: three values that are kept with an installation and read by nothing yet.
#include <odbcinst.h>

#include <control_ids.h>
#include "admin/dialog_record.h"
#include "install/install_record.h"

using namespace jx::admin;
using jx::install::_Install;

namespace {

// The radio button, of the three from first on, that stands for choice.
unsigned short buttonFor(std::uint32_t choice, unsigned short first) {
    return static_cast<unsigned short>(first + (choice <= 1 ? choice : 2));
}

bool isChecked(HWND dialog, unsigned short id) {
    return (JXW_SendDlgItemMessage(dialog, id, BM_GETCHECK, 0, 0) & 0xFFFF) != 0;
}

std::uint32_t choiceOf(HWND dialog, unsigned short first) {
    if (isChecked(dialog, first))
        return 0;
    return isChecked(dialog, static_cast<unsigned short>(first + 1)) ? 1 : 2;
}

unsigned int open(HWND dialog, uintptr_t lparam) {
    const auto* install = takeRecord<_Install>(dialog, lparam);
    if (install == nullptr)
        return 0;
    if (install->reserved0 != 0)
        JXW_CheckDlgButton(dialog, JxOptionFlagBox, 1);
    JXW_CheckRadioButton(dialog, 0, 0, buttonFor(install->reserved1, JxFirstChoice0));
    JXW_CheckRadioButton(dialog, 0, 0, buttonFor(install->reserved2, JxSecondChoice0));
    winCenterBox(dialog);
    return 1;
}

unsigned int confirm(HWND dialog, _Install& install) {
    install.reserved0 = isChecked(dialog, JxOptionFlagBox) ? 1 : 0;
    install.reserved1 = choiceOf(dialog, JxFirstChoice0);
    install.reserved2 = choiceOf(dialog, JxSecondChoice0);
    return endDialog(dialog);
}

unsigned int showVersions(HWND dialog, _Install& install) {
    jxDllDialog(dialog, JxVersionsDialog, VersionsDlgProc, &install);
    return 0;
}

unsigned int act(HWND dialog, _Install& install, int id) {
    switch (id) {
        case IDOK:
            return confirm(dialog, install);
        case JxVersionsButton:
            return showVersions(dialog, install);
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
    auto* install = recordOf<_Install>(dialog);
    return install != nullptr ? act(dialog, *install, id) : 0;
}

}  // namespace

unsigned int AdvancedInstallationOptionsDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    switch (message) {
        case WM_INITDIALOG:
            return open(hwnd, lparam);
        case WM_COMMAND:
            return command(hwnd, wparam);
        default:
            return 0;
    }
}
