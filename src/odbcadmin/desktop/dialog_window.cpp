// Widgets for controls.
#include "odbcadmin/desktop/dialog_window.h"

#include <FL/Fl.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Hold_Browser.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Return_Button.H>
#include <FL/Fl_Round_Button.H>
#include <FL/Fl_Secret_Input.H>

#include <algorithm>
#include <chrono>
#include <cstring>

#include "odbcadmin/assist/help.h"

namespace jx::desktop {

namespace {

constexpr int kDots = 2;  // to a dialog unit
constexpr int kHelpHeight = 58;
constexpr int kLeastHeight = 18;

long now() {
    using namespace std::chrono;
    return static_cast<long>(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

bool isClick(const JxwControlInfo& control) {
    return control.kind == JXW_CHECKBOX || control.kind == JXW_RADIO;
}

Fl_Widget* newWidget(const JxwControlInfo& control, int x, int y, int width, int height) {
    switch (control.kind) {
        case JXW_EDIT:
            return (control.flags & JXW_PASSWORD) != 0 ? new Fl_Secret_Input(x, y, width, height)
                                                       : new Fl_Input(x, y, width, height);
        case JXW_BUTTON:
            return (control.flags & JXW_DEFAULT) != 0 ? new Fl_Return_Button(x, y, width, height)
                                                      : new Fl_Button(x, y, width, height);
        case JXW_CHECKBOX:
            return new Fl_Check_Button(x, y, width, height);
        case JXW_RADIO:
            return new Fl_Round_Button(x, y, width, height);
        case JXW_LISTBOX:
            return new Fl_Hold_Browser(x, y, width, height);
        default:
            return new Fl_Box(x, y, width, height);
    }
}

void dress(Fl_Widget& widget, const JxwControlInfo& control) {
    if (control.kind == JXW_GROUPBOX) {
        widget.box(FL_ENGRAVED_FRAME);
        widget.align(FL_ALIGN_TOP_LEFT | FL_ALIGN_INSIDE);
    } else if (control.kind == JXW_LABEL) {
        widget.align(FL_ALIGN_LEFT | FL_ALIGN_INSIDE | FL_ALIGN_WRAP);
    } else if (control.kind == JXW_EDIT) {
        widget.when(FL_WHEN_CHANGED);
    } else if (control.kind == JXW_LISTBOX) {
        auto& list = static_cast<Fl_Hold_Browser&>(widget);
        list.format_char(0);
        list.column_char(0);
        list.when(FL_WHEN_RELEASE | FL_WHEN_NOT_CHANGED);
    }
}

void setEnabled(Fl_Widget& widget, bool enabled) {
    if (enabled != (widget.active() != 0))
        enabled ? widget.activate() : widget.deactivate();
}

}  // namespace

std::string asLabel(const std::string& text) {
    std::string label;
    for (const char each : text)
        label.append(each == '@' ? 2 : 1, each);
    return label;
}

DialogWindow::DialogWindow(HWND dialog, Actions add, std::function<void(const std::string&)> working,
                           std::function<void()> cancelling)
    : Fl_Double_Window(100, 100),
      dialog_(dialog),
      add_(std::move(add)),
      working_(std::move(working)),
      cancelling_(std::move(cancelling)) {
    JxwDialogInfo info{};
    JXW_GetDialogInfo(dialog, &info);
    size(info.width * kDots, info.height * kDots + kHelpHeight);
    widgets_.resize(static_cast<std::size_t>(std::max(info.controlCount, 0)));
    labels_.resize(widgets_.size());
    // Frames first: what stands in them is drawn above.
    for (const bool frames : {true, false}) {
        for (int index = 0; index < info.controlCount; ++index) {
            JxwControlInfo control{};
            JXW_GetControlInfo(dialog, index, &control);
            if ((control.kind == JXW_GROUPBOX) == frames)
                widgets_[static_cast<std::size_t>(index)] = makeWidget(index, control);
        }
    }
    help_ = new Fl_Box(8, h() - kHelpHeight, w() - 16, kHelpHeight);
    help_->align(FL_ALIGN_LEFT | FL_ALIGN_INSIDE | FL_ALIGN_WRAP);
    help_->labelsize(12);
    end();
    callback([](Fl_Widget* widget, void* /*data*/) {
        auto* window = static_cast<DialogWindow*>(widget);
        window->add_([handle = window->dialog_] { JXW_UserKey(handle, JXW_KEY_CLOSE); });
    });
    sync();
}

Fl_Widget* DialogWindow::makeWidget(int index, const JxwControlInfo& control) {
    const int height = std::max(control.height * kDots, kLeastHeight);
    Fl_Widget* widget = newWidget(control, control.x * kDots, control.y * kDots, control.width * kDots, height);
    dress(*widget, control);
    if (isClick(control) || control.kind == JXW_BUTTON || control.kind == JXW_EDIT || control.kind == JXW_LISTBOX)
        // NOLINTNEXTLINE(performance-no-int-to-ptr): callbacks carry numbers so
        widget->callback(heard, reinterpret_cast<void*>(static_cast<intptr_t>(index)));
    return widget;
}

void DialogWindow::heard(Fl_Widget* widget, void* data) {
    auto* window = dynamic_cast<DialogWindow*>(widget->window());
    if (window != nullptr)
        window->hear(static_cast<int>(reinterpret_cast<intptr_t>(data)));
}

void DialogWindow::press(const JxwControlInfo& button) {
    const bool leaves = button.id == IDCANCEL || (button.flags & JXW_CLOSE) != 0;
    add_([this, id = button.id, leaves, handle = dialog_, caption = assist::withoutAccessKey(button.text)] {
        if (!leaves)
            working_(caption);
        if (id == IDCANCEL)
            cancelling_();
        JXW_UserCommand(handle, id);
    });
}

void DialogWindow::hearList(int index, unsigned short id) {
    const auto* list = static_cast<Fl_Hold_Browser*>(widgets_[static_cast<std::size_t>(index)]);
    const int row = list->value() - 1;
    const bool isDouble = Fl::event() == FL_RELEASE && Fl::event_clicks() != 0;
    add_([id, row, isDouble, handle = dialog_] {
        if (isDouble && row >= 0)
            JXW_UserDoubleClick(handle, id, row);
        else
            JXW_UserSelect(handle, id, row);
    });
}

void DialogWindow::hear(int index) {
    JxwControlInfo control{};
    if (JXW_GetControlInfo(dialog_, index, &control) == 0)
        return;
    told_ = false;
    if (control.kind == JXW_BUTTON)
        press(control);
    else if (control.kind == JXW_LISTBOX)
        hearList(index, control.id);
    else if (control.kind == JXW_EDIT)
        add_([id = control.id, handle = dialog_,
              text = std::string(static_cast<Fl_Input*>(widgets_[static_cast<std::size_t>(index)])->value())] {
            JXW_UserEdit(handle, id, text.c_str());
        });
    else
        add_([id = control.id, handle = dialog_] { JXW_UserCheck(handle, id); });
}

void DialogWindow::syncList(int index, const JxwControlInfo& control) {
    auto& list = *static_cast<Fl_Hold_Browser*>(widgets_[static_cast<std::size_t>(index)]);
    bool isSame = list.size() == control.rowCount;
    for (int row = 0; isSame && row < control.rowCount; ++row)
        isSame = std::strcmp(list.text(row + 1), JXW_GetRow(dialog_, index, row)) == 0;
    if (!isSame) {
        list.clear();
        for (int row = 0; row < control.rowCount; ++row)
            list.add(JXW_GetRow(dialog_, index, row));
    }
    if (list.value() != control.selection + 1) {
        list.value(control.selection + 1);
        if (control.selection >= 0)
            list.make_visible(control.selection + 1);
    }
}

void DialogWindow::syncWidget(int index, const JxwControlInfo& control) {
    Fl_Widget& widget = *widgets_[static_cast<std::size_t>(index)];
    setEnabled(widget, control.enabled != 0);
    if (control.kind == JXW_LISTBOX) {
        syncList(index, control);
        return;
    }
    if (control.kind == JXW_EDIT) {
        auto& field = static_cast<Fl_Input&>(widget);
        if (std::strcmp(field.value(), control.text) != 0)
            field.value(control.text);
        return;
    }
    if (isClick(control))
        static_cast<Fl_Button&>(widget).value(control.checked != 0 ? 1 : 0);
    std::string& label = labels_[static_cast<std::size_t>(index)];
    if (label == control.text)
        return;
    label = control.text;
    // Fixed texts show no access key here: it is drawn by those that take one.
    const bool isText = control.kind == JXW_LABEL || control.kind == JXW_GROUPBOX;
    widget.copy_label(asLabel(isText ? assist::shownText(control) : label).c_str());
    redraw();
}

void DialogWindow::sync() {
    JxwDialogInfo info{};
    if (JXW_GetDialogInfo(dialog_, &info) == 0)
        return;
    if (label() == nullptr || std::strcmp(label(), info.title) != 0)
        copy_label(info.title);
    for (int index = 0; index < info.controlCount; ++index) {
        JxwControlInfo control{};
        if (JXW_GetControlInfo(dialog_, index, &control) != 0)
            syncWidget(index, control);
    }
    if (info.active != 0 && info.focus >= 0 && focusedIndex() != info.focus)
        widgets_[static_cast<std::size_t>(info.focus)]->take_focus();
    if (!told_)
        showHelp(assist::headingOf(dialog_) + "\n" + assist::helpOn(dialog_, info.focus) +
                 "  F1: help, F2: new driver");
}

// Only what changes is set: each setting brings an event that leads back here.
void DialogWindow::showHelp(const std::string& text) {
    const std::string shown = asLabel(text);
    if (help_->label() == nullptr || shown != help_->label()) {
        help_->copy_label(shown.c_str());
        redraw();
    }
}

void DialogWindow::tell(const std::string& text) {
    told_ = true;
    showHelp(text);
}

int DialogWindow::focusedIndex() const {
    const auto found = std::find(widgets_.begin(), widgets_.end(), Fl::focus());
    return found != widgets_.end() ? static_cast<int>(found - widgets_.begin()) : -1;
}

void DialogWindow::reportFocus() {
    JxwDialogInfo info{};
    JxwControlInfo control{};
    const int index = focusedIndex();
    if (index >= 0 && JXW_GetDialogInfo(dialog_, &info) != 0 && info.focus != index &&
        JXW_GetControlInfo(dialog_, index, &control) != 0) {
        told_ = false;
        JXW_UserFocus(dialog_, control.id);
    }
}

void DialogWindow::explainAt(int column, int line) {
    for (std::size_t index = 0; index < widgets_.size(); ++index) {
        const Fl_Widget& widget = *widgets_[index];
        if (widget.active() == 0 && column >= widget.x() && column < widget.x() + widget.w() && line >= widget.y() &&
            line < widget.y() + widget.h())
            tell(assist::helpOn(dialog_, static_cast<int>(index)));
    }
}

// A grey control is not pressed; the help line says why.
void DialogWindow::pressAccessKey(int key) {
    const int index = assist::controlOfAccessKey(dialog_, key);
    JxwControlInfo control{};
    if (JXW_GetControlInfo(dialog_, index, &control) == 0)
        return;
    if (control.enabled == 0)
        tell(assist::helpOn(dialog_, index));
    else if (control.kind == JXW_BUTTON)
        press(control);
    else
        add_([key, handle = dialog_] { JXW_UserAccessKey(handle, key); });
}

// The row that a key leads to; -1 for a key that leads to none.
int DialogWindow::rowFor(int key, const JxwControlInfo& list, const Fl_Browser_& widget) {
    const int page = std::max(1, widget.h() / std::max(1, widget.textsize() + 4) - 1);
    const int last = list.rowCount - 1;
    switch (key) {
        case FL_Up:
            return std::max(list.selection - 1, 0);
        case FL_Down:
            return std::min(list.selection + 1, last);
        case FL_Page_Up:
            return std::max(list.selection - page, 0);
        case FL_Page_Down:
            return std::min(std::max(list.selection, 0) + page, last);
        case FL_Home:
            return 0;
        case FL_End:
            return last;
        default:
            return -1;
    }
}

// On a list with rows keys choose a row, letters search one, and nothing presses a button: without this the toolkit
// would take a letter for an access key.
bool DialogWindow::takeListKey(int key, unsigned int state) {
    JxwControlInfo list{};
    const int index = focusedIndex();
    if ((state & (FL_ALT | FL_CTRL)) != 0 || index < 0 || JXW_GetControlInfo(dialog_, index, &list) == 0 ||
        list.kind != JXW_LISTBOX || list.rowCount == 0)
        return false;
    if (search_.isOpen(list) && (key == FL_Enter || key == FL_KP_Enter || key == FL_Escape)) {
        search_.close();
        return true;
    }
    const auto& widget = static_cast<const Fl_Browser_&>(*widgets_[static_cast<std::size_t>(index)]);
    const int row = rowFor(key, list, widget);
    if (row >= 0) {
        search_.close();
        add_([handle = dialog_, id = list.id, row] { JXW_UserSelect(handle, id, row); });
        return true;
    }
    if (key == FL_BackSpace && search_.isOpen(list)) {
        tell(search_.takeBack(dialog_, index, list));
        return true;
    }
    const std::string text(Fl::event_text(), static_cast<std::size_t>(Fl::event_length()));
    if (text.empty() || static_cast<unsigned char>(text[0]) < ' ' || text[0] == '\x7f')
        return false;
    const std::string said = search_.type(dialog_, index, list, text, now());
    if (!said.empty())
        tell(said);
    return true;
}

bool DialogWindow::takeKey(int key, unsigned int state) {
    told_ = false;
    if (takeListKey(key, state))
        return true;
    if ((state & FL_ALT) != 0 && key > ' ' && key < 127) {
        pressAccessKey(key);
        return true;
    }
    int meaning = 0;
    if (key == FL_Enter || key == FL_KP_Enter)
        meaning = JXW_KEY_ENTER;
    else if (key == FL_Escape)
        meaning = JXW_KEY_ESCAPE;
    else if (key == FL_Tab)
        meaning = (state & FL_SHIFT) != 0 ? JXW_KEY_PREVIOUS : JXW_KEY_NEXT;
    if (meaning == 0)
        return false;
    add_([this, meaning, handle = dialog_] {
        if (meaning == JXW_KEY_ESCAPE)
            cancelling_();
        if (meaning == JXW_KEY_ENTER)
            working_("");
        JXW_UserKey(handle, meaning);
    });
    return true;
}

}  // namespace jx::desktop
