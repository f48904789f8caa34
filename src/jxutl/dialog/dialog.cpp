// The life of a dialog: made, run, ended, destroyed.
#include <utility>

#include <jxscreen.h>
#include <jxwindow.h>
#include "jxutl/dialog/dialog_template.h"
#include "jxutl/dialog/focus.h"
#include "jxutl/dialog/messages.h"
#include "jxutl/dialog/owner_turn.h"

using namespace jx::dialog;

namespace {

constexpr int kFailed = -1;

// OwnedDialog: destroys its dialog when its scope is left, unless released; one that is gone by then is no matter.
class OwnedDialog {
public:
    OwnedDialog() = default;
    explicit OwnedDialog(HWND handle) : handle_(handle) {}
    ~OwnedDialog() { JXW_DestroyDialog(handle_); }
    OwnedDialog(const OwnedDialog&) = delete;
    OwnedDialog& operator=(const OwnedDialog&) = delete;

    void take(HWND handle) { handle_ = handle; }
    HWND handle() const { return handle_; }
    HWND release() { return std::exchange(handle_, 0); }

private:
    HWND handle_ = 0;
};

// Makes a dialog that no one was told of yet; null when there is no template or no memory.
DialogPointer enterDialog(Desk& desk, const char* module, unsigned short templateId, HWND owner,
                          JxwProcedure procedure) {
    const auto shape = findTemplate(module, templateId);
    if (shape == nullptr)
        return nullptr;
    DialogPointer dialog = makeDialog(*shape);
    const Window above = desk.find(owner);
    dialog->owner = above ? above.dialog->handle : 0;
    dialog->module = module;
    dialog->procedure = procedure;
    return desk.enter(dialog) ? dialog : nullptr;
}

// Lets the procedure set the dialog up; the focus it did not set goes to the first control that can take it.
void initialize(const DialogPointer& dialog, void* record) {
    const int first = nextStop(*dialog, -1, Direction::forward);
    const HWND control = first >= 0 ? dialog->handleAt(static_cast<std::size_t>(first)) : 0;
    callProcedure(dialog, WM_INITDIALOG, static_cast<int>(control), reinterpret_cast<std::uintptr_t>(record));
    if (dialog->focus < 0)
        dialog->focus = nextStop(*dialog, -1, Direction::forward);
}

void show(Desk& desk, const DialogPointer& dialog) {
    if (dialog->ended)
        return;
    desk.tellOpened(*dialog);
    if (dialogOf(dialog->handle) == dialog)
        desk.activate(dialog);
}

// The user has gone: the dialog gets the chance to close, and what still stays open then has failed.
void closeFor(const DialogPointer& dialog) {
    JXW_UserKey(dialog->handle, JXW_KEY_CLOSE);
    if (!dialog->ended)
        JXW_EndDialog(dialog->handle, kFailed);
}

// The modal loop: what is posted goes before what the user does.
void runUntilEnded(Desk& desk, const DialogPointer& dialog) {
    while (!dialog->ended && dialogOf(dialog->handle) != nullptr) {
        if (desk.hasPosted())
            JXW_DispatchMessages(0);
        else if (desk.screen.wait == nullptr || desk.screen.wait(desk.screen.context, dialog->handle) == 0)
            closeFor(dialog);
    }
}

}  // namespace

HWND JXW_CreateDialog(const char* module, unsigned short templateId, HWND owner, JxwProcedure procedure, void* record) {
    Desk* own = desk();
    if (own == nullptr || module == nullptr || procedure == nullptr)
        return 0;
    const DialogPointer dialog =
        orWhenShort(DialogPointer(), [&] { return enterDialog(*own, module, templateId, owner, procedure); });
    if (dialog == nullptr)
        return 0;
    OwnedDialog owned(dialog->handle);
    initialize(dialog, record);
    if (dialogOf(dialog->handle) == nullptr)
        return 0;
    show(*own, dialog);
    return dialogOf(dialog->handle) != nullptr ? owned.release() : 0;
}

int JXW_DialogBox(const char* module, unsigned short templateId, HWND owner, JxwProcedure procedure, void* record) {
    Desk* own = existingDesk();
    if (own == nullptr || own->screen.wait == nullptr)
        return kFailed;
    OwnedDialog owned;  // goes last: its owner is enabled again before, so that the focus finds it ready
    const OwnerTurn ownerWaits(owner);
    owned.take(JXW_CreateDialog(module, templateId, owner, procedure, record));
    const DialogPointer dialog = dialogOf(owned.handle());
    if (dialog == nullptr)
        return kFailed;
    runUntilEnded(*own, dialog);
    return dialog->ended ? dialog->result : kFailed;
}

int JXW_EndDialog(HWND dialog, int result) {
    const DialogPointer ending = dialogOf(dialog);
    if (ending == nullptr)
        return 0;
    ending->result = result;
    ending->ended = true;
    return 1;
}

int JXW_IsDialogEnded(HWND dialog, int* result) {
    const DialogPointer asked = dialogOf(dialog);
    if (asked == nullptr || !asked->ended)
        return 0;
    if (result != nullptr)
        *result = asked->result;
    return 1;
}

int JXW_DestroyDialog(HWND dialog) {
    const DialogPointer going = dialogOf(dialog);
    if (going == nullptr)
        return 0;
    existingDesk()->remove(going);
    return 1;
}
