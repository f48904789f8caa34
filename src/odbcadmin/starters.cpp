// The dialog starters of a program that shows dialogs: they take the place of the library's own two in a program that
// exports its names (ENABLE_EXPORTS), so every dialog of the library appears on the calling thread's screen.
#include <odbcinst.h>

#include "odbcadmin/assist/library_dialog.h"

int32_t jxDllDialog(HWND owner, unsigned short templateId, JxDialogProcedure procedure, void* record) {
    return jx::assist::showLibraryDialog(owner, templateId, procedure, record);
}

int32_t jxDllDialogReturnId(HWND owner, unsigned short templateId, JxDialogProcedure procedure, void* record) {
    return jxDllDialog(owner, templateId, procedure, record);
}
