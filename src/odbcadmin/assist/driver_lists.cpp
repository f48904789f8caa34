// Comparing rows with the file.
#include "odbcadmin/assist/driver_lists.h"

#include <control_ids.h>
#include <jxscreen.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "odbcadmin/model/configuration.h"
#include "odbcadmin/trial/installer_library.h"

namespace jx::assist {

namespace {

std::string rowAt(HWND dialog, unsigned short list, int row) {
    const int length = JXW_SendDlgItemMessage(dialog, list, LB_GETTEXTLEN, row, 0);
    std::string text(static_cast<std::size_t>(std::max(length, 0)), '\0');
    JXW_SendDlgItemMessage(dialog, list, LB_GETTEXT, row, reinterpret_cast<uintptr_t>(text.data()));
    return text;
}

void refresh(HWND dialog, unsigned short list, unsigned short button) {
    std::vector<std::string> missing;
    for (const model::Registered& driver : model::Configuration::read().drivers())
        if (driver.listed)
            missing.push_back(driver.name);
    for (int row = JXW_SendDlgItemMessage(dialog, list, LB_GETCOUNT, 0, 0) - 1; row >= 0; --row) {
        if (std::erase(missing, rowAt(dialog, list, row)) == 0)
            JXW_SendDlgItemMessage(dialog, list, LB_DELETESTRING, row, 0);
    }
    for (const std::string& name : missing)
        JXW_SendDlgItemMessage(dialog, list, LB_ADDSTRING, 0, reinterpret_cast<uintptr_t>(name.c_str()));
    const bool isEmpty = JXW_SendDlgItemMessage(dialog, list, LB_GETCOUNT, 0, 0) == 0;
    if (!isEmpty && JXW_SendDlgItemMessage(dialog, list, LB_GETCURSEL, 0, 0) < 0)
        JXW_SendDlgItemMessage(dialog, list, LB_SETCURSEL, 0, 0);
    JXW_EnableWindow(JXW_GetDlgItem(dialog, button), isEmpty ? 0 : 1);
}

}  // namespace

void refreshDriverLists() {
    constexpr unsigned short kDelete = JxDeleteDriverButton;
    constexpr unsigned short kOk = IDOK;
    for (HWND dialog = JXW_NextDialog(0); dialog != 0; dialog = JXW_NextDialog(dialog)) {
        const unsigned short list = driverList(dialog);
        if (list != 0)
            refresh(dialog, list, list == JxDriversList ? kDelete : kOk);
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
