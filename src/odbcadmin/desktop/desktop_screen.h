// The desktop as a screen of the dialog layer.
#pragma once

#include <jxscreen.h>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "odbcadmin/assist/assistant.h"
#include "odbcadmin/assist/screen_table.h"
#include "odbcadmin/assist/selection.h"
#include "odbcadmin/desktop/dialog_window.h"
#include "odbcadmin/desktop/message_window.h"
#include "odbcadmin/desktop/typed_ahead.h"
#include "odbcadmin/desktop/watch.h"

namespace jx::desktop {

// DesktopScreen: the calling thread's screen while it lives. One at a time in a process. What the user does is noted
// while the toolkit calls and carried out after that, so no window goes while a widget of it is at work.
class DesktopScreen {
public:
    // noteWorker hears whose code runs.
    explicit DesktopScreen(NoteWorker noteWorker);
    ~DesktopScreen();
    DesktopScreen(const DesktopScreen&) = delete;
    DesktopScreen& operator=(const DesktopScreen&) = delete;

private:
    friend void assist::setScreen<DesktopScreen>(DesktopScreen& screen);
    static int dispatch(int event, Fl_Window* window);

    std::vector<KeyOffer> offers(HWND dialog);

    // What the user made of a dialog's window, for the next time it opens.
    using DialogName = std::pair<std::string, unsigned short>;
    struct Size {
        int width, height;
    };

    void opened(HWND dialog);
    void closed(HWND dialog);
    int wait(HWND dialog);
    unsigned int ask(const char* text, const char* title, unsigned int style);
    void setCursor(unsigned int cursor);
    void setWorker(const std::string& worker);
    void work(const std::string& what);
    void showIdle();
    void dropTyped();
    void carryOut(const std::function<void()>& action);
    bool takeKey(Fl_Window* window);
    void press(HWND dialog, const assist::FunctionKey& key);
    void tell(HWND dialog, const std::string& text);
    DialogWindow* front();

    std::map<HWND, std::unique_ptr<DialogWindow>> windows_;
    std::map<DialogName, Size> sizes_;
    std::unique_ptr<MessageWindow> message_;
    std::deque<std::function<void()>> actions_;
    // A question is answered at once: what is still to be done waits for its end.
    TypedAhead typedAhead_{[this] { return !actions_.empty() && message_ == nullptr; }};
    assist::Assistant assistant_;
    NoteWorker noteWorker_;
    std::string worker_;
    HWND inFront_ = 0;
    assist::SelectionKeeper selections_;
    bool isDropping_ = false;
    bool cancelled_ = false;  // by the last action

    static DesktopScreen* current_;
};

}  // namespace jx::desktop
