// Keeps a dialog's record in the properties of its window.
#include "admin/dialog_record.h"

#include "config/list_box.h"

namespace jx::admin {

namespace {

constexpr char kHigh[] = "Segm";
constexpr char kLow[] = "Offset";

}  // namespace

void keepRecord(HWND dialog, std::uintptr_t address) {
    JXW_SetProp(dialog, kHigh, address >> 16);
    JXW_SetProp(dialog, kLow, address & 0xFFFF);
}

void* keptRecord(HWND dialog) {
    const std::uintptr_t address = (JXW_GetProp(dialog, kHigh) << 16) + (JXW_GetProp(dialog, kLow) & 0xFFFF);
    return reinterpret_cast<void*>(address);  // NOLINT(performance-no-int-to-ptr): properties hold numbers
}

void selectFirstRow(HWND dialog, unsigned short listId, unsigned short button) {
    const bool hasRows = rowCount(dialog, listId) >= 1;
    if (hasRows)
        JXW_SendDlgItemMessage(dialog, listId, LB_SETCURSEL, 0, 0);
    enableControl(dialog, button, hasRows);
}

}  // namespace jx::admin
