// Dialogs and their controls, as the layer keeps them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <jxdialog.h>
#include "jxutl/dialog/dialog_template.h"
#include "jxutl/dialog/list_box.h"

namespace jx::dialog {

using Properties = std::map<std::string, std::uintptr_t, std::less<>>;

struct Control {
    int kind = JXW_NO_CONTROL;
    unsigned short id = 0;
    short x = 0, y = 0, width = 0, height = 0;
    std::string text;
    unsigned int flags = 0;
    bool enabled = true;
    bool checked = false;
    ListBox list;
    Properties properties;

    bool isBox() const { return kind == JXW_CHECKBOX || kind == JXW_RADIO; }

    // Whether the user can put the focus here now.
    bool takesFocus() const {
        return enabled && (isBox() || kind == JXW_EDIT || kind == JXW_BUTTON || kind == JXW_LISTBOX);
    }
};

// The handle of control i is the dialog's handle + 1 + i. The number of controls never changes.
struct Dialog {
    HWND handle = 0;
    HWND owner = 0;
    std::string module;
    unsigned short templateId = 0;
    std::string title;
    short width = 0, height = 0;
    std::vector<Control> controls;
    JxwProcedure procedure = nullptr;
    Properties properties;
    int focus = -1;    // index of a control
    int blockers = 0;  // modal dialogs and message boxes of its own in front
    int result = 0;
    bool enabled = true;
    bool ended = false;
    bool shown = false;
    bool centered = false;

    HWND handleAt(std::size_t index) const { return handle + 1 + static_cast<HWND>(index); }
    bool isEnabled() const { return enabled && blockers == 0; }

    // Whether the user can do something here now.
    bool isUsable() const { return isEnabled() && !ended; }
};

using DialogPointer = std::shared_ptr<Dialog>;

// A dialog made from a template; the caller fills in everything else. Throws std::bad_alloc.
DialogPointer makeDialog(const DialogTemplate& shape);

// The controls from begin to before end.
struct Range {
    std::size_t begin, end;
    bool holds(std::size_t index) const { return index >= begin && index < end; }
};

// The group of the radio button at index.
Range radioGroup(const Dialog& dialog, std::size_t index);

// The lower-case letter or digit after the "&" in a control's text; 0 without one, and for edit fields and JXW_PLAIN.
int accessKeyOf(const Control& control);

}  // namespace jx::dialog
