// Message boxes on the thread's screen.
#pragma once

#include <jxdialog.h>

namespace jx::dialog {

// Lets the calling thread's screen show a message box; false when it cannot. Nothing is allocated.
bool askScreen(HWND owner, const char* text, const char* title, unsigned int style, unsigned int& answer);

}  // namespace jx::dialog
