// Delivering messages to dialog procedures and controls.
#pragma once

#include "jxutl/dialog/window.h"

namespace jx::dialog {

// Calls the dialog's procedure. The dialog may end or go meanwhile; the pointer keeps it readable until the return.
int callProcedure(DialogPointer dialog, int message, int wparam, std::uintptr_t lparam);

// Tells the dialog that something happened to control id.
void notify(const DialogPointer& dialog, unsigned short id, int notification);

// Answers a message to a control; 0 for one that its kind does not know.
int answer(const Window& window, int message, int wparam, std::uintptr_t lparam);

}  // namespace jx::dialog
