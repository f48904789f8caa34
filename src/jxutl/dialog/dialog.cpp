// The life of a dialog: made from a template, run, ended, destroyed.
#include "jxutl/dialog/dialog.h"

#include <string_view>
#include <utility>

#include <jxscreen.h>
#include <jxwindow.h>
#include "jxutl/dialog/desk.h"
#include "jxutl/dialog/disabled_owner.h"
#include "jxutl/dialog/focus.h"
#include "jxutl/dialog/messages.h"
#include "jxutl/dialog/modules.h"

namespace jx::dialog {

namespace {

Control makeControl(const ControlTemplate& shape) {
    Control control;
    control.kind = shape.kind;
    control.id = shape.id;
    control.x = shape.x;
    control.y = shape.y;
    control.width = shape.width;
    control.height = shape.height;
    control.text = shape.text;
    control.flags = shape.flags;
    control.enabled = (shape.flags & JXW_GREY) == 0;
    return control;
}

// Whether the control at index belongs to the group of the radio button before it.
bool continuesGroup(const Dialog& dialog, std::size_t index) {
    const Control& control = dialog.controls[index];
    return control.kind == JXW_RADIO && (control.flags & JXW_GROUP) == 0;
}

int lowerKey(char character) {
    if (character >= 'A' && character <= 'Z')
        return character - 'A' + 'a';
    const bool isKey = (character >= 'a' && character <= 'z') || (character >= '0' && character <= '9');
    return isKey ? character : 0;
}

}  // namespace

DialogPointer makeDialog(const DialogTemplate& shape) {
    auto dialog = std::make_shared<Dialog>();
    dialog->templateId = shape.id;
    dialog->title = shape.title;
    dialog->width = shape.width;
    dialog->height = shape.height;
    for (const ControlTemplate& control : shape.controls)
        dialog->controls.push_back(makeControl(control));
    return dialog;
}

Range radioGroup(const Dialog& dialog, std::size_t index) {
    Range group{index, index + 1};
    while (group.begin > 0 && continuesGroup(dialog, group.begin) && dialog.controls[group.begin - 1].kind == JXW_RADIO)
        --group.begin;
    while (group.end < dialog.controls.size() && continuesGroup(dialog, group.end))
        ++group.end;
    return group;
}

int accessKeyOf(const Control& control) {
    if (control.kind == JXW_EDIT || (control.flags & JXW_PLAIN) != 0)
        return 0;
    const std::string_view text = control.text;
    for (std::size_t at = text.find('&'); at != std::string_view::npos && at + 1 < text.size();
         at = text.find('&', at + 2)) {
        if (text[at + 1] != '&')
            return lowerKey(text[at + 1]);
    }
    return 0;
}

}  // namespace jx::dialog

using namespace jx::dialog;

namespace {

constexpr int kFailed = -1;

// OwnedDialog: destroys its dialog when its scope is left, unless released. A dialog already destroyed is ignored.
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

// Makes a dialog without calling its procedure or the screen; null when there is no such template.
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

// Lets the procedure set the dialog up. Unless it set the focus, the first control that can take it gets it.
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
    desk.notifyOpened(*dialog);
    if (dialogOf(dialog->handle) == dialog)
        desk.activate(dialog);
}

// The user has left: closes the dialog, or ends it with failure when that does not end it.
void closeFor(const DialogPointer& dialog) {
    JXW_UserKey(dialog->handle, JXW_KEY_CLOSE);
    if (!dialog->ended)
        JXW_EndDialog(dialog->handle, kFailed);
}

// The modal loop: posted messages are delivered before the user acts.
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
    OwnedDialog owned;  // destroyed after the owner is enabled again, so that the owner can take the focus
    const DisabledOwner disabled(owner);
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
