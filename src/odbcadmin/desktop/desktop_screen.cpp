// The callbacks between the dialog layer and the toolkit.
#include "odbcadmin/desktop/desktop_screen.h"

#include <FL/Fl.H>
#include <FL/fl_draw.H>

#include <utility>

#include "odbcadmin/assist/lists.h"
#include "odbcadmin/assist/worker.h"
#include "odbcadmin/desktop/scale.h"
#include "odbcadmin/desktop/toolkit.h"

namespace jx::desktop {

namespace {

std::pair<std::string, unsigned short> nameOf(HWND dialog) {
    JxwDialogInfo info{};
    if (JXW_GetDialogInfo(dialog, &info) == 0)
        return {};
    return {info.module, info.templateId};
}

}  // namespace

DesktopScreen* DesktopScreen::current_ = nullptr;

DesktopScreen::DesktopScreen(NoteWorker noteWorker) : noteWorker_(std::move(noteWorker)) {
    current_ = this;
    Fl::event_dispatch(dispatch);
    assist::setScreen(*this);
}

DesktopScreen::~DesktopScreen() {
    JXW_SetScreen(nullptr);
    Fl::event_dispatch(nullptr);
    current_ = nullptr;
}

DialogWindow* DesktopScreen::front() {
    return windows_.empty() ? nullptr : windows_.rbegin()->second.get();
}

std::vector<KeyOffer> DesktopScreen::offers(HWND dialog) {
    std::vector<KeyOffer> offers;
    for (const assist::FunctionKey& key : assistant_.functionKeys(dialog))
        offers.push_back({"F" + std::to_string(key.number), key.label});
    return offers;
}

void DesktopScreen::opened(HWND dialog) {
    ScreenCalls calls{[this](std::function<void()> action) { actions_.push_back(std::move(action)); },
                      [this](const std::string& what) { work(what); }, [this] { cancelled_ = true; },
                      [this, dialog](std::size_t place) { press(dialog, assistant_.functionKeys(dialog).at(place)); }};
    auto window = std::make_unique<DialogWindow>(dialog, std::move(calls), offers(dialog));
    const auto size = sizes_.find(nameOf(dialog));
    if (size != sizes_.end())
        window->size(size->second.width, size->second.height);
    if (const DialogWindow* owner = front()) {
        standOnScreen(*window, owner->x() + scaled(24), owner->y() + scaled(24));
        window->set_modal();
    } else {
        standOnScreen(*window, (Fl::w() - window->w()) / 2, (Fl::h() - window->h()) / 3);
    }
    window->show();
    windows_[dialog] = std::move(window);
    assistant_.opened(dialog);
}

void DesktopScreen::closed(HWND dialog) {
    const auto window = windows_.find(dialog);
    if (window == windows_.end())
        return;
    if (window->second->wasResized())
        sizes_[nameOf(dialog)] = {window->second->w(), window->second->h()};
    windows_.erase(window);
}

void DesktopScreen::carryOut(const std::function<void()>& action) {
    assistant_.beforeAction();
    cancelled_ = false;
    const std::string outer = worker_;
    selections_.around([&] {
        action();
        setWorker(outer);
        if (selections_.isInCommand())
            dropTyped();
    });
    if (message_ == nullptr)
        showIdle();
}

// Nothing works any more, or until the user has answered.
void DesktopScreen::showIdle() {
    for (const auto& [handle, window] : windows_)
        window->sync();
    if (front() != nullptr)
        front()->cursor(FL_CURSOR_DEFAULT);
}

int DesktopScreen::wait(HWND dialog) {
    inFront_ = dialog;
    constexpr double kGlance = 1;
    while (actions_.empty()) {
        tell(dialog, assist::noticeChange(dialog));
        windows_.at(dialog)->offerKeys(offers(dialog));
        // A button that is held down shows what it would become; it is left alone until it is let go.
        for (const auto& [handle, window] : windows_)
            if (Fl::pushed() == nullptr)
                window->sync();
        typedAhead_.handBack();
        if (Fl::wait(kGlance) < 0 || Fl::first_window() == nullptr)
            return 0;
        const auto window = windows_.find(dialog);
        if (window != windows_.end() && actions_.empty())
            window->second->reportFocus();
    }
    const std::function<void()> action = std::move(actions_.front());
    actions_.pop_front();
    // What was meant for rows that are not there any more is not done.
    if (const std::string changed = assist::noticeChange(dialog); changed.empty())
        carryOut(action);
    else
        tell(dialog, changed);
    return 1;
}

// Keys and presses that came while a library worked, or before a question was there, were meant for what was seen then.
void DesktopScreen::dropTyped() {
    typedAhead_.drop();
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
    showIdle();
    if (const DialogWindow* owner = front())
        standOnScreen(*message_, owner->x() + scaled(40), owner->y() + scaled(60));
    dropTyped();
    message_->open();
    while (!message_->answer() && Fl::wait() >= 0) {
    }
    const unsigned int answer = message_->answer().value_or(message_->leastAnswer());
    message_ = std::move(before);
    assistant_.boxClosed();
    return answer;
}

void DesktopScreen::setWorker(const std::string& worker) {
    if (worker != worker_)
        noteWorker_(worker);
    worker_ = worker;
}

void DesktopScreen::work(const std::string& what) {
    DialogWindow* window = front();
    if (window == nullptr)
        return;
    selections_.begin(window->dialog());
    const std::string worker = assist::workerOf(window->dialog());
    if (!worker.empty())
        setWorker(worker);
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

void DesktopScreen::tell(HWND dialog, const std::string& text) {
    const auto window = windows_.find(dialog);
    if (!text.empty() && window != windows_.end())
        window->second->tell(text);
}

void DesktopScreen::press(HWND dialog, const assist::FunctionKey& key) {
    actions_.emplace_back([this, dialog, key] {
        if (!key.working.empty())
            work(key.working);
        tell(dialog, key.press(dialog));
    });
}

bool DesktopScreen::takeKey(Fl_Window* window) {
    const int key = Fl::event_key();
    const auto state = static_cast<unsigned int>(Fl::event_state());
    if (message_ != nullptr)
        return message_->takeKey(key, state);
    auto* dialog = dynamic_cast<DialogWindow*>(window);
    if (dialog == nullptr || dialog->dialog() != inFront_)
        return false;
    for (const assist::FunctionKey& each : assistant_.functionKeys(inFront_)) {
        if (key == FL_F + each.number) {
            press(inFront_, each);
            return true;
        }
    }
    return dialog->takeKey(key, state);
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
