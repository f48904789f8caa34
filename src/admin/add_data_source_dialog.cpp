// The Add Data Source dialog: picks the driver that a new data source is for.
#include <jxtext.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <control_ids.h>
#include "admin/dialog_record.h"
#include "config/list_box.h"
#include "config/text_bytes.h"

using namespace jx::admin;

namespace {

constexpr unsigned long kDriverRow = 0;    // the mode of a row that is a driver's name
constexpr unsigned long kSectionKeys = 2;  // the mode of a list of keys
constexpr unsigned long kAddFailed = 52;
constexpr int kOutsideCall = WM_USER + 1;

unsigned int open(HWND dialog, uintptr_t lparam) {
    auto* ins = takeRecord<OdbcIns>(dialog, lparam);
    if (ins == nullptr)
        return 0;
    HWNDADDLG = dialog;
    ins->PopulateLB(dialog, JxAddDataSourceList, kSectionKeys, jx::asBytes(INS_ODBCINI_DRIVERS));
    // Nothing is selected yet: the first press of OK without a selection leaves the dialog as it is.
    enableControl(dialog, IDOK, jx::rowCount(dialog, JxAddDataSourceList) > 0);
    winCenterBox(dialog);
    return 1;
}

unsigned int close(HWND dialog) {
    HWNDADDLG = 0;
    return endDialog(dialog);
}

// The dialog closes whether the driver accepted or not.
unsigned int add(HWND dialog, OdbcIns& ins) {
    if (ins.SaveSelectedLBItem(dialog, JxAddDataSourceList, kDriverRow) != 0)
        return 0;
    unsigned char driver[sizeof ins.driverName];  // a copy: adding clears the record's own
    BUTSTCPY(driver, jx::asBytes(ins.driverName));
    if (ins.jxSQLConfigDataSource(dialog, ODBC_ADD_DSN, driver, nullptr) == FALSE)
        ins.DisplayMB(dialog, kAddFailed);
    return close(dialog);
}

unsigned int hearList(HWND dialog, OdbcIns& ins, int notification) {
    if (notification == LBN_SELCHANGE)
        enableControl(dialog, IDOK, jx::selectedRow(dialog, JxAddDataSourceList) != -1);
    return notification == LBN_DBLCLK ? add(dialog, ins) : 0;
}

unsigned int act(HWND dialog, OdbcIns& ins, int id, int notification) {
    switch (id) {
        case JxAddDataSourceList:
            return hearList(dialog, ins, notification);
        case IDOK:
            return add(dialog, ins);
        default:
            return 0;
    }
}

// Others call the open dialog through HWNDADDLG; it clicks itself, two numbers 4 by value.
unsigned int clickItself(HWND dialog) {
    constexpr int kPair = 0x00040004;
    JXW_PostMessage(dialog, WM_LBUTTONDOWN, kPair, 0);
    return 0;
}

// What needs no record comes first, so that a dialog without one can be closed.
unsigned int command(HWND dialog, int id, int notification) {
    if (id == JxClaimedCommand)
        return 1;
    if (id == IDCANCEL)
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
        case kOutsideCall:
            return clickItself(hwnd);
        default:
            return 0;
    }
}

}  // namespace

unsigned int AddDataSourceDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    OpenWord word(HWNDADDLG, hwnd);
    return word.answer(hear(hwnd, message, wparam, lparam));
}
