// The callbacks through which the dialog layer reaches a screen.
#pragma once

#include <jxscreen.h>

namespace jx::assist {

// Makes an object the calling thread's screen, until JXW_SetScreen(nullptr), which its destructor calls. It has
//
//     void opened(HWND dialog);
//     void closed(HWND dialog);
//     int wait(HWND dialog);
//     unsigned int ask(const char* text, const char* title, unsigned int style);
//     void setCursor(unsigned int cursor);
//
// which may be private when this function is its friend. What they throw passes through the library.
template <typename Screen>
void setScreen(Screen& screen) {
    JxwScreen table{};
    table.context = &screen;
    table.opened = [](void* context, HWND dialog) { static_cast<Screen*>(context)->opened(dialog); };
    table.closed = [](void* context, HWND dialog) { static_cast<Screen*>(context)->closed(dialog); };
    table.wait = [](void* context, HWND dialog) { return static_cast<Screen*>(context)->wait(dialog); };
    table.messageBox = [](void* context, HWND /*owner*/, const char* text, const char* title, unsigned int style) {
        return static_cast<Screen*>(context)->ask(text, title, style);
    };
    table.cursor = [](void* context, unsigned int cursor) { static_cast<Screen*>(context)->setCursor(cursor); };
    JXW_SetScreen(&table);
}

}  // namespace jx::assist
