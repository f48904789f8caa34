// The Add Driver dialog: asks for the directory of an installation script.
#include <jxmemory.h>
#include <jxtext.h>
#include <jxwindow.h>
#include <odbcinst.h>

#include <control_ids.h>
#include "admin/add_driver_record.h"
#include "admin/dialog_record.h"
#include "config/message_box.h"
#include "config/text_bytes.h"
#include "install/owned_text.h"

using namespace jx::admin;
using jx::asBytes;
using jx::asChars;

namespace {

constexpr int kReadSize = 1024;

void show(HWND dialog, unsigned short id, const unsigned char* text) {
    if (text != nullptr)
        JXW_SetDlgItemText(dialog, id, asChars(text));
}

unsigned int open(HWND dialog, uintptr_t lparam) {
    auto* record = takeRecord<AddDriverRecord>(dialog, lparam);
    if (record == nullptr)
        return 0;
    record->confirmed = 0;
    show(dialog, JxDirectoryEdit, record->proposed);
    show(dialog, JxDirectoryText, record->text);
    winCenterBox(dialog);
    return 1;
}

// Deliberate: what is looked for is a backslash, what is appended a slash. A directory that was typed with a slash at
// its end gets a second one, and the proposed "A:\" is taken as it is.
void endWithSeparator(unsigned char* directory) {
    if (directory[BUTSTLEN(directory) - 1] != '\\')
        BUTSTCAT(directory, asBytes("/"));
}

unsigned int confirm(HWND dialog) {
    auto* record = recordOf<AddDriverRecord>(dialog);
    jx::install::OwnedText directory(static_cast<unsigned char*>(ramAllocZ(kDirectorySize)));
    // What an ended dialog took is its caller's.
    if (record == nullptr || directory == nullptr || JXW_IsDialogEnded(dialog, nullptr) != 0)
        return 0;
    JXW_GetDlgItemText(dialog, JxDirectoryEdit, reinterpret_cast<char*>(directory.get()), kReadSize);
    if (directory[0] == 0) {
        record->chosen = nullptr;
        jx::showMessage(dialog, asBytes("The entry field needs to be filled to proceed"), MB_OK);
        return 0;
    }
    endWithSeparator(directory.get());
    record->chosen = directory.release();
    record->confirmed = 1;
    return endDialog(dialog);
}

unsigned int command(HWND dialog, int id) {
    switch (id) {
        case JxClaimedCommand:
            return 1;
        case IDOK:
            return confirm(dialog);
        case IDCANCEL:
            return endDialog(dialog);
        default:
            return 0;
    }
}

}  // namespace

unsigned int AddDriverDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    switch (message) {
        case WM_INITDIALOG:
            return open(hwnd, lparam);
        case WM_COMMAND:
            return command(hwnd, wparam);
        default:
            return 0;
    }
}
