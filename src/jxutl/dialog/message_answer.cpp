// Hands message boxes to the thread's screen.
#include "jxutl/dialog/message_answer.h"

#include "jxutl/dialog/desk.h"

namespace jx::dialog {

bool askScreen(HWND owner, const char* text, const char* title, unsigned int style, unsigned int& answer) {
    const Desk* own = existingDesk();
    if (own == nullptr || own->screen.messageBox == nullptr)
        return false;
    answer = own->screen.messageBox(own->screen.context, owner, text, title, style);
    return true;
}

}  // namespace jx::dialog
