// Properties, texts, enabling and check marks of dialogs and controls.
#include "jxutl/dialog/controls.h"

#include <algorithm>
#include <cstring>

#include <jxdialog.h>
#include "jxutl/dialog/desk.h"
#include "jxutl/dialog/focus.h"

namespace jx::dialog {

void setChecked(const Window& box, bool checked) {
    if (box.control->checked == checked)
        return;
    box.control->checked = checked;
    notifyChanged(box);
}

}  // namespace jx::dialog

using namespace jx::dialog;

namespace {

Properties& propertiesOf(const Window& window) {
    return window.control != nullptr ? window.control->properties : window.dialog->properties;
}

int setText(const Window& window, const char* text) {
    if (!window)
        return 0;
    std::string& place = window.control != nullptr ? window.control->text : window.dialog->title;
    const int set = orWhenShort(0, [&] {
        place = text != nullptr ? text : "";
        return 1;
    });
    notifyChanged(window);
    return set;
}

// A greyed control cannot keep the focus: the next one gets it.
void passFocusFrom(const Window& greyed) {
    const auto index = static_cast<int>(greyed.index());
    if (greyed.dialog->focus == index)
        moveFocus(*greyed.dialog, nextStop(*greyed.dialog, index, Direction::forward));
}

void enableControl(const Window& window, bool enable) {
    if (window.control->enabled == enable)
        return;
    window.control->enabled = enable;
    notifyChanged(window);
    if (!enable)
        passFocusFrom(window);
}

// Clears every radio button of the dialog that mayClear names, but for the one at index.
template <class MayClear>
void clearOthers(const Window& chosen, MayClear mayClear) {
    auto& controls = chosen.dialog->controls;
    for (std::size_t at = 0; at < controls.size(); ++at) {
        if (controls[at].kind == JXW_RADIO && at != chosen.index() && mayClear(at))
            setChecked({chosen.dialog, &controls[at]}, /*checked=*/false);
    }
}

}  // namespace

int JXW_SetProp(HWND hwnd, const char* name, uintptr_t value) {
    const Window window = windowOf(hwnd);
    if (!window || name == nullptr)
        return 0;
    return orWhenShort(0, [&] {
        propertiesOf(window).insert_or_assign(name, value);
        return 1;
    });
}

uintptr_t JXW_GetProp(HWND hwnd, const char* name) {
    const Window window = windowOf(hwnd);
    if (!window || name == nullptr)
        return 0;
    const Properties& properties = propertiesOf(window);
    const auto found = properties.find(std::string_view(name));
    return found != properties.end() ? found->second : 0;
}

int JXW_SetWindowText(HWND hwnd, const char* text) {
    return setText(windowOf(hwnd), text);
}

int winCenterBox(HWND dialog) {
    const DialogPointer placed = dialogOf(dialog);
    if (placed == nullptr)
        return 0;
    placed->centered = true;
    notifyChanged(*placed);
    return 1;
}

HWND JXW_GetDlgItem(HWND dialog, unsigned short id) {
    const Window item = itemOf(dialog, id);
    return item ? item.dialog->handleAt(item.index()) : 0;
}

int JXW_EnableWindow(HWND hwnd, int enable) {
    const Window window = windowOf(hwnd);
    if (!window)
        return 0;
    if (window.control != nullptr) {
        enableControl(window, enable != 0);
    } else {
        window.dialog->enabled = enable != 0;
        notifyChanged(window);
    }
    return 1;
}

int JXW_IsWindowEnabled(HWND hwnd) {
    const Window window = windowOf(hwnd);
    if (!window)
        return 0;
    const bool enabled = window.control != nullptr ? window.control->enabled : window.dialog->isEnabled();
    return enabled ? 1 : 0;
}

int JXW_SetDlgItemText(HWND dialog, unsigned short id, const char* text) {
    return setText(itemOf(dialog, id), text);
}

int JXW_GetDlgItemText(HWND dialog, unsigned short id, char* buffer, int size) {
    if (buffer == nullptr || size <= 0)
        return 0;
    const Window item = itemOf(dialog, id);
    const std::string_view text = item ? std::string_view(item.control->text) : std::string_view();
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(size) - 1);
    text.copy(buffer, length);
    buffer[length] = '\0';
    return static_cast<int>(length);
}

int JXW_CheckDlgButton(HWND dialog, unsigned short id, int state) {
    const Window item = itemOf(dialog, id);
    if (!item || !item.control->isBox())
        return 0;
    setChecked(item, state != 0);
    return 1;
}

int JXW_IsDlgButtonChecked(HWND dialog, unsigned short id) {
    return JXW_SendDlgItemMessage(dialog, id, BM_GETCHECK, 0, 0) == 1 ? 1 : 0;
}

int JXW_CheckRadioButton(HWND dialog, unsigned short first, unsigned short last, unsigned short id) {
    const Window chosen = itemOf(dialog, id);
    if (!chosen || chosen.control->kind != JXW_RADIO)
        return 0;
    const Dialog& around = *chosen.dialog;
    const Range group = radioGroup(around, chosen.index());
    const bool byGroup = first == 0 && last == 0;
    clearOthers(chosen, [&](std::size_t at) {
        const unsigned short other = around.controls[at].id;
        return byGroup ? group.holds(at) : other >= first && other <= last;
    });
    setChecked(chosen, /*checked=*/true);
    return 1;
}
