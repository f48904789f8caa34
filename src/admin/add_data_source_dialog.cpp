// The Add Data Source dialog: the user picks the driver of a new data source.
#include <jxtext.h>
#include <odbcins.h>
#include <odbcinst.h>

#include <text_ids.h>
#include "admin/dialog_procedure.h"
#include "config/list_box.h"
#include "config/text_bytes.h"

using namespace jx::admin;

namespace {

constexpr int kOutsideCall = WM_USER + 1;

void open(HWND dialog, OdbcIns& ins) {
    ins.PopulateLB(dialog, JxAddDataSourceList, jx::kSectionKeyRows, jx::asBytes(INS_ODBCINI_DRIVERS));
    // Nothing is selected yet. OK does nothing until it is.
    enableControl(dialog, IDOK, jx::rowCount(dialog, JxAddDataSourceList) > 0);
}

void enableOk(HWND dialog, OdbcIns& /*ins*/) {
    enableControl(dialog, IDOK, jx::selectedRow(dialog, JxAddDataSourceList) != -1);
}

// The dialog closes even if the driver refused.
void add(HWND dialog, OdbcIns& ins) {
    if (ins.SaveSelectedLBItem(dialog, JxAddDataSourceList, jx::kDriverRows) != 0) {
        refuseRow(dialog, JxAddDataSourceList);
        return;
    }
    unsigned char driver[sizeof ins.driverName];  // a copy, since adding clears the record's own
    BUTSTCPY(driver, jx::asBytes(ins.driverName));
    if (ins.jxSQLConfigDataSource(dialog, ODBC_ADD_DSN, driver, nullptr) == FALSE)
        ins.DisplayMB(dialog, JxTextAddFailed);
    HWNDADDLG = 0;
    endDialog(dialog);
}

// A message that programs send to the open dialog, whose handle is in HWNDADDLG: it posts itself a click at 4, 4.
unsigned int clickItself(HWND dialog) {
    constexpr int kPair = 0x00040004;
    JXW_PostMessage(dialog, WM_LBUTTONDOWN, kPair, 0);
    return 0;
}

constexpr Reaction<OdbcIns> kReactions[] = {
    {JxAddDataSourceList, enableOk, LBN_SELCHANGE}, {JxAddDataSourceList, add, LBN_DBLCLK}, {IDOK, add}};

constexpr DialogKind<OdbcIns> kDialog{.open = open, .reactions = kReactions, .closing = IDCANCEL, .handle = &HWNDADDLG};

}  // namespace

unsigned int AddDataSourceDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    return message == kOutsideCall ? clickItself(hwnd) : answer(kDialog, hwnd, message, wparam, lparam);
}
