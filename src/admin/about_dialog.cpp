// The About dialog: eight texts of whoever shows it.
#include <jxmemory.h>
#include <jxwindow.h>
#include <odbcinst.h>

#include <control_ids.h>
#include "admin/about_record.h"
#include "admin/dialog_record.h"
#include "config/text_bytes.h"

using namespace jx::admin;

namespace {

unsigned int open(HWND dialog, uintptr_t lparam) {
    const auto* record = takeRecord<AboutRecord>(dialog, lparam);
    if (record == nullptr)
        return 0;
    unsigned short id = JxAboutFirstText;
    for (const unsigned char* text : record->texts)
        JXW_SetDlgItemText(dialog, id++, text != nullptr ? jx::asChars(text) : "Not Available");
    winCenterBox(dialog);
    return 1;
}

// Deliberate: only this button releases the texts, and the record keeps their addresses: pressed again while the dialog
// is going, it has none to release.
unsigned int close(HWND dialog) {
    if (JXW_IsDialogEnded(dialog, nullptr) != 0)
        return 0;
    if (const auto* record = recordOf<AboutRecord>(dialog)) {
        for (unsigned char* text : record->texts)
            ramFree(text);
    }
    return endDialog(dialog);
}

unsigned int command(HWND dialog, int id) {
    switch (id) {
        case IDOK:
            return close(dialog);
        default:
            return 0;
    }
}

}  // namespace

unsigned int AboutDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    switch (message) {
        case WM_INITDIALOG:
            return open(hwnd, lparam);
        case WM_COMMAND:
            return command(hwnd, wparam);
        default:
            return 0;
    }
}
