// A user that is a list of actions: drives dialogs where no one looks.
#pragma once

#include <jxscreen.h>

#include <deque>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

namespace jx::test {

class ScriptedUser;

// One thing the user does in the dialog in front; gives back whether the dialog took it.
using Action = std::function<int(ScriptedUser& user, HWND dialog)>;

Action press(unsigned short button);
Action selectRow(unsigned short list, int row);
Action doubleClick(unsigned short list, int row);
Action type(unsigned short field, std::string text);
Action click(unsigned short box);
Action key(int jxwKey);
Action accessKey(char character);

// Writes the dialog down (ScriptedUser::dumps).
Action look();

// The dialog must not take it.
Action refused(Action action);

// Anything else.
Action call(std::function<void(HWND dialog)> work);

// ScriptedUser: the thread's screen while it lives. An action that the dialog does not take fails the test. When the
// list runs dry, the dialog in front is closed, and when that does not end it, given up: no test can hang.
class ScriptedUser {
public:
    explicit ScriptedUser(std::initializer_list<Action> actions = {}, std::initializer_list<unsigned int> answers = {});
    ~ScriptedUser();
    ScriptedUser(const ScriptedUser&) = delete;
    ScriptedUser& operator=(const ScriptedUser&) = delete;

    // What message boxes showed, as "title|text|style". A box without an answer left fails the test and is answered
    // with No or OK.
    std::vector<std::string> boxes;

    // What look() saw.
    std::vector<std::string> dumps;

    // The titles of the dialogs that were opened ("+Title") and closed ("-Title"), in order.
    std::vector<std::string> appearances;

    // "title id" of each changed control, when asked to note them.
    bool notesChanges = false;
    std::vector<std::string> changes;

    // How many actions were not reached.
    std::size_t actionsLeft() const { return actions_.size(); }
    std::size_t answersLeft() const { return answers_.size(); }

private:
    int act(HWND dialog);
    unsigned int answer(const char* text, const char* title, unsigned int style);
    static ScriptedUser& self(void* context) { return *static_cast<ScriptedUser*>(context); }

    std::deque<Action> actions_;
    std::deque<unsigned int> answers_;
};

}  // namespace jx::test
