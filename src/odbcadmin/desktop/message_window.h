// A message box as a window of the desktop.
#pragma once

#include <FL/Fl_Double_Window.H>

#include <optional>
#include <string>

namespace jx::desktop {

// MessageWindow: open until an answer is there.
class MessageWindow : public Fl_Double_Window {
public:
    MessageWindow(const std::string& text, const std::string& title, unsigned int style);

    // Shows it in front of everything.
    void open();

    std::optional<unsigned int> answer() const { return answer_; }

    // A key: Enter, Escape, or the first letter of a button; true when it was taken.
    bool takeKey(int key);

private:
    void addButton(int place, unsigned int answer, const char* text);

    std::optional<unsigned int> answer_;
    Fl_Widget* firstFocus_ = nullptr;
    bool asks_;
    bool isWarning_;
};

}  // namespace jx::desktop
