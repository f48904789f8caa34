// Moves the focus between controls and dialogs.
#include "jxutl/dialog/focus.h"

#include "jxutl/dialog/desk.h"

namespace jx::dialog {

namespace {

// Whether Tab stops at the radio button at index.
bool isStopOfGroup(const Dialog& dialog, std::size_t index) {
    const Range group = radioGroup(dialog, index);
    std::size_t stop = group.end;
    for (std::size_t at = group.begin; at < group.end; ++at) {
        const Control& button = dialog.controls[at];
        if (button.takesFocus() && (stop == group.end || button.checked))
            stop = at;
    }
    return stop == index;
}

bool isStop(const Dialog& dialog, std::size_t index) {
    const Control& control = dialog.controls[index];
    return control.takesFocus() && (control.kind != JXW_RADIO || isStopOfGroup(dialog, index));
}

bool sharesGroup(const Dialog& dialog, std::size_t index, int from) {
    if (from < 0 || dialog.controls[index].kind != JXW_RADIO)
        return false;
    return radioGroup(dialog, index).holds(static_cast<std::size_t>(from));
}

HWND focusHandle(const Dialog& dialog) {
    return dialog.focus >= 0 ? dialog.handleAt(static_cast<std::size_t>(dialog.focus)) : dialog.handle;
}

bool canHaveFocus(const Window& window) {
    return window.dialog->isUsable() && (window.control == nullptr || window.control->takesFocus());
}

}  // namespace

int nextStop(const Dialog& dialog, int index, Direction direction) {
    const auto count = static_cast<int>(dialog.controls.size());
    const int step = direction == Direction::forward ? 1 : -1;
    int at = index < 0 && direction == Direction::backward ? count : index;
    for (int tried = 0; tried < count; ++tried) {
        at = (at + step + count) % count;
        const auto place = static_cast<std::size_t>(at);
        if (isStop(dialog, place) && !sharesGroup(dialog, place, index))
            return at;
    }
    return index >= 0 && dialog.controls[static_cast<std::size_t>(index)].takesFocus() ? index : -1;
}

void moveFocus(Dialog& dialog, int index) {
    if (dialog.focus == index)
        return;
    dialog.focus = index;
    notifyChanged(dialog);
}

}  // namespace jx::dialog

HWND JXW_SetFocus(HWND hwnd) {
    using namespace jx::dialog;
    const Window window = windowOf(hwnd);
    if (!window || !canHaveFocus(window))
        return 0;
    const HWND before = JXW_GetFocus();
    if (window.control != nullptr)
        moveFocus(*window.dialog, static_cast<int>(window.index()));
    existingDesk()->activate(window.dialog);
    return before != 0 ? before : hwnd;
}

HWND JXW_GetFocus(void) {
    using namespace jx::dialog;
    Desk* own = existingDesk();
    const DialogPointer active = own != nullptr ? own->active() : nullptr;
    return active != nullptr ? focusHandle(*active) : 0;
}
