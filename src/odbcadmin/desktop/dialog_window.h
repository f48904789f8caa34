// One dialog as a window of the desktop.
#pragma once

#include <FL/Fl_Box.H>
#include <FL/Fl_Browser_.H>
#include <FL/Fl_Double_Window.H>
#include <jxscreen.h>

#include <functional>
#include <string>
#include <vector>

#include "odbcadmin/assist/list_search.h"

namespace jx::desktop {

// What the user did, to be carried out when the toolkit has no part in it any more.
using Actions = std::function<void(std::function<void()>)>;

// DialogWindow: widgets for the controls of a dialog, two dots to a dialog unit, and a line of help below them. The
// dialog layer keeps what they show: sync reads it again.
class DialogWindow : public Fl_Double_Window {
public:
    // add takes the user's actions; working is called before something that may take its time, cancelling before the
    // user leaves the dialog without its result.
    DialogWindow(HWND dialog, Actions add, std::function<void(const std::string&)> working,
                 std::function<void()> cancelling);

    // Shows what the layer has now.
    void sync();

    // Tells the layer when the toolkit's focus moved.
    void reportFocus();

    // A key that means the same in every dialog; true when it was taken.
    bool takeKey(int key, unsigned int state);

    // A press that no widget takes, since what is there is grey: the help line says why.
    void explainAt(int column, int line);

    // Shows text in place of the help, until the next key or untell and sync.
    void tell(const std::string& text);
    void untell() { told_ = false; }

    HWND dialog() const { return dialog_; }

private:
    Fl_Widget* makeWidget(int index, const JxwControlInfo& control);
    void syncWidget(int index, const JxwControlInfo& control);
    void syncList(int index, const JxwControlInfo& control);
    void hear(int index);
    void hearList(int index, unsigned short id);
    void press(const JxwControlInfo& button);
    void pressAccessKey(int key);
    static int rowFor(int key, const JxwControlInfo& list, const Fl_Browser_& widget);
    bool takeListKey(int key, unsigned int state);
    int focusedIndex() const;
    void showHelp(const std::string& text);

    static void heard(Fl_Widget* widget, void* window);

    HWND dialog_;
    Actions add_;
    std::function<void(const std::string&)> working_;
    std::function<void()> cancelling_;
    assist::ListSearch search_;
    std::vector<Fl_Widget*> widgets_;  // by index of their control; owned by the window
    std::vector<std::string> labels_;  // what they show, to see a change
    Fl_Box* help_ = nullptr;
    bool told_ = false;
};

// A text as the toolkit's labels take it: "@" would begin a symbol.
std::string asLabel(const std::string& text);

}  // namespace jx::desktop
