// The Add Driver dialog: asks for the directory of an installation script.
#include <jxmemory.h>
#include <jxtext.h>
#include <jxwindow.h>
#include <odbcinst.h>

#include "admin/dialog_procedure.h"
#include "admin/driver_addition.h"
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

void open(HWND dialog, AddDriverRecord& record) {
    record.confirmed = 0;
    show(dialog, JxDirectoryEdit, record.proposed);
    show(dialog, JxDirectoryText, record.text);
}

// Deliberate: looks for a backslash, but appends a slash. A directory typed with a slash at its end gets a second one;
// the proposed "A:\" stays as it is.
void endWithSeparator(unsigned char* directory) {
    if (directory[BUTSTLEN(directory) - 1] != '\\')
        BUTSTCAT(directory, asBytes("/"));
}

void confirm(HWND dialog, AddDriverRecord& record) {
    jx::install::OwnedText directory(static_cast<unsigned char*>(ramAllocZ(kDirectorySize)));
    // After the dialog has ended, the directory belongs to the caller.
    if (directory == nullptr || JXW_IsDialogEnded(dialog, nullptr) != 0)
        return;
    JXW_GetDlgItemText(dialog, JxDirectoryEdit, reinterpret_cast<char*>(directory.get()), kReadSize);
    if (directory[0] == 0) {
        record.chosen = nullptr;
        jx::showMessage(dialog, asBytes("The entry field needs to be filled to proceed"), MB_OK);
        return;
    }
    endWithSeparator(directory.get());
    record.chosen = directory.release();
    record.confirmed = 1;
    endDialog(dialog);
}

constexpr Reaction<AddDriverRecord> kReactions[] = {{IDOK, confirm}};

constexpr DialogKind<AddDriverRecord> kDialog{.open = open, .reactions = kReactions, .closing = IDCANCEL};

}  // namespace

unsigned int AddDriverDlgProc(HWND hwnd, int message, int wparam, uintptr_t lparam) {
    return answer(kDialog, hwnd, message, wparam, lparam);
}
