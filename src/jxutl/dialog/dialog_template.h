// Dialog templates as the layer keeps them: copies of what modules registered.
#pragma once

#include <string>
#include <vector>

#include <jxtemplate.h>

namespace jx::dialog {

struct ControlTemplate {
    int kind;
    unsigned short id;
    short x, y, width, height;
    std::string text;
    unsigned int flags;
    bool operator==(const ControlTemplate&) const = default;
};

struct DialogTemplate {
    unsigned short id;
    std::string title;
    short width, height;
    std::vector<ControlTemplate> controls;
    bool operator==(const DialogTemplate&) const = default;
};

using DialogTemplates = std::vector<DialogTemplate>;

// A copy of an array as JXW_RegisterModule takes it; null is an empty one.
DialogTemplates copyOf(const JxwTemplate* templates);

}  // namespace jx::dialog
