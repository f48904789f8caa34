// Drives dialogs from a list of actions.
#include "scripted_user.h"

#include <gtest/gtest.h>

#include <utility>

#include "dialog_dump.h"

namespace jx::test {

namespace {

std::string titleOf(HWND dialog) {
    JxwDialogInfo info{};
    return JXW_GetDialogInfo(dialog, &info) != 0 ? info.title : "(no dialog)";
}

}  // namespace

Action press(unsigned short button) {
    return [button](ScriptedUser&, HWND dialog) { return JXW_UserCommand(dialog, button); };
}

Action selectRow(unsigned short list, int row) {
    return [list, row](ScriptedUser&, HWND dialog) { return JXW_UserSelect(dialog, list, row); };
}

Action doubleClick(unsigned short list, int row) {
    return [list, row](ScriptedUser&, HWND dialog) { return JXW_UserDoubleClick(dialog, list, row); };
}

Action type(unsigned short field, std::string text) {
    return [field, text = std::move(text)](ScriptedUser&, HWND dialog) {
        return JXW_UserEdit(dialog, field, text.c_str());
    };
}

Action click(unsigned short box) {
    return [box](ScriptedUser&, HWND dialog) { return JXW_UserCheck(dialog, box); };
}

Action key(int jxwKey) {
    return [jxwKey](ScriptedUser&, HWND dialog) { return JXW_UserKey(dialog, jxwKey); };
}

Action accessKey(char character) {
    return [character](ScriptedUser&, HWND dialog) { return JXW_UserAccessKey(dialog, character); };
}

Action look() {
    return [](ScriptedUser& user, HWND dialog) {
        user.dumps.push_back(dumpDialog(dialog));
        return 1;
    };
}

Action refused(Action action) {
    return [action = std::move(action)](ScriptedUser& user, HWND dialog) { return action(user, dialog) == 0 ? 1 : 0; };
}

Action call(std::function<void(HWND dialog)> work) {
    return [work = std::move(work)](ScriptedUser&, HWND dialog) {
        work(dialog);
        return 1;
    };
}

ScriptedUser::ScriptedUser(std::initializer_list<Action> actions, std::initializer_list<unsigned int> answers)
    : actions_(actions), answers_(answers) {
    JxwScreen screen{};
    screen.context = this;
    screen.opened = [](void* context, HWND dialog) { self(context).appearances.push_back("+" + titleOf(dialog)); };
    screen.closed = [](void* context, HWND dialog) { self(context).appearances.push_back("-" + titleOf(dialog)); };
    screen.changed = [](void* context, HWND dialog, unsigned short id) {
        if (self(context).notesChanges)
            self(context).changes.push_back(titleOf(dialog) + " " + std::to_string(id));
    };
    screen.wait = [](void* context, HWND dialog) { return self(context).act(dialog); };
    screen.messageBox = [](void* context, HWND, const char* text, const char* title, unsigned int style) {
        return self(context).answer(text, title, style);
    };
    JXW_SetScreen(&screen);
}

ScriptedUser::~ScriptedUser() {
    JXW_SetScreen(nullptr);
}

int ScriptedUser::act(HWND dialog) {
    if (actions_.empty())
        return 0;
    const Action next = std::move(actions_.front());
    actions_.pop_front();
    const std::string title = titleOf(dialog);
    EXPECT_EQ(next(*this, dialog), 1) << "an action with " << actions_.size() << " behind it was not taken by "
                                      << title;
    return 1;
}

unsigned int ScriptedUser::answer(const char* text, const char* title, unsigned int style) {
    boxes.push_back(std::string(title) + "|" + text + "|" + std::to_string(style));
    if (answers_.empty()) {
        ADD_FAILURE() << "no answer left for " << boxes.back();
        return (style & MB_YESNO) != 0 ? IDNO : IDOK;
    }
    const unsigned int chosen = answers_.front();
    answers_.pop_front();
    return chosen;
}

}  // namespace jx::test
