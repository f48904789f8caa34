// The cursor a screen is to show.
#include <atomic>

#include "platform/jxdialog.h"

namespace {

std::atomic<unsigned int> shownCursor{kJxwArrowCursor};

}  // namespace

extern "C" unsigned int JXW_LoadCursor(HWND /*instance*/, int id) {
    return static_cast<unsigned int>(id);
}

extern "C" unsigned int JXW_SetCursor(unsigned int cursor) {
    return shownCursor.exchange(cursor);
}

extern "C" unsigned int JXW_GetCursor(void) {
    return shownCursor.load();
}
