// The ODBC Drivers dialog: lists the installed drivers, removes and adds them.
#include <odbcins.h>
#include <odbcinst.h>

#include <string>

#include <text_ids.h>
#include "admin/dialog_procedure.h"
#include "admin/driver_addition.h"
#include "admin/driver_removal.h"
#include "config/configuration_file.h"
#include "config/list_box.h"
#include "config/message_box.h"

using namespace jx::admin;
using jx::asBytes;

namespace {

void FillDriversListbox(HWND dialog, short listId) {
    const auto list = static_cast<unsigned short>(listId);
    jx::KeyList drivers(asBytes(INS_ODBCINI_DRIVERS), "", jx::driverFile().name(), jx::LastKey::whole, kShortListSize);
    JXW_SendDlgItemMessage(dialog, list, LB_RESETCONTENT, 0, 0);
    jx::addRows(dialog, list, drivers);
}

void showDrivers(HWND dialog, OdbcIns& /*ins*/) {
    FillDriversListbox(dialog, JxDriversList);
    enableControl(dialog, JxDeleteDriverButton, jx::selectFirstRow(dialog, JxDriversList));
}

void removeSelected(HWND dialog, OdbcIns& ins) {
    const short row = jx::selectedRow(dialog, JxDriversList);
    std::string name;
    if (row == -1 || !jx::readRow(dialog, JxDriversList, row, name) || name.empty())
        return;
    const unsigned char* driver = asBytes(name.c_str());
    if (jx::showText(dialog, JxTextConfirmDriverRemove, driver, JxTextDriversTitle, MB_YESNO | MB_ICONEXCLAMATION) !=
        IDYES)
        return;
    removeDriver(dialog, driver, ins);
    showDrivers(dialog, ins);
}

void add(HWND dialog, OdbcIns& ins) {
    if (AddDriver(dialog) == 1)
        showDrivers(dialog, ins);
}

constexpr Reaction<OdbcIns> kReactions[] = {{JxDeleteDriverButton, removeSelected}, {JxAddDriverButton, add}};

constexpr DialogKind<OdbcIns> kDialog{.open = showDrivers, .reactions = kReactions, .closing = JxCloseButton};

}  // namespace

unsigned int OdbcDriversDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    return answer(kDialog, hwnd, message, wparam, lparam);
}
