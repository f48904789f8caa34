// The callbacks between the dialog layer and the toolkit.
#include "odbcadmin/desktop/desktop_screen.h"

#include <FL/Fl.H>
#include <FL/fl_draw.H>

#include <utility>

#include "odbcadmin/assist/help.h"

namespace jx::desktop {

DesktopScreen* DesktopScreen::current_ = nullptr;

DesktopScreen::DesktopScreen() {
    current_ = this;
    Fl::event_dispatch(dispatch);
    JxwScreen table{};
    table.context = this;
    table.opened = [](void* context, HWND dialog) { self(context).opened(dialog); };
    table.closed = [](void* context, HWND dialog) { self(context).windows_.erase(dialog); };
    table.wait = [](void* context, HWND dialog) { return self(context).wait(dialog); };
    table.messageBox = [](void* context, HWND /*owner*/, const char* text, const char* title, unsigned int style) {
        return self(context).ask(text, title, style);
    };
    table.cursor = [](void* context, unsigned int cursor) { self(context).setCursor(cursor); };
    JXW_SetScreen(&table);
}

DesktopScreen::~DesktopScreen() {
    JXW_SetScreen(nullptr);
    Fl::event_dispatch(nullptr);
    current_ = nullptr;
}

DialogWindow* DesktopScreen::front() {
    return windows_.empty() ? nullptr : windows_.rbegin()->second.get();
}

void DesktopScreen::opened(HWND dialog) {
    auto window = std::make_unique<DialogWindow>(
        dialog, [this](std::function<void()> action) { actions_.push_back(std::move(action)); },
        [this](const std::string& what) { work(what); }, [this] { cancelled_ = true; });
    if (DialogWindow* owner = front())
        window->position(owner->x() + 24, owner->y() + 24);
    else
        window->position((Fl::w() - window->w()) / 2, (Fl::h() - window->h()) / 3);
    window->set_modal();
    window->show();
    windows_[dialog] = std::move(window);
    assistant_.opened(dialog);
}

void DesktopScreen::carryOut(const std::function<void()>& action) {
    assistant_.beforeAction();
    cancelled_ = false;
    selections_.around([&] {
        action();
        if (selections_.isInCommand())
            dropTyped();
    });
    if (message_ == nullptr && front() != nullptr)
        front()->cursor(FL_CURSOR_DEFAULT);
}

int DesktopScreen::wait(HWND dialog) {
    inFront_ = dialog;
    while (actions_.empty()) {
        // A button that is held down shows what it would become; it is left alone until it is let go.
        for (const auto& [handle, window] : windows_)
            if (Fl::pushed() == nullptr)
                window->sync();
        if (Fl::wait() < 0 || Fl::first_window() == nullptr)
            return 0;
        const auto window = windows_.find(dialog);
        if (window != windows_.end() && actions_.empty())
            window->second->reportFocus();
    }
    const std::function<void()> action = std::move(actions_.front());
    actions_.pop_front();
    carryOut(action);
    return 1;
}

// Keys and presses that came while a library worked were meant for what was seen then.
void DesktopScreen::dropTyped() {
    isDropping_ = true;
    while (Fl::ready() != 0)
        Fl::check();
    isDropping_ = false;
}

unsigned int DesktopScreen::ask(const char* text, const char* title, unsigned int style) {
    if (cancelled_ && assist::asksWhetherCancelled(text))
        return IDOK;
    std::unique_ptr<MessageWindow> before = std::move(message_);
    message_ = std::make_unique<MessageWindow>(assistant_.boxText(text), title, style);
    if (const DialogWindow* owner = front())
        message_->position(owner->x() + 40, owner->y() + 60);
    message_->open();
    while (!message_->answer() && Fl::wait() >= 0) {
    }
    const unsigned int answer = message_->answer().value_or(message_->leastAnswer());
    message_ = std::move(before);
    assistant_.boxClosed();
    return answer;
}

void DesktopScreen::work(const std::string& what) {
    DialogWindow* window = front();
    if (window == nullptr)
        return;
    selections_.begin(window->dialog());
    window->tell("Working" + (what.empty() ? "" : " on " + what.substr(0, what.find("..."))) + ". Please wait.");
    window->cursor(FL_CURSOR_WAIT);
    Fl::flush();
    window->untell();
}

void DesktopScreen::setCursor(unsigned int cursor) {
    if (front() != nullptr) {
        front()->cursor(cursor == kJxwWaitCursor ? FL_CURSOR_WAIT : FL_CURSOR_DEFAULT);
        Fl::flush();
    }
}

bool DesktopScreen::takeKey(Fl_Window* window) {
    const int key = Fl::event_key();
    if (message_ != nullptr)
        return message_->takeKey(key);
    auto* dialog = dynamic_cast<DialogWindow*>(window);
    if (dialog == nullptr || dialog->dialog() != inFront_)
        return false;
    const HWND handle = inFront_;
    if (key == FL_F + 1)
        actions_.emplace_back([handle] {
            guiMessageBox(handle, reinterpret_cast<const unsigned char*>(assist::helpOnAll(handle).c_str()),
                          reinterpret_cast<const unsigned char*>("Help"), MB_OK);
        });
    else if (key == FL_F + 2)
        actions_.emplace_back([this, handle] { assistant_.registerDriver(handle); });
    else
        return dialog->takeKey(key, static_cast<unsigned int>(Fl::event_state()));
    return true;
}

// Keys that every dialog knows go before the widgets' own.
int DesktopScreen::dispatch(int event, Fl_Window* window) {
    if (current_ != nullptr && current_->isDropping_ &&
        (event == FL_KEYBOARD || event == FL_PUSH || event == FL_SHORTCUT))
        return 1;
    if (event == FL_KEYBOARD && current_ != nullptr && current_->takeKey(window))
        return 1;
    auto* dialog = dynamic_cast<DialogWindow*>(window);
    if (event == FL_PUSH && dialog != nullptr)
        dialog->explainAt(Fl::event_x(), Fl::event_y());
    return Fl::handle_(event, window);
}

}  // namespace jx::desktop
