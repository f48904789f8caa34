// Message boxes: who answers them, and what happens when nobody does.
#include <mutex>

#include <jxdialog.h>
#include "jxutl/dialog/message_answer.h"
#include "jxutl/dialog/owner_turn.h"
#include "jxutl/terminal_text.h"

namespace {

// A handler and its context belong together: they are read and set in one turn.
struct Answerer {
    JxwMessageBoxHandler handler = nullptr;
    void* context = nullptr;
};

constinit std::mutex answererLock;
constinit Answerer answerer;

Answerer current() {
    const std::lock_guard turn(answererLock);
    return answerer;
}

const char* orEmpty(const unsigned char* text) {
    return text != nullptr ? reinterpret_cast<const char*>(text) : "";
}

bool asksYesOrNo(unsigned int style) {
    constexpr unsigned int kButtons = 15;  // the low four bits of a style name the button set
    return (style & kButtons) == MB_YESNO;
}

}  // namespace

unsigned int guiMessageBox(HWND owner, const unsigned char* text, const unsigned char* title, unsigned int style) {
    // Copied out, so that the lock is free while the handler runs: it may ask again or set another handler.
    const Answerer asked = current();
    const jx::dialog::OwnerTurn ownerWaits(owner);
    if (asked.handler != nullptr)
        return asked.handler(asked.context, owner, orEmpty(text), orEmpty(title), style);
    unsigned int answer = 0;
    if (jx::dialog::askScreen(owner, orEmpty(text), orEmpty(title), style, answer))
        return answer;
    jx::writeMessage(orEmpty(title), orEmpty(text));
    return asksYesOrNo(style) ? IDNO : IDOK;
}

int JXW_SetMessageBoxHandler(JxwMessageBoxHandler handler, void* context) {
    const std::lock_guard turn(answererLock);
    answerer = {handler, context};
    return 1;
}
