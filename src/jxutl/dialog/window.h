// A dialog or control by its handle.
#pragma once

#include <cstddef>

#include "jxutl/dialog/dialog.h"

namespace jx::dialog {

// Window: what a handle stands for; it keeps the dialog alive. control is null for the dialog itself; both are null for
// an unknown handle.
struct Window {
    DialogPointer dialog;
    Control* control = nullptr;

    explicit operator bool() const { return dialog.get() != nullptr; }
    bool isControl() const { return dialog.get() != nullptr && control != nullptr; }
    bool isDialog() const { return dialog != nullptr && control == nullptr; }
    std::size_t index() const { return static_cast<std::size_t>(control - dialog->controls.data()); }
};

}  // namespace jx::dialog
