// The fields of one key: its name, and two for its value, one visible and one for secrets.
#include "setup/key_fields.h"

#include "rules/names.h"
#include "setup/data_source_form.h"
#include "setup/setup_template.h"

namespace jx::setup {

namespace {

bool isEnabled(HWND dialog, unsigned short id) {
    return JXW_IsWindowEnabled(JXW_GetDlgItem(dialog, id)) != 0;
}

void enable(HWND dialog, unsigned short id, bool enabled) {
    JXW_EnableWindow(JXW_GetDlgItem(dialog, id), enabled ? 1 : 0);
}

void useField(HWND dialog, bool hidden) {
    enable(dialog, hidden ? kHiddenEdit : kValueEdit, /*enabled=*/true);
    enable(dialog, hidden ? kValueEdit : kHiddenEdit, /*enabled=*/false);
    JXW_SetDlgItemText(dialog, hidden ? kValueEdit : kHiddenEdit, "");
}

}  // namespace

std::string fieldText(HWND dialog, unsigned short id) {
    std::string text;
    int length = 0;
    do {
        text.resize(text.empty() ? 256 : text.size() * 2);
        length = JXW_GetDlgItemText(dialog, id, text.data(), static_cast<int>(text.size()));
    } while (static_cast<std::size_t>(length) + 1 == text.size());
    text.resize(static_cast<std::size_t>(length));
    return text;
}

void showPair(HWND dialog, const Attribute& pair) {
    const bool hidden = isSecret(pair);
    JXW_SetDlgItemText(dialog, kKeyEdit, pair.keyword.c_str());
    useField(dialog, hidden);
    JXW_SetDlgItemText(dialog, hidden ? kHiddenEdit : kValueEdit, pair.value.c_str());
}

Attribute typedPair(HWND dialog) {
    return {std::string(rules::trimmed(fieldText(dialog, kKeyEdit))),
            fieldText(dialog, isEnabled(dialog, kHiddenEdit) ? kHiddenEdit : kValueEdit)};
}

void followKey(HWND dialog) {
    const bool hidden = isSecret(typedPair(dialog));
    if (hidden == isEnabled(dialog, kHiddenEdit))
        return;
    if (hidden)
        JXW_SetDlgItemText(dialog, kHiddenEdit, fieldText(dialog, kValueEdit).c_str());
    useField(dialog, hidden);
}

}  // namespace jx::setup
