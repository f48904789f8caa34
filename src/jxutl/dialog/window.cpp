// Makes dialogs from templates and answers what follows from the order of their controls and their texts.
#include "jxutl/dialog/window.h"

#include <string_view>

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
