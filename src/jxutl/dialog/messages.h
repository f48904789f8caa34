// Delivering messages to dialog procedures and controls.
#pragma once

#include "jxutl/dialog/window.h"

namespace jx::dialog {

// Calls the dialog's procedure. It may end or destroy the dialog; the pointer keeps it readable until the return.
int callProcedure(DialogPointer dialog, int message, int wparam, std::uintptr_t lparam);

// Sends the dialog a notification of control id.
void notify(const DialogPointer& dialog, unsigned short id, int notification);

// Sends a message to a control and returns its result; 0 for a message that its kind does not have.
int answer(const Window& window, int message, int wparam, std::uintptr_t lparam);

}  // namespace jx::dialog
