// Message boxes: the handler, the thread's screen or standard error shows them.
#include <mutex>

#include <jxdialog.h>
#include "jxutl/dialog/desk.h"
#include "jxutl/dialog/disabled_owner.h"
#include "jxutl/dialog/terminal_text.h"

namespace {

// A handler and its context belong together: one lock covers both.
struct Answerer {
    JxwMessageBoxHandler handler = nullptr;
    void* context = nullptr;
};

constinit std::mutex answererLock;
constinit Answerer answerer;

Answerer current() {
    const std::lock_guard locked(answererLock);
    return answerer;
}

const char* orEmpty(const unsigned char* text) {
    return text != nullptr ? reinterpret_cast<const char*>(text) : "";
}

// Lets the calling thread's screen show the box; false when it cannot. Nothing is allocated.
bool askScreen(HWND owner, const char* text, const char* title, unsigned int style, unsigned int& answer) {
    const jx::dialog::Desk* own = jx::dialog::existingDesk();
    if (own == nullptr || own->screen.messageBox == nullptr)
        return false;
    answer = own->screen.messageBox(own->screen.context, owner, text, title, style);
    return true;
}

bool asksYesOrNo(unsigned int style) {
    constexpr unsigned int kButtons = 15;  // the low four bits of a style name the button set
    return (style & kButtons) == MB_YESNO;
}

}  // namespace

unsigned int guiMessageBox(HWND owner, const unsigned char* text, const unsigned char* title, unsigned int style) {
    // Copied, so that the lock is free while the handler runs: it may show another box or set another handler.
    const Answerer asked = current();
    const jx::dialog::DisabledOwner disabled(owner);
    if (asked.handler != nullptr)
        return asked.handler(asked.context, owner, orEmpty(text), orEmpty(title), style);
    unsigned int answer = 0;
    if (askScreen(owner, orEmpty(text), orEmpty(title), style, answer))
        return answer;
    jx::dialog::writeMessage(orEmpty(title), orEmpty(text));
    return asksYesOrNo(style) ? IDNO : IDOK;
}

int JXW_SetMessageBoxHandler(JxwMessageBoxHandler handler, void* context) {
    const std::lock_guard locked(answererLock);
    answerer = {handler, context};
    return 1;
}
