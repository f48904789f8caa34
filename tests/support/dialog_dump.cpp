// Writes dialogs as text from what a screen can see of them.
#include "dialog_dump.h"

#include <jxscreen.h>

#include <cstring>

namespace jx::test {

namespace {

std::string quoted(const std::string& text) {
    return "\"" + text + "\"";
}

const char* kindName(int kind) {
    constexpr const char* kNames[] = {"(none)", "label", "edit", "button", "check", "radio", "list", "group"};
    return kind >= 0 && kind <= JXW_GROUPBOX ? kNames[kind] : "(unknown)";
}

std::string mark(const JxwControlInfo& control) {
    if (control.kind == JXW_CHECKBOX)
        return control.checked != 0 ? " [x]" : " [ ]";
    if (control.kind == JXW_RADIO)
        return control.checked != 0 ? " (o)" : " ( )";
    return "";
}

std::string rows(HWND dialog, int index, const JxwControlInfo& control) {
    std::string lines;
    for (int row = 0; row < control.rowCount; ++row)
        lines += std::string(row == control.selection ? "    > " : "      ") + JXW_GetRow(dialog, index, row) + "\n";
    return lines;
}

std::string line(HWND dialog, int index, bool hasFocus) {
    JxwControlInfo control{};
    JXW_GetControlInfo(dialog, index, &control);
    std::string text = std::string("  ") + kindName(control.kind);
    if (control.id != 0)
        text += " " + std::to_string(control.id);
    text += mark(control);
    const bool hidden = (control.flags & JXW_PASSWORD) != 0;
    if (control.kind != JXW_LISTBOX)
        text += " " + quoted(hidden ? std::string(std::strlen(control.text), '*') : control.text);
    if ((control.flags & JXW_DEFAULT) != 0)
        text += " default";
    if (hidden)
        text += " password";
    if (control.enabled == 0)
        text += " grey";
    if (hasFocus)
        text += " focus";
    return text + "\n" + rows(dialog, index, control);
}

}  // namespace

std::string dumpDialog(HWND dialog) {
    JxwDialogInfo info{};
    if (JXW_GetDialogInfo(dialog, &info) == 0)
        return "(no dialog)";
    std::string text = quoted(info.title);
    if (info.centered != 0)
        text += " centered";
    if (info.enabled == 0)
        text += " grey";
    text += "\n";
    for (int index = 0; index < info.controlCount; ++index)
        text += line(dialog, index, index == info.focus);
    return text;
}

}  // namespace jx::test
