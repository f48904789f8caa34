// Flat buttons in lines.
#include "odbcadmin/desktop/key_bar.h"

#include <FL/Fl.H>
#include <FL/Fl_Button.H>
#include <FL/fl_draw.H>

#include <cmath>
#include <cstdint>
#include <utility>

#include "odbcadmin/desktop/control_widget.h"
#include "odbcadmin/desktop/scale.h"

namespace jx::desktop {

namespace {

constexpr int kKeyHeight = 26, kKeyMargin = 3, kKeyPadding = 4, kKeyTextSize = 12;

int textWidth(const Fl_Widget& button) {
    fl_font(button.labelfont(), button.labelsize());
    return static_cast<int>(std::ceil(fl_width(button.label())));
}

}  // namespace

KeyBar::KeyBar(std::function<void(std::size_t)> pressed) : Fl_Group(0, 0, 0, 0), pressed_(std::move(pressed)) {
    resizable(nullptr);
    end();
}

bool KeyBar::offer(const std::vector<KeyOffer>& offers) {
    if (offers == offers_)
        return false;
    offers_ = offers;
    clear();
    begin();
    for (std::size_t number = 0; number < offers_.size(); ++number) {
        auto* button = new Fl_Button(0, 0, 0, 0);
        button->box(FL_THIN_UP_BOX);
        button->labelsize(scaled(kKeyTextSize));
        button->clear_visible_focus();
        button->copy_label(asLabel(offers_[number].key + " " + offers_[number].label).c_str());
        button->callback(
            [](Fl_Widget* widget, void* data) {
                static_cast<KeyBar*>(widget->parent())->pressed_(reinterpret_cast<std::uintptr_t>(data));
            },
            // NOLINTNEXTLINE(performance-no-int-to-ptr): callbacks carry numbers so
            reinterpret_cast<void*>(static_cast<std::uintptr_t>(number)));
    }
    end();
    return true;
}

int KeyBar::flow(int width, const std::function<void(int, int, int)>& visit) const {
    int left = scaled(kKeyMargin);
    int line = 0;
    for (int number = 0; number < children(); ++number) {
        const int wide = textWidth(*child(number)) + 2 * scaled(kKeyPadding);
        if (left + wide > width && left > scaled(kKeyMargin)) {
            left = scaled(kKeyMargin);
            ++line;
        }
        visit(number, left, line);
        left += wide + scaled(kKeyMargin);
    }
    return children() == 0 ? 0 : line + 1;
}

int KeyBar::heightFor(int width) const {
    return flow(width, [](int, int, int) {}) * (scaled(kKeyHeight) + scaled(kKeyMargin));
}

void KeyBar::resize(int x, int y, int width, int height) {
    Fl_Group::resize(x, y, width, height);
    flow(width, [this, x, y](int number, int left, int line) {
        Fl_Widget& button = *child(number);
        button.resize(x + left, y + line * (scaled(kKeyHeight) + scaled(kKeyMargin)),
                      textWidth(button) + 2 * scaled(kKeyPadding), scaled(kKeyHeight));
    });
}

}  // namespace jx::desktop
