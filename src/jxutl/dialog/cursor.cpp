// The process's cursor.
#include <atomic>

#include "jxutl/dialog/desk.h"

namespace {

std::atomic<unsigned int> shownCursor{kJxwArrowCursor};

}  // namespace

unsigned int JXW_LoadCursor(HWND /*instance*/, int id) {
    return static_cast<unsigned int>(id);
}

unsigned int JXW_SetCursor(unsigned int cursor) {
    const unsigned int before = shownCursor.exchange(cursor);
    const jx::dialog::Desk* own = jx::dialog::existingDesk();
    if (own != nullptr && own->screen.cursor != nullptr)
        own->screen.cursor(own->screen.context, cursor);
    return before;
}

unsigned int JXW_GetCursor(void) {
    return shownCursor.load();
}
