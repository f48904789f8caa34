// Carries out the user's actions.
#include <algorithm>

#include <jxscreen.h>
#include "jxutl/dialog/controls.h"
#include "jxutl/dialog/desk.h"
#include "jxutl/dialog/focus.h"
#include "jxutl/dialog/messages.h"

using namespace jx::dialog;

namespace {

// Control id of a dialog, when it is of this kind and the user can act on it now; else an empty window.
Window usable(HWND dialog, unsigned short id, int kind) {
    Window item = itemOf(dialog, id);
    if (!item || item.control->kind != kind || !item.control->enabled || !item.dialog->isUsable())
        return {};
    return item;
}

void takeFocus(const Window& item) {
    moveFocus(*item.dialog, static_cast<int>(item.index()));
}

int press(const DialogPointer& dialog, unsigned short id) {
    notify(dialog, id, BN_CLICKED);
    return 1;
}

// The first control that fits, or null.
template <class Fits>
Control* findControl(Dialog& dialog, Fits fits) {
    const auto found = std::find_if(dialog.controls.begin(), dialog.controls.end(), fits);
    return found != dialog.controls.end() ? &*found : nullptr;
}

int pressIfEnabled(const DialogPointer& dialog, const Control* button) {
    return button != nullptr && button->enabled ? press(dialog, button->id) : 0;
}

bool isButton(const Control& control, unsigned int flag) {
    return control.kind == JXW_BUTTON && (control.flags & flag) != 0;
}

int enter(const DialogPointer& dialog) {
    if (dialog->focus >= 0) {
        const Control& focused = dialog->controls[static_cast<std::size_t>(dialog->focus)];
        if (focused.kind == JXW_BUTTON)
            return pressIfEnabled(dialog, &focused);
    }
    return pressIfEnabled(dialog, findControl(*dialog, [](const Control& c) { return isButton(c, JXW_DEFAULT); }));
}

int cancel(const DialogPointer& dialog) {
    if (const Window button = itemOf(dialog->handle, IDCANCEL))
        return pressIfEnabled(dialog, button.control);
    if (const Control* button = findControl(*dialog, [](const Control& c) { return isButton(c, JXW_CLOSE); }))
        return pressIfEnabled(dialog, button);
    return press(dialog, IDCANCEL);
}

// Moves the focus to the next stop after the control at index.
int moveOn(Dialog& dialog, int index, Direction direction) {
    const int next = nextStop(dialog, index, direction);
    if (next < 0)
        return 0;
    moveFocus(dialog, next);
    return 1;
}

int act(const DialogPointer& dialog, const Control& control) {
    const auto index = &control - dialog->controls.data();
    switch (control.kind) {
        case JXW_BUTTON:
            return JXW_UserCommand(dialog->handle, control.id);
        case JXW_CHECKBOX:
        case JXW_RADIO:
            return JXW_UserCheck(dialog->handle, control.id);
        case JXW_LABEL:
        case JXW_GROUPBOX:
            return moveOn(*dialog, static_cast<int>(index), Direction::forward);
        default:
            return 0;
    }
}

int selectRow(const Window& list, int row) {
    if (row != -1 && list.control->list.row(row) == nullptr)
        return 0;
    list.control->list.select(row);
    takeFocus(list);
    notifyChanged(list);
    notify(list.dialog, list.control->id, LBN_SELCHANGE);
    return 1;
}

}  // namespace

int JXW_UserCommand(HWND dialog, unsigned short id) {
    const Window button = usable(dialog, id, JXW_BUTTON);
    if (!button)
        return 0;
    takeFocus(button);
    return press(button.dialog, id);
}

int JXW_UserSelect(HWND dialog, unsigned short id, int row) {
    const Window list = usable(dialog, id, JXW_LISTBOX);
    return list.isControl() ? selectRow(list, row) : 0;
}

int JXW_UserDoubleClick(HWND dialog, unsigned short id, int row) {
    const Window list = usable(dialog, id, JXW_LISTBOX);
    if (!list.isControl() || list.control->list.row(row) == nullptr)
        return 0;
    if (list.control->list.selection() != row)
        selectRow(list, row);
    // LBN_SELCHANGE may have ended or changed the dialog: the second click then has no effect.
    if (!usable(dialog, id, JXW_LISTBOX) || list.control->list.selection() != row)
        return 1;
    notify(list.dialog, id, LBN_DBLCLK);
    return 1;
}

int JXW_UserEdit(HWND dialog, unsigned short id, const char* text) {
    const Window field = usable(dialog, id, JXW_EDIT);
    if (!field || JXW_SetDlgItemText(dialog, id, text) == 0)
        return 0;
    takeFocus(field);
    notify(field.dialog, id, EN_CHANGE);
    return 1;
}

int JXW_UserCheck(HWND dialog, unsigned short id) {
    Window box = usable(dialog, id, JXW_CHECKBOX);
    if (box) {
        setChecked(box, !box.control->checked);
    } else {
        box = usable(dialog, id, JXW_RADIO);
        if (!box)
            return 0;
        JXW_CheckRadioButton(dialog, 0, 0, id);
    }
    takeFocus(box);
    return press(box.dialog, id);
}

int JXW_UserFocus(HWND dialog, unsigned short id) {
    const Window item = itemOf(dialog, id);
    if (!item || !item.control->takesFocus() || !item.dialog->isUsable())
        return 0;
    takeFocus(item);
    return 1;
}

int JXW_UserKey(HWND dialog, int key) {
    const DialogPointer hit = dialogOf(dialog);
    if (hit == nullptr || !hit->isUsable())
        return 0;
    switch (key) {
        case JXW_KEY_ENTER:
            return enter(hit);
        case JXW_KEY_ESCAPE:
        case JXW_KEY_CLOSE:
            return cancel(hit);
        case JXW_KEY_NEXT:
            return moveOn(*hit, hit->focus, Direction::forward);
        case JXW_KEY_PREVIOUS:
            return moveOn(*hit, hit->focus, Direction::backward);
        default:
            return 0;
    }
}

int JXW_UserAccessKey(HWND dialog, int character) {
    const DialogPointer hit = dialogOf(dialog);
    const int key = character >= 'A' && character <= 'Z' ? character - 'A' + 'a' : character;
    if (hit == nullptr || !hit->isUsable() || key == 0)
        return 0;
    const Control* control = findControl(
        *hit, [key](const Control& c) { return c.enabled && c.kind != JXW_LISTBOX && accessKeyOf(c) == key; });
    return control != nullptr ? act(hit, *control) : 0;
}
