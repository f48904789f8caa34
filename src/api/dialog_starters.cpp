// The library's dialog starters, alone in their file so that no caller can be compiled together with them: every call
// goes through the dynamic symbol table, where a program that shows dialogs puts its own two in their place.
#include <odbcinst.h>

int32_t jxDllDialog(HWND /*owner*/, unsigned short /*templateId*/, JxDialogProcedure /*procedure*/, void* /*record*/) {
    // Deliberate: a library shows nothing by itself; its callers go on with the record as it is.
    return 0;
}

int32_t jxDllDialogReturnId(HWND /*owner*/, unsigned short /*templateId*/, JxDialogProcedure /*procedure*/,
                            void* /*record*/) {
    return 0;
}
