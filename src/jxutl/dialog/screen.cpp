// Sets the thread's screen, and reads dialogs and controls.
#include <jxscreen.h>

#include "jxutl/dialog/desk.h"

using namespace jx::dialog;

namespace {

// The control at index of a dialog; empty without one.
Window controlAt(HWND dialog, int index) {
    const DialogPointer around = dialogOf(dialog);
    if (around == nullptr || index < 0 || static_cast<std::size_t>(index) >= around->controls.size())
        return {};
    return {around, &around->controls[static_cast<std::size_t>(index)]};
}

JxwControlInfo infoOf(const Window& window) {
    const Control& control = *window.control;
    JxwControlInfo info{};
    info.control = window.dialog->handleAt(window.index());
    info.kind = control.kind;
    info.id = control.id;
    info.x = control.x;
    info.y = control.y;
    info.width = control.width;
    info.height = control.height;
    info.text = control.text.c_str();
    info.flags = control.flags;
    info.accessKey = accessKeyOf(control);
    info.enabled = control.enabled ? 1 : 0;
    info.checked = control.checked ? 1 : 0;
    info.rowCount = control.list.rowCount();
    info.selection = control.list.selection();
    return info;
}

JxwDialogInfo infoOf(const Dialog& dialog, bool isActive) {
    JxwDialogInfo info{};
    info.dialog = dialog.handle;
    info.owner = dialog.owner;
    info.module = dialog.module.c_str();
    info.templateId = dialog.templateId;
    info.title = dialog.title.c_str();
    info.width = dialog.width;
    info.height = dialog.height;
    info.controlCount = static_cast<int>(dialog.controls.size());
    info.focus = dialog.focus;
    info.active = isActive ? 1 : 0;
    info.enabled = dialog.isEnabled() ? 1 : 0;
    info.centered = dialog.centered ? 1 : 0;
    info.ended = dialog.ended ? 1 : 0;
    return info;
}

}  // namespace

int JXW_SetScreen(const JxwScreen* screen) {
    Desk* own = screen != nullptr ? desk() : existingDesk();
    if (own == nullptr)
        return screen == nullptr ? 1 : 0;
    own->screen = screen != nullptr ? *screen : JxwScreen{};
    return 1;
}

HWND JXW_NextDialog(HWND previous) {
    const Desk* own = existingDesk();
    return own != nullptr ? own->next(previous) : 0;
}

int JXW_GetDialogInfo(HWND dialog, JxwDialogInfo* info) {
    const DialogPointer asked = dialogOf(dialog);
    if (asked == nullptr || info == nullptr)
        return 0;
    *info = infoOf(*asked, existingDesk()->active() == asked);
    return 1;
}

int JXW_GetControlInfo(HWND dialog, int index, JxwControlInfo* info) {
    const Window control = controlAt(dialog, index);
    if (!control.isControl() || info == nullptr)
        return 0;
    *info = infoOf(control);
    return 1;
}

const char* JXW_GetRow(HWND dialog, int index, int row) {
    const Window control = controlAt(dialog, index);
    const std::string* text = control.isControl() ? control.control->list.row(row) : nullptr;
    return text != nullptr ? text->c_str() : nullptr;
}
