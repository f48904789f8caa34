// The Data Sources dialog: the administrator's main window.
#include <odbcins.h>
#include <odbcinst.h>

#include <control_ids.h>
#include "admin/dialog_record.h"
#include "config/list_box.h"
#include "config/setup_library.h"

using namespace jx::admin;

namespace {

constexpr unsigned long kDataSources = 1;  // the mode of the list's rows

enum Message : unsigned long { kRemoveFailed = 50, kChangeFailed = 51, kConfirmRemove = 53, kSetupNotLoaded = 54 };

void fillList(HWND dialog, OdbcIns& ins) {
    ins.PopulateLB(dialog, JxDataSourcesList, kDataSources, nullptr);
}

unsigned int open(HWND dialog, uintptr_t lparam) {
    auto* ins = takeRecord<OdbcIns>(dialog, lparam);
    if (ins == nullptr)
        return 0;
    HWNDDSDLG = dialog;
    fillList(dialog, *ins);
    selectFirstRow(dialog, JxDataSourcesList, JxSetupButton);
    selectFirstRow(dialog, JxDataSourcesList, JxDeleteButton);
    winCenterBox(dialog);
    return 1;
}

void enableButtons(HWND dialog) {
    const bool selected = jx::selectedRow(dialog, JxDataSourcesList) != -1;
    enableControl(dialog, JxSetupButton, selected);
    enableControl(dialog, JxDeleteButton, selected);
}

// Lets the selected data source's driver carry out request; failure is the message when it refuses. The dialog itself
// changes no file: the entries are the setup library's business.
void configure(HWND dialog, OdbcIns& ins, unsigned long request, Message failure) {
    if (ins.LoadDriver() != 0) {
        ins.DisplayMB(dialog, kSetupNotLoaded);
        return;
    }
    const jx::SetupLibrary library(ins.hSetupLib);
    if (ins.ConfigDSN(dialog, request, nullptr) != 0)
        ins.DisplayMB(dialog, failure);
    else
        fillList(dialog, ins);
}

bool takeSelection(HWND dialog, OdbcIns& ins) {
    return ins.SaveSelectedLBItem(dialog, JxDataSourcesList, kDataSources) == 0;
}

unsigned int setUp(HWND dialog, OdbcIns& ins) {
    if (takeSelection(dialog, ins))
        configure(dialog, ins, ODBC_CONFIG_DSN, kChangeFailed);
    return 0;
}

unsigned int remove(HWND dialog, OdbcIns& ins) {
    if (takeSelection(dialog, ins) && ins.DisplayMB(dialog, kConfirmRemove) == IDYES)
        configure(dialog, ins, ODBC_REMOVE_DSN, kRemoveFailed);
    return 0;
}

unsigned int add(HWND dialog, OdbcIns& ins) {
    if (SQLCreateDataSource(dialog, nullptr) != FALSE)
        fillList(dialog, ins);
    return 0;
}

// Removing a driver may have removed data sources, so the list is always read again.
unsigned int showDrivers(HWND dialog, OdbcIns& ins) {
    jxDllDialog(dialog, JxDriversDialog, OdbcDriversDlgProc, &ins);
    fillList(dialog, ins);
    return 0;
}

unsigned int showOptions(HWND dialog, OdbcIns& ins) {
    jxDllDialog(dialog, JxOptionsDialog, OdbcOptionsDlgProc, &ins);
    return 0;
}

unsigned int close(HWND dialog) {
    HWNDDSDLG = 0;
    return endDialog(dialog);
}

unsigned int hearList(HWND dialog, OdbcIns& ins, int notification) {
    if (notification == LBN_SELCHANGE)
        enableButtons(dialog);
    return notification == LBN_DBLCLK ? setUp(dialog, ins) : 0;
}

unsigned int act(HWND dialog, OdbcIns& ins, int id, int notification) {
    switch (id) {
        case JxDataSourcesList:
            return hearList(dialog, ins, notification);
        case JxSetupButton:
            return setUp(dialog, ins);
        case JxDeleteButton:
            return remove(dialog, ins);
        case JxAddButton:
            return add(dialog, ins);
        case JxDriversButton:
            return showDrivers(dialog, ins);
        case JxOptionsButton:
            return showOptions(dialog, ins);
        default:
            return 0;
    }
}

// What needs no record comes first, so that a dialog without one can be closed.
unsigned int command(HWND dialog, int id, int notification) {
    if (id == JxClaimedCommand)
        return 1;
    if (id == JxCloseButton)
        return close(dialog);
    auto* ins = recordOf<OdbcIns>(dialog);
    return ins != nullptr ? act(dialog, *ins, id, notification) : 0;
}

unsigned int hear(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    switch (message) {
        case WM_INITDIALOG:
            return open(hwnd, lparam);
        case WM_COMMAND:
            return command(hwnd, wparam, notificationOf(lparam));
        default:
            return 0;
    }
}

}  // namespace

unsigned int DataSourcesDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    OpenWord word(HWNDDSDLG, hwnd);
    return word.answer(hear(hwnd, message, wparam, lparam));
}
