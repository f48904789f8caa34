// A message box as a window of the desktop.
#pragma once

#include <FL/Fl_Double_Window.H>

#include <optional>
#include <string>

#include "odbcadmin/assist/message_box.h"

namespace jx::desktop {

// MessageWindow: open until an answer is there.
class MessageWindow : public Fl_Double_Window {
public:
    MessageWindow(const std::string& text, const std::string& title, unsigned int style);

    // Shows it in front of everything.
    void open();

    std::optional<unsigned int> answer() const { return answer_; }
    unsigned int leastAnswer() const { return style_.leastAnswer(); }

    // A key: Enter, Escape, or the first letter of a button; true when it was taken.
    bool takeKey(int key);

private:
    Fl_Widget* addButton(int place, const assist::BoxButton& made);

    std::optional<unsigned int> answer_;
    Fl_Widget* firstFocus_ = nullptr;
    assist::BoxStyle style_;
};

}  // namespace jx::desktop
