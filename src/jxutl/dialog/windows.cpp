// Windows: there are none yet, so every handle is one that names no window.
#include "platform/jxdialog.h"

HWND JXW_SetFocus(HWND /*hwnd*/) {
    return 0;
}

int JXW_PostMessage(HWND /*hwnd*/, int /*message*/, int /*wparam*/, uintptr_t /*lparam*/) {
    return 0;
}
