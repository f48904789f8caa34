// Disables a dialog while a dialog or message box of its own is in front.
#pragma once

#include "jxutl/dialog/desk.h"

namespace jx::dialog {

// DisabledOwner: disables the dialog with handle owner, or the dialog of that control, while it exists. Any other
// handle has no effect. They nest: the dialog is enabled again when the last one ends.
class DisabledOwner {
public:
    explicit DisabledOwner(HWND owner) : dialog_(windowOf(owner).dialog) { block(1); }
    ~DisabledOwner() { block(-1); }
    DisabledOwner(const DisabledOwner&) = delete;
    DisabledOwner& operator=(const DisabledOwner&) = delete;

private:
    void block(int change) {
        if (dialog_ == nullptr)
            return;
        dialog_->blockers += change;
        notifyChanged(*dialog_);
    }

    DialogPointer dialog_;
};

}  // namespace jx::dialog
