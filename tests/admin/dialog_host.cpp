// The dialog starters of this program, which take the place of the library's own: they run dialogs on the thread's
// screen.
#include <jxwindow.h>
#include <odbcinst.h>

int32_t jxDllDialog(HWND owner, unsigned short templateId, JxDialogProcedure procedure, void* record) {
    return JXW_DialogBox(BJXHINST, templateId, owner, procedure, record);
}

int32_t jxDllDialogReturnId(HWND owner, unsigned short templateId, JxDialogProcedure procedure, void* record) {
    return jxDllDialog(owner, templateId, procedure, record);
}
