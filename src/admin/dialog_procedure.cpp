// What the library's dialog procedures share.
#include "admin/dialog_procedure.h"

#include <exception>

#include "config/list_box.h"
#include "config/message_box.h"

namespace jx::admin {

namespace {

constexpr char kHigh[] = "Segm";
constexpr char kLow[] = "Offset";

constexpr char kRowRefused[] =
    "This row cannot be used here: it names no driver, or the name of its data source or of its driver is longer than "
    "49 "
    "bytes.";

}  // namespace

void keepRecord(HWND dialog, std::uintptr_t address) {
    JXW_SetProp(dialog, kHigh, address >> 16);
    JXW_SetProp(dialog, kLow, address & 0xFFFF);
}

void* keptRecord(HWND dialog) {
    const std::uintptr_t address = (JXW_GetProp(dialog, kHigh) << 16) + (JXW_GetProp(dialog, kLow) & 0xFFFF);
    return reinterpret_cast<void*>(address);  // NOLINT(performance-no-int-to-ptr): properties hold numbers
}

void refuseRow(HWND dialog, unsigned short listId) {
    if (selectedRow(dialog, listId) != -1)
        showMessage(dialog, asBytes(kRowRefused), MB_OK | MB_ICONEXCLAMATION);
}

OpenHandle::OpenHandle(std::uintptr_t* handle, HWND dialog)
    : handle_(handle), dialog_(dialog), exceptionsBefore_(std::uncaught_exceptions()) {}

OpenHandle::~OpenHandle() {
    if (handle_ != nullptr && *handle_ == dialog_ && std::uncaught_exceptions() > exceptionsBefore_)
        *handle_ = 0;
}

}  // namespace jx::admin
