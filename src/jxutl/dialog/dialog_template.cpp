// Copies dialog templates.
#include "jxutl/dialog/dialog_template.h"

namespace jx::dialog {

namespace {

std::string textOf(const char* text) {
    return text != nullptr ? text : "";
}

std::vector<ControlTemplate> copyOf(const JxwControl* controls) {
    std::vector<ControlTemplate> copies;
    for (const JxwControl* next = controls; next != nullptr && next->kind != JXW_NO_CONTROL; ++next)
        copies.push_back(
            {next->kind, next->id, next->x, next->y, next->width, next->height, textOf(next->text), next->flags});
    return copies;
}

}  // namespace

DialogTemplates copyOf(const JxwTemplate* templates) {
    DialogTemplates copies;
    for (const JxwTemplate* next = templates; next != nullptr && next->title != nullptr; ++next)
        copies.push_back({next->id, next->title, next->width, next->height, copyOf(next->controls)});
    return copies;
}

}  // namespace jx::dialog
