// One thread's dialogs, their posted messages, the focus, and the screen that shows them.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <new>

#include <jxscreen.h>
#include "jxutl/dialog/window.h"

namespace jx::dialog {

struct PostedMessage {
    std::uint64_t number;  // counts up with every message posted
    HWND window;
    int message;
    int wparam;
    std::uintptr_t lparam;
};

// Desk: belongs to one thread and is released with it. Nothing here calls a dialog procedure.
class Desk {
public:
    // The window with this handle; empty when this thread has no such window.
    Window find(HWND hwnd);

    // Adds a dialog and gives it new handles; false when handles have run out. Throws std::bad_alloc: nothing is then
    // added.
    bool enter(const DialogPointer& dialog);

    // Removes the dialogs that dialog owns, then dialog, with their posted messages, and notifies the screen of each.
    void remove(const DialogPointer& dialog);

    // The dialog that has the focus; null without one.
    DialogPointer active() { return find(active_).dialog; }
    void activate(const DialogPointer& dialog);

    // The first dialog with a handle above previous, or 0.
    HWND next(HWND previous) const;

    void post(HWND window, int message, int wparam, std::uintptr_t lparam);
    std::uint64_t lastPosted() const { return posted_; }
    bool hasPosted() const { return !queue_.empty(); }

    // Takes the oldest message for dialog (null: any) with a number up to last out of the queue; false without one.
    bool takePosted(const Dialog* dialog, std::uint64_t last, PostedMessage& message);

    JxwScreen screen{};

    void notifyOpened(Dialog& dialog) const;
    void notifyChanged(const Dialog& dialog, unsigned short id) const;

private:
    DialogPointer ownedBy(HWND owner) const;
    void passFocusFrom(const Dialog& gone);

    std::map<HWND, DialogPointer> dialogs_;
    std::deque<PostedMessage> queue_;
    std::uint64_t posted_ = 0;
    HWND active_ = 0;
};

// The calling thread's desk, or null before it has one.
Desk* existingDesk();

// The same, made now if necessary; null when memory is short.
Desk* desk();

// The calling thread's window with that handle; control id of a dialog; the dialog with that handle. Empty or null when
// there is no such thing.
Window windowOf(HWND hwnd);
Window itemOf(HWND dialog, unsigned short id);
DialogPointer dialogOf(HWND hwnd);

// Notifies the thread's screen of a change.
void notifyChanged(const Window& window);
void notifyChanged(const Dialog& dialog);

// The result of work, or failure when it throws std::bad_alloc. work must not call a dialog procedure or a screen,
// whose exceptions pass through.
template <class Answer, class Work>
Answer orWhenShort(Answer failure, Work work) {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return failure;
    }
}

}  // namespace jx::dialog
