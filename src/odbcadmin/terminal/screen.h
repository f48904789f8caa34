// The screen: shows the dialogs and message boxes of the thread in a terminal.
#pragma once

#include <jxscreen.h>

#include <string>
#include <utility>
#include <vector>

#include "odbcadmin/assist/assistant.h"
#include "odbcadmin/assist/screen_table.h"
#include "odbcadmin/assist/selection.h"
#include "odbcadmin/terminal/dialog_input.h"
#include "odbcadmin/terminal/key_bar.h"
#include "odbcadmin/terminal/message.h"
#include "odbcadmin/terminal/terminal.h"

namespace jx::terminal {

// Screen: the calling thread's screen while it lives. What the terminal throws passes through the library.
class Screen {
public:
    explicit Screen(Terminal& terminal);
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

private:
    friend void assist::setScreen<Screen>(Screen& screen);

    void opened(HWND dialog);
    void closed(HWND dialog);
    int wait(HWND dialog);
    unsigned int ask(const char* text, const char* title, unsigned int style);
    void setCursor(unsigned int cursor);
    Input next();
    void carryOut(HWND dialog, const Input& given);
    Input meant(HWND dialog, const Input& input);
    std::string act(HWND dialog, const Input& input);
    void paint();
    void beginWork(const std::string& what);
    void beginWaiting(HWND dialog, const std::string& what);
    void resumeWork();
    void setWorker(const std::string& worker);
    void endWork();
    void paintWorking(const std::string& what);
    std::string helpLine(HWND dialog, const Rect& area) const;
    KeyBar keyBar(HWND dialog, int columns);
    void paintKeys(Canvas& canvas, const Rect& part);

    Terminal& terminal_;
    Abilities abilities_;
    DialogInput input_;
    assist::Assistant assistant_;
    Views views_;
    std::vector<Message*> messages_;
    int boxes_ = 0;  // shown so far
    // What was in front at the last press: the dialog, and the number of the box in front of it or 0.
    std::pair<HWND, int> pressedIn_;
    assist::SelectionKeeper selections_;
    bool isWorking_ = false;
    std::string worker_;
    std::string told_;  // instead of the help on the focused control, until the next input
};

}  // namespace jx::terminal
