// Its procedure.
#include "odbcadmin/assist/sources_form.h"

#include "odbcadmin/assist/forms.h"
#include "odbcadmin/assist/lists.h"
#include "odbcadmin/assist/source_command.h"

namespace jx::assist {

namespace {

void act(HWND dialog, int control, int notification) {
    const auto source = chosenSource(dialog);
    const bool isDoubleClick = control == kSourcesList && notification == LBN_DBLCLK;
    if (!source)
        return;
    if (control == kSourcesSetup || isDoubleClick)
        setUpSource(dialog, *source);
    else if (control == kSourcesView)
        viewSource(dialog, *source);
    else if (control == kSourcesTest)
        testSource(dialog, *source);
    else if (control == kSourcesRemove)
        removeSource(dialog, *source);
}

unsigned int sourcesProcedure(HWND dialog, int message, int wparam, uintptr_t lparam) {
    if (message == WM_INITDIALOG)
        refillList(dialog);
    else if (message == WM_COMMAND && wparam == IDCANCEL)
        JXW_EndDialog(dialog, 0);
    else if (message == WM_COMMAND)
        act(dialog, wparam, static_cast<int>((lparam >> 16U) & 0xFFFFU));
    else
        return 0;
    return 1;
}

}  // namespace

void showSources(HWND owner) {
    showForm(kSourcesForm, owner, sourcesProcedure, nullptr);
    refillList(owner);
}

}  // namespace jx::assist
