// The Data Sources dialog: the administrator's main window.
#include <odbcins.h>
#include <odbcinst.h>

#include <text_ids.h>
#include "admin/dialog_procedure.h"
#include "config/list_box.h"
#include "config/setup_library.h"

using namespace jx::admin;

namespace {

void fillList(HWND dialog, OdbcIns& ins) {
    ins.PopulateLB(dialog, JxDataSourcesList, jx::kDataSourceRows, nullptr);
}

void enableButtons(HWND dialog, bool enable) {
    enableControl(dialog, JxSetupButton, enable);
    enableControl(dialog, JxDeleteButton, enable);
}

void open(HWND dialog, OdbcIns& ins) {
    fillList(dialog, ins);
    enableButtons(dialog, jx::selectFirstRow(dialog, JxDataSourcesList));
}

void followSelection(HWND dialog, OdbcIns& /*ins*/) {
    enableButtons(dialog, jx::selectedRow(dialog, JxDataSourcesList) != -1);
}

// Passes request to the setup library of the selected data source's driver, which changes the files; the dialog does
// not. failure is the message for a refusal.
void configure(HWND dialog, OdbcIns& ins, unsigned long request, JxTextId failure) {
    if (ins.LoadDriver() != 0) {
        ins.DisplayMB(dialog, JxTextSetupNotLoaded);
        return;
    }
    const jx::SetupLibrary library(ins.hSetupLib);
    if (ins.ConfigDSN(dialog, request, nullptr) != 0)
        ins.DisplayMB(dialog, failure);
    else
        fillList(dialog, ins);
}

bool takeSelection(HWND dialog, OdbcIns& ins) {
    if (ins.SaveSelectedLBItem(dialog, JxDataSourcesList, jx::kDataSourceRows) == 0)
        return true;
    refuseRow(dialog, JxDataSourcesList);
    return false;
}

void setUp(HWND dialog, OdbcIns& ins) {
    if (takeSelection(dialog, ins))
        configure(dialog, ins, ODBC_CONFIG_DSN, JxTextChangeFailed);
}

void remove(HWND dialog, OdbcIns& ins) {
    if (takeSelection(dialog, ins) && ins.DisplayMB(dialog, JxTextConfirmRemove) == IDYES)
        configure(dialog, ins, ODBC_REMOVE_DSN, JxTextRemoveFailed);
}

void add(HWND dialog, OdbcIns& ins) {
    if (SQLCreateDataSource(dialog, nullptr) != FALSE)
        fillList(dialog, ins);
}

// Removing a driver also removes data sources, so the list is always read again.
void showDrivers(HWND dialog, OdbcIns& ins) {
    jxDllDialog(dialog, JxDriversDialog, OdbcDriversDlgProc, &ins);
    fillList(dialog, ins);
}

void showOptions(HWND dialog, OdbcIns& ins) {
    jxDllDialog(dialog, JxOptionsDialog, OdbcOptionsDlgProc, &ins);
}

constexpr Reaction<OdbcIns> kReactions[] = {{JxDataSourcesList, followSelection, LBN_SELCHANGE},
                                            {JxDataSourcesList, setUp, LBN_DBLCLK},
                                            {JxSetupButton, setUp},
                                            {JxDeleteButton, remove},
                                            {JxAddButton, add},
                                            {JxDriversButton, showDrivers},
                                            {JxOptionsButton, showOptions}};

constexpr DialogKind<OdbcIns> kDialog{
    .open = open, .reactions = kReactions, .closing = JxCloseButton, .handle = &HWNDDSDLG};

}  // namespace

unsigned int DataSourcesDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    return answer(kDialog, hwnd, message, wparam, lparam);
}
