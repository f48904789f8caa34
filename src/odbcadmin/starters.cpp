// Starts the library's dialogs on the thread's screen.
#include "odbcadmin/starters.h"

#include <jxwindow.h>

int32_t jxDllDialog(HWND owner, unsigned short templateId, JxDialogProcedure procedure, void* record) {
    return JXW_DialogBox(BJXHINST, templateId, owner, procedure, record);
}

int32_t jxDllDialogReturnId(HWND owner, unsigned short templateId, JxDialogProcedure procedure, void* record) {
    return jxDllDialog(owner, templateId, procedure, record);
}
