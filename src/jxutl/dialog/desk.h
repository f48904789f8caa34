// One thread's dialogs: who is there, in which order, with what queued, and the screen that shows them.
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
    // What a handle names on this thread.
    Window find(HWND hwnd);

    // Enters a dialog under fresh handles; false when there are none left. Throws std::bad_alloc, nothing is then
    // entered.
    bool enter(const DialogPointer& dialog);

    // Takes a dialog out with its posted messages, after the dialogs that it owns, telling the screen of each.
    void remove(const DialogPointer& dialog);

    // The dialog that has the focus; null when there is none.
    DialogPointer active() { return find(active_).dialog; }
    void activate(const DialogPointer& dialog);

    // The first dialog with a handle above previous; 0 when there is none.
    HWND next(HWND previous) const;

    void post(HWND window, int message, int wparam, std::uintptr_t lparam);
    std::uint64_t lastPosted() const { return posted_; }
    bool hasPosted() const { return !queue_.empty(); }

    // Takes the oldest message for dialog (null: any) with a number up to last out of the queue; false when none is
    // there.
    bool takePosted(const Dialog* dialog, std::uint64_t last, PostedMessage& message);

    JxwScreen screen{};

    void tellOpened(Dialog& dialog) const;
    void tellChanged(const Dialog& dialog, unsigned short id) const;

private:
    DialogPointer ownedBy(HWND owner) const;
    void passFocusFrom(const Dialog& gone);

    std::map<HWND, DialogPointer> dialogs_;
    std::deque<PostedMessage> queue_;
    std::uint64_t posted_ = 0;
    HWND active_ = 0;
};

// The calling thread's desk: null when it has none yet.
Desk* existingDesk();

// The same, made now if need be; null when memory is short.
Desk* desk();

// What a handle names on the calling thread, the control of a dialog, and only a dialog.
Window windowOf(HWND hwnd);
Window itemOf(HWND dialog, unsigned short id);
DialogPointer dialogOf(HWND hwnd);

// Tells the thread's screen that a window changed.
void tellChanged(const Window& window);
void tellChanged(const Dialog& dialog);

// Does work; the answer when memory is short is failure. Nothing that calls a dialog procedure or a screen may stand in
// work: what those throw is not ours to catch.
template <class Answer, class Work>
Answer orWhenShort(Answer failure, Work work) {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return failure;
    }
}

}  // namespace jx::dialog
