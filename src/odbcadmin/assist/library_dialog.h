// A dialog of the library with what the screens add to its commands.
#pragma once

#include <jxdialog.h>

#include <string>

namespace jx::assist {

// Shows a dialog of the library on the thread's screen, as the dialog starters of a program do, and returns its result.
// Each command of the user comes by here first. Some are answered here, with a question or the reason why they cannot
// be carried out (library_command.h); the others reach the library's procedure as they are.
int32_t showLibraryDialog(HWND owner, unsigned short templateId, JxwProcedure procedure, void* record);

// Has the library fill the lists of one of its dialogs once more, as when the dialog was opened. Nothing for other
// dialogs.
void refillLibraryDialog(HWND dialog);

}  // namespace jx::assist
