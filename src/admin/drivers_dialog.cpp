// The ODBC Drivers dialog: lists the installed drivers, removes and adds them.
#include <jxerrors.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <string>

#include <control_ids.h>
#include <text_ids.h>
#include "admin/add_driver.h"
#include "admin/dialog_record.h"
#include "admin/driver_removal.h"
#include "config/configuration_file.h"
#include "config/list_box.h"
#include "config/text_bytes.h"

using namespace jx::admin;
using jx::asBytes;

namespace {

void FillDriversListbox(HWND dialog, short listId, OdbcIns* /*ins*/) {
    const auto id = static_cast<unsigned short>(listId);
    jx::KeyList drivers(asBytes(INS_ODBCINI_DRIVERS), "", jx::driverFile().name(), jx::LastKey::whole, kShortListSize);
    JXW_SendDlgItemMessage(dialog, id, LB_RESETCONTENT, 0, 0);
    jx::addRows(dialog, id, drivers);
}

void showDrivers(HWND dialog, OdbcIns& ins) {
    FillDriversListbox(dialog, JxDriversList, &ins);
    selectFirstRow(dialog, JxDriversList, JxDeleteDriverButton);
}

unsigned int open(HWND dialog, uintptr_t lparam) {
    auto* ins = takeRecord<OdbcIns>(dialog, lparam);
    if (ins == nullptr)
        return 0;
    showDrivers(dialog, *ins);
    winCenterBox(dialog);
    return 1;
}

bool isRemovalConfirmed(HWND dialog, const unsigned char* driverName) {
    unsigned char title[256] = {};
    unsigned char pattern[256] = {};
    winGetString(title, JxTextDriversTitle);
    winGetString(pattern, JxTextConfirmDriverRemove);
    JxParamString question;
    question.initialize(pattern);
    question.setParam(driverName);
    return guiMessageBox(dialog, question.text(), title, MB_YESNO | MB_ICONEXCLAMATION) == IDYES;
}

unsigned int removeSelected(HWND dialog, OdbcIns& ins) {
    const short row = jx::selectedRow(dialog, JxDriversList);
    std::string name;
    if (row == -1 || !jx::readRow(dialog, JxDriversList, row, name) || name.empty())
        return 0;
    if (!isRemovalConfirmed(dialog, asBytes(name.c_str())))
        return 0;
    removeDriver(dialog, asBytes(name.c_str()), ins);
    showDrivers(dialog, ins);
    return 0;
}

unsigned int add(HWND dialog, OdbcIns& ins) {
    if (AddDriver(dialog) == 1)
        showDrivers(dialog, ins);
    return 0;
}

unsigned int act(HWND dialog, OdbcIns& ins, int id) {
    switch (id) {
        case JxDeleteDriverButton:
            return removeSelected(dialog, ins);
        case JxAddDriverButton:
            return add(dialog, ins);
        default:
            return 0;
    }
}

// What needs no record comes first, so that a dialog without one can be closed.
unsigned int command(HWND dialog, int id) {
    if (id == JxClaimedCommand)
        return 1;
    if (id == JxCloseButton)
        return endDialog(dialog);
    auto* ins = recordOf<OdbcIns>(dialog);
    return ins != nullptr ? act(dialog, *ins, id) : 0;
}

}  // namespace

unsigned int OdbcDriversDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    switch (message) {
        case WM_INITDIALOG:
            return open(hwnd, lparam);
        case WM_COMMAND:
            return command(hwnd, wparam);
        default:
            return 0;
    }
}
