// A message box as a window of the desktop.
#pragma once

#include <FL/Fl_Double_Window.H>
#include <FL/Fl_Text_Buffer.H>
#include <FL/Fl_Text_Display.H>

#include <optional>
#include <string>

#include "odbcadmin/assist/message_box.h"

namespace jx::desktop {

// MessageWindow: open until an answer is there. Its text can be selected and copied; a long one scrolls.
class MessageWindow : public Fl_Double_Window {
public:
    MessageWindow(const std::string& text, const std::string& title, unsigned int style);
    ~MessageWindow() override;
    MessageWindow(const MessageWindow&) = delete;
    MessageWindow& operator=(const MessageWindow&) = delete;

    // Shows it in front of everything.
    void open();

    std::optional<unsigned int> answer() const { return answer_; }
    unsigned int leastAnswer() const { return style_.leastAnswer(); }

    // A key: Enter, Escape, the first letter of a button, one that scrolls, or Ctrl-C, which copies what is selected,
    // else the whole text. True when it was taken.
    bool takeKey(int key, unsigned int state);

    // Takes the keys that none of its buttons has taken.
    int handle(int event) override;

private:
    Fl_Widget* addButton(int place, const assist::BoxButton& made);
    void showText(const std::string& text);
    bool takeTextKey(int key, bool isControl);

    std::optional<unsigned int> answer_;
    Fl_Widget* firstFocus_ = nullptr;
    assist::BoxStyle style_;
    Fl_Text_Buffer buffer_;
    Fl_Text_Display* text_ = nullptr;  // owned by the window, but it must go before its buffer
};

}  // namespace jx::desktop
