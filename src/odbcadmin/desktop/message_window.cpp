// The text, its sign and the buttons.
#include "odbcadmin/desktop/message_window.h"

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/fl_draw.H>

#include <algorithm>
#include <cstdint>

#include "odbcadmin/desktop/dialog_window.h"

namespace jx::desktop {

namespace {

constexpr int kTextWidth = 440;
constexpr int kMargin = 16;
constexpr int kSignWidth = 40;
constexpr int kButtonWidth = 90;
constexpr int kButtonHeight = 28;

}  // namespace

MessageWindow::MessageWindow(const std::string& text, const std::string& title, unsigned int style)
    : Fl_Double_Window(100, 100), style_(assist::boxStyle(style, text)) {
    int width = kTextWidth;
    int height = 0;
    fl_font(FL_HELVETICA, FL_NORMAL_SIZE);
    const std::string shown = asLabel(text);
    fl_measure(shown.c_str(), width, height, 0);
    height = std::max(height + 8, kSignWidth);
    size(kTextWidth + kSignWidth + 3 * kMargin, height + kButtonHeight + 3 * kMargin);
    auto* sign =
        new Fl_Box(FL_UP_BOX, kMargin, kMargin, kSignWidth, kSignWidth, *style_.sign != '\0' ? style_.sign : "i");
    sign->labelsize(24);
    sign->labelfont(FL_HELVETICA_BOLD);
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): widgets belong to the window that is being filled
    auto* box = new Fl_Box(kSignWidth + 2 * kMargin, kMargin, kTextWidth, height);
    box->align(FL_ALIGN_LEFT | FL_ALIGN_TOP | FL_ALIGN_INSIDE | FL_ALIGN_WRAP);
    box->copy_label(shown.c_str());
    int place = static_cast<int>(style_.buttons.size());
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): likewise
    for (const assist::BoxButton& each : style_.buttons) {
        Fl_Widget* button = addButton(--place, each);
        if (&each == &style_.buttons[style_.first])
            firstFocus_ = button;
    }
    end();
    copy_label(title.c_str());
    callback([](Fl_Widget* widget, void* /*data*/) { static_cast<MessageWindow*>(widget)->takeKey(FL_Escape); });
}

void MessageWindow::open() {
    set_modal();
    show();
    firstFocus_->take_focus();
}

Fl_Widget* MessageWindow::addButton(int place, const assist::BoxButton& made) {
    const int left = w() - kMargin - (place + 1) * (kButtonWidth + kMargin) + kMargin;
    auto* button = new Fl_Button(left, h() - kMargin - kButtonHeight, kButtonWidth, kButtonHeight, made.text);
    button->callback(
        [](Fl_Widget* widget, void* data) {
            static_cast<MessageWindow*>(widget->window())->answer_ =
                static_cast<unsigned int>(reinterpret_cast<std::uintptr_t>(data));
        },
        // NOLINTNEXTLINE(performance-no-int-to-ptr): callbacks carry numbers so
        reinterpret_cast<void*>(static_cast<std::uintptr_t>(made.answer)));
    return button;
}  // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): the window's

bool MessageWindow::takeKey(int key) {
    if (key == FL_Escape) {
        answer_ = leastAnswer();
        return true;
    }
    if (key == FL_Enter || key == FL_KP_Enter) {
        (contains(Fl::focus()) != 0 ? Fl::focus() : firstFocus_)->do_callback();
        return true;
    }
    for (const assist::BoxButton& button : style_.buttons)
        if (key == (button.text[1] | 0x20))
            answer_ = button.answer;
    return answer_.has_value();
}

}  // namespace jx::desktop
