// The text, its sign and the buttons.
#include "odbcadmin/desktop/message_window.h"

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Group.H>
#include <FL/fl_draw.H>

#include <algorithm>
#include <cstdint>

#include "odbcadmin/desktop/scale.h"
#include "odbcadmin/desktop/toolkit.h"

namespace jx::desktop {

namespace {

constexpr int kTextWidth = 460, kBoxMargin = 16, kSignWidth = 40, kSignTextSize = 24, kButtonWidth = 90,
              kButtonHeight = 28, kTextMargin = 4;

// The text's own scroll bar may take this much of its width; a text that needs none is a little narrower then.
int widthOfLines(int width) {
    return width - Fl::scrollbar_size() - 2 * kTextMargin;
}

int heightOf(const std::string& text, int width) {
    int height = 0;
    fl_font(FL_HELVETICA, FL_NORMAL_SIZE);
    fl_measure(text.c_str(), width, height, 0);
    return height + fl_height() + 2 * kTextMargin;  // the toolkit shows no last row that is cut
}

}  // namespace

MessageWindow::MessageWindow(const std::string& text, const std::string& title, unsigned int style)
    : Fl_Double_Window(100, 100), style_(assist::boxStyle(style, text)) {
    const int margin = scaled(kBoxMargin);
    const int sign = scaled(kSignWidth);
    const int button = scaled(kButtonHeight);
    const Place screen = workArea();
    const int width = std::min(scaled(kTextWidth) + sign + 3 * margin, screen.width);
    const int textWidth = std::max(1, width - sign - 3 * margin);
    const int wanted = std::max(heightOf(text, widthOfLines(textWidth)), sign) + button + 3 * margin;
    size(width, std::min(wanted, screen.height));
    auto* box = new Fl_Box(FL_UP_BOX, margin, margin, sign, sign, *style_.sign != '\0' ? style_.sign : "i");
    box->labelsize(scaled(kSignTextSize));
    box->labelfont(FL_HELVETICA_BOLD);
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): widgets belong to the window that is being filled
    text_ = new Fl_Text_Display(sign + 2 * margin, margin, textWidth, std::max(1, h() - button - 3 * margin));
    showText(text);
    auto* row = new Fl_Group(0, h() - margin - button, w(), button);
    auto* space = new Fl_Box(0, row->y(), 1, button);
    int place = static_cast<int>(style_.buttons.size());
    // NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks): likewise
    for (const assist::BoxButton& each : style_.buttons) {
        Fl_Widget* made = addButton(--place, each);
        if (&each == &style_.buttons[style_.first])
            firstFocus_ = made;
    }
    row->resizable(space);
    row->end();
    end();
    resizable(text_);
    size_range(std::min(width, scaled(kTextWidth)), std::min(h(), button + sign + 3 * margin));
    copy_label(titleOf(title).c_str());
    callback([](Fl_Widget* widget, void* /*data*/) { static_cast<MessageWindow*>(widget)->takeKey(FL_Escape, 0); });
}

MessageWindow::~MessageWindow() {
    text_->buffer(nullptr);
}

void MessageWindow::showText(const std::string& text) {
    buffer_.text(text.c_str());
    text_->buffer(buffer_);
    text_->box(FL_FLAT_BOX);
    text_->color(FL_BACKGROUND_COLOR);
    text_->textfont(FL_HELVETICA);
    text_->textsize(FL_NORMAL_SIZE);
    text_->wrap_mode(Fl_Text_Display::WRAP_AT_BOUNDS, 0);
    text_->scrollbar_width(Fl::scrollbar_size());
    text_->clear_visible_focus();
}

void MessageWindow::open() {
    set_modal();
    show();
    firstFocus_->take_focus();
}

Fl_Widget* MessageWindow::addButton(int place, const assist::BoxButton& made) {
    const int margin = scaled(kBoxMargin);
    const int width = scaled(kButtonWidth);
    const int height = scaled(kButtonHeight);
    const int left = w() - (place + 1) * (width + margin);
    auto* button = new Fl_Button(left, h() - margin - height, width, height, made.text);
    button->callback(
        [](Fl_Widget* widget, void* data) {
            static_cast<MessageWindow*>(widget->window())->answer_ =
                static_cast<unsigned int>(reinterpret_cast<std::uintptr_t>(data));
        },
        // NOLINTNEXTLINE(performance-no-int-to-ptr): callbacks carry numbers so
        reinterpret_cast<void*>(static_cast<std::uintptr_t>(made.answer)));
    return button;
}  // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks): the window's

// The text takes keys as if it had the focus, which stays with the buttons.
bool MessageWindow::takeTextKey(int key, bool isControl) {
    if (isControl && key == 'c' && buffer_.selected() == 0)
        buffer_.select(0, buffer_.length());
    const bool isHidden = text_->count_lines(0, buffer_.length(), /*start_pos_is_line_start=*/true) *
                              fl_height(text_->textfont(), text_->textsize()) >
                          text_->h();
    const bool scrolls =
        key == FL_Up || key == FL_Down || key == FL_Page_Up || key == FL_Page_Down || key == FL_Home || key == FL_End;
    const bool isMeant = isControl ? key == 'c' || key == 'a' : scrolls && isHidden;
    return isMeant && text_->handle(FL_KEYBOARD) != 0;
}

bool MessageWindow::takeKey(int key, unsigned int state) {
    if (key == FL_Escape) {
        answer_ = leastAnswer();
        return true;
    }
    if (key == FL_Enter || key == FL_KP_Enter) {
        const bool isButton = contains(Fl::focus()) != 0 && Fl::focus() != text_;
        (isButton ? Fl::focus() : firstFocus_)->do_callback();
        return true;
    }
    const bool isControl = (state & FL_CTRL) != 0;
    if (takeTextKey(key, isControl) || isControl)
        return true;
    for (const assist::BoxButton& button : style_.buttons)
        if (key == (button.text[1] | 0x20))
            answer_ = button.answer;
    return answer_.has_value();
}

int MessageWindow::handle(int event) {
    if (event == FL_KEYBOARD && takeKey(Fl::event_key(), static_cast<unsigned int>(Fl::event_state())))
        return 1;
    return Fl_Double_Window::handle(event);
}

}  // namespace jx::desktop
