// Asking for a text, and whose entries are to be seen where there are some of the system's.
#include "odbcadmin/assist/filter_form.h"

#include <array>
#include <utility>

#include "odbcadmin/assist/forms.h"
#include "odbcadmin/assist/lists.h"
#include "odbcadmin/assist/system_rows.h"

namespace jx::assist {

namespace {

constexpr std::array kScopeButtons{std::pair(kFilterBoth, model::Seen::both), std::pair(kFilterUser, model::Seen::user),
                                   std::pair(kFilterSystem, model::Seen::system)};

void openFilter(HWND dialog, const Filter& filter) {
    JXW_SetDlgItemText(dialog, kLineAbout, "Sho&w only rows that contain (empty: all):");
    JXW_SetDlgItemText(dialog, kLineText, filter.text.c_str());
    for (const auto& [button, scope] : kScopeButtons)
        if (filter.scope == scope)
            JXW_CheckRadioButton(dialog, kFilterBoth, kFilterSystem, button);
}

// The form without buttons shows both.
Filter wishedFilter(HWND dialog) {
    Filter filter{fieldText(dialog, kLineText), model::Seen::both};
    for (const auto& [button, scope] : kScopeButtons)
        if (JXW_IsDlgButtonChecked(dialog, button) != 0)
            filter.scope = scope;
    return filter;
}

unsigned int filterProcedure(HWND dialog, int message, int wparam, uintptr_t lparam) {
    if (message == WM_INITDIALOG) {
        keepFormRecord(dialog, lparam);
        openFilter(dialog, formRecord<const Filter>(dialog));
    } else if (message == WM_COMMAND && wparam == IDOK) {
        formRecord<Filter>(dialog) = wishedFilter(dialog);
        JXW_EndDialog(dialog, 1);
    } else {
        return closedByCancel(dialog, message, wparam);
    }
    return 1;
}

unsigned int plainFilterProcedure(HWND dialog, int message, int wparam, uintptr_t lparam) {
    const unsigned int result = filterProcedure(dialog, message, wparam, lparam);
    if (message == WM_INITDIALOG) {
        JXW_SetWindowText(dialog, "Filter");
        JXW_SetDlgItemText(dialog, kLineAbout, "&Show only rows that contain (empty: all):");
    }
    return result;
}

}  // namespace

void askForFilter(HWND dialog) {
    Filter filter = filterOf(dialog);
    const bool asksForScope = filter.scope != model::Seen::both || !systemSourceRows().empty();
    const int result = asksForScope ? showForm(kFilterForm, dialog, filterProcedure, &filter)
                                    : showForm(kLineForm, dialog, plainFilterProcedure, &filter);
    if (result == 1)
        filterList(dialog, filter);
}

}  // namespace jx::assist
