// Adding drivers from an installation script.
#include "admin/driver_addition.h"

#include <jxdialog.h>
#include <jxfiles.h>
#include <odbcinst.h>

#include <utility>

#include <control_ids.h>
#include <text_ids.h>
#include "config/message_box.h"
#include "config/text_bytes.h"
#include "install/owned_text.h"

namespace jx::admin {

namespace {

using install::OwnedText;

// The directory that the user chose; null when the dialog was cancelled.
OwnedText askForDirectory(HWND owner) {
    const OwnedText proposed = install::copyOf("A:\\");
    AddDriverRecord record{0, nullptr, proposed.get(), nullptr};
    jxDllDialog(owner, JxAddDriverDialog, AddDriverDlgProc, &record);
    OwnedText chosen(record.chosen);
    return record.confirmed != 0 ? std::move(chosen) : nullptr;
}

int countFiles(const unsigned char* pattern) {
    void* cursor = nullptr;
    int files = 0;
    while (bosFindFiles(&cursor, pattern) != nullptr)
        ++files;
    return files;
}

bool wantsAnotherDirectory(HWND owner) {
    return showText(owner, JxTextNoScript, nullptr, JxTextDriversTitle, MB_YESNO | MB_ICONQUESTION) != IDNO;
}

}  // namespace

int AddDriver(unsigned int hwnd) {
    for (;;) {
        const OwnedText directory = askForDirectory(hwnd);
        if (directory == nullptr)
            return 0;
        const OwnedText script = install::joined(viewOf(directory.get()), "odbc.inf");
        if (script == nullptr)
            return 0;
        if (countFiles(script.get()) > 0)
            return SQLInstallODBC(hwnd, asChars(script.get()), asChars(directory.get()), nullptr);
        if (!wantsAnotherDirectory(hwnd))
            return 0;
    }
}

}  // namespace jx::admin
