// Widgets for controls.
#include "odbcadmin/desktop/dialog_window.h"

#include <FL/Fl.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Input.H>

#include <algorithm>
#include <chrono>
#include <cstring>

#include "odbcadmin/assist/help.h"
#include "odbcadmin/assist/path_completion.h"
#include "odbcadmin/desktop/scale.h"
#include "odbcadmin/desktop/toolkit.h"

namespace jx::desktop {

namespace {

constexpr int kHelpHeight = 58, kLowHelpHeight = 32, kHelpMargin = 8, kHelpTextSize = 12, kLeastWindow = 200;

// A window opens at this share of the screen's height at most when its list is long.
constexpr double kShareForList = 0.8;

long now() {
    using namespace std::chrono;
    return static_cast<long>(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

// The row that a key leads to; -1 for a key that leads to none.
int rowFor(int key, const JxwControlInfo& list, int rowsShown) {
    const int page = std::max(1, rowsShown - 1);
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

void setEnabled(Fl_Widget& widget, bool enabled) {
    if (enabled != (widget.active() != 0))
        enabled ? widget.activate() : widget.deactivate();
}

}  // namespace

DialogWindow::DialogWindow(HWND dialog, ScreenCalls calls, const std::vector<KeyOffer>& keys)
    : Fl_Double_Window(100, 100), dialog_(dialog), calls_(std::move(calls)) {
    JxwDialogInfo info{};
    JXW_GetDialogInfo(dialog, &info);
    scroll_ = new Fl_Scroll(0, 0, 0, 0);
    scroll_->box(FL_FLAT_BOX);
    ground_ = new Fl_Box(0, 0, 0, 0);
    makeWidgets(info);
    scroll_->end();
    resizable(scroll_);
    help_ = new Fl_Box(0, 0, 0, 0);
    help_->align(FL_ALIGN_LEFT | FL_ALIGN_TOP | FL_ALIGN_INSIDE | FL_ALIGN_WRAP | FL_ALIGN_CLIP);
    help_->labelsize(scaled(kHelpTextSize));
    keys_ = new KeyBar(calls_.keyPressed);
    end();
    keys_->offer(keys);
    callback([](Fl_Widget* widget, void* /*data*/) {
        auto* window = static_cast<DialogWindow*>(widget);
        window->calls_.add([handle = window->dialog_] { JXW_UserKey(handle, JXW_KEY_CLOSE); });
    });
    chooseSize(dots(info.width), dots(info.height));
    sync();
}

void DialogWindow::makeWidgets(const JxwDialogInfo& info) {
    const auto count = static_cast<std::size_t>(std::max(info.controlCount, 0));
    widgets_.resize(count);
    labels_.resize(count);
    std::vector<Part> parts(count);
    // Frames first: what stands in them is drawn above.
    for (const bool frames : {true, false}) {
        for (int index = 0; index < info.controlCount; ++index) {
            JxwControlInfo control{};
            JXW_GetControlInfo(dialog_, index, &control);
            if ((control.kind == JXW_GROUPBOX) != frames)
                continue;
            widgets_[static_cast<std::size_t>(index)] = makeWidget(index, control);
            parts[static_cast<std::size_t>(index)] = partOf(control);
        }
    }
    alignLabels(parts);
    placement_ = std::make_unique<Placement>(std::move(parts), dots(info.width), dots(info.height));
}

Fl_Widget* DialogWindow::makeWidget(int index, const JxwControlInfo& control) {
    Fl_Widget* widget = newWidget(control);
    if (isActedOn(control))
        // NOLINTNEXTLINE(performance-no-int-to-ptr): callbacks carry numbers so
        widget->callback(heard, reinterpret_cast<void*>(static_cast<intptr_t>(index)));
    return widget;
}

void DialogWindow::chooseSize(int width, int height) {
    const Place screen = workArea();
    const int mostWidth = screen.width;
    const int mostHeight = screen.height;
    const int below = scaled(kHelpHeight) + keys_->heightFor(std::min(width, mostWidth));
    int rowsHidden = 0;
    JxwControlInfo control{};
    for (int index = 0; JXW_GetControlInfo(dialog_, index, &control) != 0; ++index)
        if (control.kind == JXW_LISTBOX)
            rowsHidden = std::max(rowsHidden, control.rowCount * (FL_NORMAL_SIZE + scaled(4)) - dots(control.height));
    const int roomForRows = std::max(0, static_cast<int>(mostHeight * kShareForList) - height - below);
    const int wanted = height + below + std::min(rowsHidden, roomForRows);
    // A scroll bar at the side does not cover what is there.
    const int bar = wanted > mostHeight ? Fl::scrollbar_size() : 0;
    size_range(std::min(scaled(kLeastWindow), mostWidth), std::min(below + scaled(kLeastWindow) / 2, mostHeight),
               placement_->growsSideways() ? 0 : width + bar, placement_->growsDown() ? 0 : height + below);
    openedWidth_ = std::min(width + bar, mostWidth);
    openedHeight_ = std::min(wanted, mostHeight);
    size(openedWidth_, openedHeight_);
}

void DialogWindow::resize(int x, int y, int width, int height) {
    const bool isOther = width != w() || height != h();
    Fl_Double_Window::resize(x, y, width, height);
    if (isOther && keys_ != nullptr)
        layOut();
}

void DialogWindow::layOut() {
    const int bar = keys_->heightFor(w());
    // Where the controls do not fit, they need the room more than the help's third and fourth line do.
    const bool isLow = h() - bar - scaled(kHelpHeight) < placement_->leastHeight();
    const int help = std::clamp(h() - bar, 0, scaled(isLow ? kLowHelpHeight : kHelpHeight));
    const int margin = scaled(kHelpMargin);
    scroll_->resize(0, 0, w(), std::max(0, h() - bar - help));
    help_->resize(margin, h() - bar - help, w() - 2 * margin, help);
    keys_->resize(0, h() - bar, w(), bar);
    placeControls();
    init_sizes();
    revealed_ = -1;
    redraw();
}

void DialogWindow::placeControls() {
    const int bar = Fl::scrollbar_size();
    const bool isLow = scroll_->h() < placement_->leastHeight();
    const bool isNarrow = scroll_->w() - (isLow ? bar : 0) < placement_->leastWidth();
    const int width = std::max(placement_->leastWidth(), scroll_->w() - (isLow ? bar : 0));
    const int height = std::max(placement_->leastHeight(), scroll_->h() - (isNarrow ? bar : 0));
    const std::vector<Place> places = placement_->at(width, height);
    scroll_->scroll_to(0, 0);
    ground_->resize(0, 0, width, height);
    for (std::size_t index = 0; index < places.size(); ++index) {
        const Place& place = places[index];
        widgets_[index]->resize(place.x, place.y, place.width, place.height);
        if (auto* list = dynamic_cast<RowList*>(widgets_[index]))
            list->revealChosen();
    }
}

// Scrolls as far as needed to show a widget, its begin above all.
void DialogWindow::reveal(const Fl_Widget& widget) {
    const auto missing = [](int at, int length, int room) {
        return at < 0 ? at : std::clamp(at + length - room, 0, at);
    };
    const int bar = Fl::scrollbar_size();
    const int width = scroll_->w() - (ground_->h() > scroll_->h() ? bar : 0);
    const int height = scroll_->h() - (ground_->w() > scroll_->w() ? bar : 0);
    const int right = missing(widget.x(), widget.w(), width);
    const int down = missing(widget.y(), widget.h(), height);
    if (right != 0 || down != 0)
        scroll_->scroll_to(scroll_->xposition() + right, scroll_->yposition() + down);
}

void DialogWindow::offerKeys(const std::vector<KeyOffer>& keys) {
    if (keys_->offer(keys))
        layOut();
}

void DialogWindow::heard(Fl_Widget* widget, void* data) {
    auto* window = dynamic_cast<DialogWindow*>(widget->window());
    if (window != nullptr)
        window->hear(static_cast<int>(reinterpret_cast<intptr_t>(data)));
}

void DialogWindow::press(const JxwControlInfo& button) {
    const bool leaves = button.id == IDCANCEL || (button.flags & JXW_CLOSE) != 0;
    calls_.add([this, id = button.id, leaves, handle = dialog_, caption = assist::withoutAccessKey(button.text)] {
        if (!leaves)
            calls_.working(caption);
        if (id == IDCANCEL)
            calls_.cancelling();
        JXW_UserCommand(handle, id);
    });
}

void DialogWindow::hearList(int index, unsigned short id) {
    const int row = listAt(index).value() - 1;
    // A click below the last row chooses nothing else.
    if (row < 0)
        return;
    const bool isDouble = Fl::event() == FL_RELEASE && Fl::event_clicks() != 0;
    calls_.add([id, row, isDouble, handle = dialog_] {
        if (isDouble)
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
        calls_.add([id = control.id, handle = dialog_,
                    text = std::string(static_cast<Fl_Input*>(widgets_[static_cast<std::size_t>(index)])->value())] {
            JXW_UserEdit(handle, id, text.c_str());
        });
    else
        calls_.add([id = control.id, handle = dialog_] { JXW_UserCheck(handle, id); });
}

void DialogWindow::syncList(int index, const JxwControlInfo& control) {
    RowList& list = listAt(index);
    std::vector<std::string> rows;
    rows.reserve(static_cast<std::size_t>(std::max(control.rowCount, 0)));
    for (int row = 0; row < control.rowCount; ++row)
        rows.emplace_back(JXW_GetRow(dialog_, index, row));
    list.setRows(rows);
    if (list.value() != control.selection + 1) {
        list.value(control.selection + 1);
        list.revealChosen();
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
    if (isTurned(control))
        static_cast<Fl_Button&>(widget).value(control.checked != 0 ? 1 : 0);
    std::string& label = labels_[static_cast<std::size_t>(index)];
    if (label == control.text)
        return;
    label = control.text;
    widget.copy_label(labelOf(control).c_str());
    scroll_->redraw();
}

void DialogWindow::sync() {
    JxwDialogInfo info{};
    if (JXW_GetDialogInfo(dialog_, &info) == 0)
        return;
    const std::string title = titleOf(info.title);
    if (label() == nullptr || label() != title)
        copy_label(title.c_str());
    for (int index = 0; index < info.controlCount; ++index) {
        JxwControlInfo control{};
        if (JXW_GetControlInfo(dialog_, index, &control) != 0)
            syncWidget(index, control);
    }
    // Giving the focus to a window that is not shown would show it.
    if (shown() != 0 && info.active != 0 && info.focus >= 0 && focusedIndex() != info.focus)
        widgets_[static_cast<std::size_t>(info.focus)]->take_focus();
    if (info.focus >= 0 && info.focus != revealed_) {
        revealed_ = info.focus;
        reveal(*widgets_[static_cast<std::size_t>(info.focus)]);
    }
    if (!told_)
        showHelp(assist::headingOf(dialog_) + positionIn(info.focus) + "\n" + assist::helpOn(dialog_, info.focus));
}

// "   12 of 146" for a list with a selected row.
std::string DialogWindow::positionIn(int index) const {
    JxwControlInfo list{};
    if (JXW_GetControlInfo(dialog_, index, &list) == 0 || list.kind != JXW_LISTBOX || list.selection < 0)
        return {};
    return "   " + std::to_string(list.selection + 1) + " of " + std::to_string(list.rowCount);
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
        calls_.add([key, handle = dialog_] { JXW_UserAccessKey(handle, key); });
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
    const int row = rowFor(key, list, listAt(index).rowsShown());
    if (row >= 0) {
        search_.close();
        calls_.add([handle = dialog_, id = list.id, row] { JXW_UserSelect(handle, id, row); });
        return true;
    }
    if (key == FL_BackSpace && search_.isOpen(list)) {
        calls_.add([this, index, list] { tell(search_.takeBack(dialog_, index, list)); });
        return true;
    }
    const std::string text(Fl::event_text(), static_cast<std::size_t>(Fl::event_length()));
    if (text.empty() || static_cast<unsigned char>(text[0]) < ' ' || text[0] == '\x7f')
        return false;
    calls_.add([this, index, list, text, time = now()] {
        const std::string said = search_.type(dialog_, index, list, text, time);
        if (!said.empty())
            tell(said);
    });
    return true;
}

// Whether a caret stands in a field; of one that the user has just come to, all is selected.
bool DialogWindow::isTyping() const {
    const auto* field = dynamic_cast<const Fl_Input*>(Fl::focus());
    return field != nullptr && field->position() == field->mark();
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
    calls_.add([this, meaning, handle = dialog_] {
        if (meaning == JXW_KEY_ESCAPE)
            calls_.cancelling();
        if (meaning == JXW_KEY_ENTER)
            calls_.working("");
        if (meaning == JXW_KEY_NEXT && isTyping() && assist::completePath(handle))
            return;
        JXW_UserKey(handle, meaning);
    });
    return true;
}

}  // namespace jx::desktop
