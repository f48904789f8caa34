// A dialog that waits behind something modal of its own.
#pragma once

#include "jxutl/dialog/desk.h"

namespace jx::dialog {

// OwnerTurn: disables the dialog that owner names (or whose control it names) until its scope is left; no dialog, no
// effect. Turns nest; the dialog is enabled again when the last one ends.
class OwnerTurn {
public:
    explicit OwnerTurn(HWND owner) : dialog_(windowOf(owner).dialog) { block(1); }
    ~OwnerTurn() { block(-1); }
    OwnerTurn(const OwnerTurn&) = delete;
    OwnerTurn& operator=(const OwnerTurn&) = delete;

private:
    void block(int change) {
        if (dialog_ == nullptr)
            return;
        dialog_->blockers += change;
        tellChanged(*dialog_);
    }

    DialogPointer dialog_;
};

}  // namespace jx::dialog
