// The About dialog: shows eight texts of its caller.
#include "admin/about_dialog.h"

#include <jxmemory.h>
#include <jxwindow.h>
#include <odbcinst.h>

#include "admin/dialog_procedure.h"
#include "config/text_bytes.h"

using namespace jx::admin;

namespace {

void open(HWND dialog, AboutRecord& record) {
    unsigned short id = JxAboutFirstText;
    for (const unsigned char* text : record.texts)
        JXW_SetDlgItemText(dialog, id++, text != nullptr ? jx::asChars(text) : "Not Available");
}

// Deliberate: only the button releases the texts, and the record keeps their addresses. When it is pressed again before
// the dialog is gone, nothing is released a second time.
void releaseTexts(HWND dialog, AboutRecord& record) {
    if (JXW_IsDialogEnded(dialog, nullptr) != 0)
        return;
    for (unsigned char* text : record.texts)
        ramFree(text);
}

constexpr DialogKind<AboutRecord> kDialog{.open = open, .closing = IDOK, .close = releaseTexts, .claimed = kNoCommand};

}  // namespace

unsigned int AboutDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    return answer(kDialog, hwnd, message, wparam, lparam);
}
