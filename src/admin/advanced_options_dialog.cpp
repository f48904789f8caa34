// The Advanced Installation Options dialog: three values of an installation that nothing reads yet.
#include <odbcinst.h>

#include "admin/dialog_procedure.h"
#include "install/install_record.h"

using namespace jx::admin;
using jx::install::_Install;

namespace {

// The radio button for choice; first is the first of the three.
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

void open(HWND dialog, _Install& install) {
    if (install.reserved0 != 0)
        JXW_CheckDlgButton(dialog, JxOptionFlagBox, 1);
    JXW_CheckRadioButton(dialog, 0, 0, buttonFor(install.reserved1, JxFirstChoice0));
    JXW_CheckRadioButton(dialog, 0, 0, buttonFor(install.reserved2, JxSecondChoice0));
}

void confirm(HWND dialog, _Install& install) {
    install.reserved0 = isChecked(dialog, JxOptionFlagBox) ? 1 : 0;
    install.reserved1 = choiceOf(dialog, JxFirstChoice0);
    install.reserved2 = choiceOf(dialog, JxSecondChoice0);
    endDialog(dialog);
}

void showVersions(HWND dialog, _Install& install) {
    jxDllDialog(dialog, JxVersionsDialog, VersionsDlgProc, &install);
}

constexpr Reaction<_Install> kReactions[] = {{IDOK, confirm}, {JxVersionsButton, showVersions}};

constexpr DialogKind<_Install> kDialog{.open = open, .reactions = kReactions, .closing = IDCANCEL};

}  // namespace

unsigned int AdvancedInstallationOptionsDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    return answer(kDialog, hwnd, message, wparam, lparam);
}
