// Comparing rows with the file.
#include "odbcadmin/assist/driver_lists.h"

#include <control_ids.h>
#include <jxscreen.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "odbcadmin/assist/scope_mark.h"
#include "odbcadmin/assist/system_rows.h"
#include "odbcadmin/model/configuration.h"
#include "odbcadmin/trial/installer_library.h"

namespace jx::assist {

namespace {

constexpr unsigned short kDelete = JxDeleteDriverButton;
constexpr unsigned short kOk = IDOK;

std::string rowAt(HWND dialog, unsigned short list, int row) {
    const int length = JXW_SendDlgItemMessage(dialog, list, LB_GETTEXTLEN, row, 0);
    std::string text(static_cast<std::size_t>(std::max(length, 0)), '\0');
    JXW_SendDlgItemMessage(dialog, list, LB_GETTEXT, row, reinterpret_cast<uintptr_t>(text.data()));
    return text;
}

// Some row is chosen, and what needs one can be pressed, unless there is none.
void enable(HWND dialog, unsigned short list, unsigned short button) {
    const bool isEmpty = JXW_SendDlgItemMessage(dialog, list, LB_GETCOUNT, 0, 0) == 0;
    if (!isEmpty && JXW_SendDlgItemMessage(dialog, list, LB_GETCURSEL, 0, 0) < 0)
        JXW_SendDlgItemMessage(dialog, list, LB_SETCURSEL, 0, 0);
    JXW_EnableWindow(JXW_GetDlgItem(dialog, button), isEmpty ? 0 : 1);
}

unsigned short buttonOf(unsigned short list) {
    return list == JxDriversList ? kDelete : kOk;
}

// Who makes a data source of a shadowed driver would get one of the user's driver.
std::vector<std::string> systemRowsOf(unsigned short list) {
    std::vector<std::string> rows = systemDriverRows();
    if (list == JxAddDataSourceList)
        std::erase_if(rows, isShadowed);
    return rows;
}

// The user's rows, and behind them those of the system's.
void refresh(HWND dialog, unsigned short list, unsigned short button) {
    std::vector<std::string> missing;
    for (const model::Registered& driver : model::Configuration::read().drivers())
        if (driver.listed)
            missing.push_back(driver.name);
    int end = JXW_SendDlgItemMessage(dialog, list, LB_GETCOUNT, 0, 0);  // of the user's rows
    for (int row = end - 1; row >= 0; --row) {
        const std::string text = rowAt(dialog, list, row);
        if (withoutSystemMark(text)) {
            end = row;
        } else if (std::erase(missing, text) == 0) {
            JXW_SendDlgItemMessage(dialog, list, LB_DELETESTRING, row, 0);
            --end;
        }
    }
    for (const std::string& name : missing)
        JXW_SendDlgItemMessage(dialog, list, LB_INSERTSTRING, end++, reinterpret_cast<uintptr_t>(name.c_str()));
    putSystemRows(dialog, list, systemRowsOf(list));
    enable(dialog, list, button);
}

}  // namespace

void completeDrivers(HWND dialog) {
    const unsigned short list = driverList(dialog);
    putSystemRows(dialog, list, systemRowsOf(list));
    if (JXW_SendDlgItemMessage(dialog, list, LB_GETCOUNT, 0, 0) > 0)
        JXW_EnableWindow(JXW_GetDlgItem(dialog, buttonOf(list)), 1);
}

void refreshDriverLists() {
    for (HWND dialog = JXW_NextDialog(0); dialog != 0; dialog = JXW_NextDialog(dialog)) {
        const unsigned short list = driverList(dialog);
        if (list != 0)
            refresh(dialog, list, buttonOf(list));
    }
}

unsigned short driverList(HWND dialog) {
    JxwDialogInfo info{};
    if (JXW_GetDialogInfo(dialog, &info) == 0 || std::string_view(info.module) != trial::kInstallerModule)
        return 0;
    return info.templateId == JxDriversDialog         ? JxDriversList
           : info.templateId == JxAddDataSourceDialog ? JxAddDataSourceList
                                                      : 0;
}

}  // namespace jx::assist
