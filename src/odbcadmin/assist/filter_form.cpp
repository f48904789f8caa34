// Asking for the text.
#include "odbcadmin/assist/filter_form.h"

#include "odbcadmin/assist/forms.h"
#include "odbcadmin/assist/lists.h"

namespace jx::assist {

namespace {

unsigned int filterProcedure(HWND dialog, int message, int wparam, uintptr_t lparam) {
    if (message == WM_INITDIALOG) {
        keepFormRecord(dialog, lparam);
        JXW_SetWindowText(dialog, "Filter");
        JXW_SetDlgItemText(dialog, kLineAbout, "&Show only rows that contain (empty: all):");
        JXW_SetDlgItemText(dialog, kLineText, formRecord<const std::string>(dialog).c_str());
    } else if (message == WM_COMMAND && wparam == IDOK) {
        formRecord<std::string>(dialog) = fieldText(dialog, kLineText);
        JXW_EndDialog(dialog, 1);
    } else {
        return closedByCancel(dialog, message, wparam);
    }
    return 1;
}

}  // namespace

void askForFilter(HWND dialog) {
    std::string text = filterOf(dialog);
    if (showForm(kLineForm, dialog, filterProcedure, &text) == 1)
        filterList(dialog, text);
}

}  // namespace jx::assist
