// The library's dialog starters. They have a file of their own, so that the compiler cannot inline them into a caller:
// every call must go through the dynamic symbol table, where a program that shows dialogs replaces them by its own.
#include <odbcinst.h>

int32_t jxDllDialog(HWND /*owner*/, unsigned short /*templateId*/, JxDialogProcedure /*procedure*/, void* /*record*/) {
    // Deliberate: shows nothing. Its callers go on with the record unchanged.
    return 0;
}

int32_t jxDllDialogReturnId(HWND /*owner*/, unsigned short /*templateId*/, JxDialogProcedure /*procedure*/,
                            void* /*record*/) {
    return 0;
}
