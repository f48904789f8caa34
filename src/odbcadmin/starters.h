// The dialog starters of a program that shows dialogs.
//
// jxDllDialog and jxDllDialogReturnId are declared by odbcinst.h; starters.cpp defines and exports both. A program that
// is made with starters.cpp and exports its names (ENABLE_EXPORTS) takes the place of the library's own two, and every
// dialog the library starts appears on the calling thread's screen (jxscreen.h).
#pragma once

#include <odbcinst.h>
