// The cursor the user sees while an installation works.
#include "install/wait_cursor.h"

#include <jxdialog.h>

namespace jx::install {

void setWaitCursor() {
    JXW_SetCursor(JXW_LoadCursor(0, kJxwWaitCursor));
}

void setArrowCursor() {
    JXW_SetCursor(JXW_LoadCursor(0, kJxwArrowCursor));
}

}  // namespace jx::install
