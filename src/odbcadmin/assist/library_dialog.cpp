// Standing between a screen and the library's procedures.
#include "odbcadmin/assist/library_dialog.h"

#include <jxwindow.h>

#include <algorithm>
#include <vector>

#include "odbcadmin/assist/library_command.h"
#include "odbcadmin/assist/lists.h"
#include "odbcadmin/trial/installer_library.h"

namespace jx::assist {

namespace {

struct Watched {
    HWND dialog;  // 0 until its first message
    unsigned short templateId;
    JxwProcedure procedure;
    void* record;
};

// One inside another; the last one may have no handle yet.
thread_local std::vector<Watched> watched;

Watched* watchedDialog(HWND dialog) {
    const auto found =
        std::find_if(watched.rbegin(), watched.rend(), [&](const Watched& each) { return each.dialog == dialog; });
    return found == watched.rend() ? nullptr : &*found;
}

unsigned int watch(HWND dialog, int message, int wparam, uintptr_t lparam) {
    if (message == WM_INITDIALOG && watchedDialog(dialog) == nullptr)
        watched.back().dialog = dialog;
    const Watched* found = watchedDialog(dialog);
    if (found == nullptr)
        return 0;
    const Watched each = *found;  // the list may move while a dialog opens others
    const int notification = static_cast<int>((lparam >> 16U) & 0xFFFFU);
    if (message == WM_COMMAND && isAnswered({dialog, each.templateId, wparam, notification}))
        return 0;
    const unsigned int result = each.procedure(dialog, message, wparam, lparam);
    // The library fills its list at first and after many a command, but not when another row was chosen: arrow keys
    // stay quick.
    if (message == WM_INITDIALOG || (message == WM_COMMAND && notification != LBN_SELCHANGE))
        completeList(dialog);
    return result;
}

}  // namespace

int32_t showLibraryDialog(HWND owner, unsigned short templateId, JxwProcedure procedure, void* record) {
    struct Leave {
        std::size_t depth = watched.size();
        ~Leave() { watched.resize(depth); }
    };
    const Leave leave;
    watched.push_back({0, templateId, procedure, record});
    return JXW_DialogBox(trial::kInstallerModule, templateId, owner, watch, record);
}

void refillLibraryDialog(HWND dialog) {
    if (const Watched* found = watchedDialog(dialog)) {
        const Watched each = *found;
        each.procedure(dialog, WM_INITDIALOG, 0, reinterpret_cast<uintptr_t>(each.record));
    }
}

}  // namespace jx::assist
