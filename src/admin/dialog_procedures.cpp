// The procedures of the administrator's dialogs. They leave every message to the dialog layer's default handling.
#include <odbcinst.h>

unsigned int DataSourcesDlgProc(HWND /*hwnd*/, int /*message*/, int /*wparam*/, uintptr_t /*lparam*/) {
    return 0;
}

unsigned int AddDataSourceDlgProc(HWND /*hwnd*/, int /*message*/, int /*wparam*/, uintptr_t /*lparam*/) {
    return 0;
}

unsigned int SelectTranslatorDlgProc(HWND /*hwnd*/, int /*message*/, int /*wparam*/, uintptr_t /*lparam*/) {
    return 0;
}

unsigned int InstallDriversDlgProc(HWND /*hwnd*/, int /*message*/, int /*wparam*/, uintptr_t /*lparam*/) {
    return 0;
}
