// One dialog as a window of the desktop.
#pragma once

#include <FL/Fl_Box.H>
#include <FL/Fl_Double_Window.H>
#include <FL/Fl_Scroll.H>
#include <jxscreen.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "odbcadmin/assist/list_search.h"
#include "odbcadmin/desktop/control_widget.h"
#include "odbcadmin/desktop/key_bar.h"
#include "odbcadmin/desktop/placement.h"

namespace jx::desktop {

// What the user did, to be carried out when the toolkit has no part in it any more.
using Actions = std::function<void(std::function<void()>)>;

// What a window asks of the screen it is on.
struct ScreenCalls {
    Actions add;                                      // takes the user's actions
    std::function<void(const std::string&)> working;  // before something that may take its time
    std::function<void()> cancelling;                 // before the user leaves the dialog without its result
    std::function<void(std::size_t)> keyPressed;      // a button of the key bar, by its number
};

// DialogWindow: widgets for the controls of a dialog; below them a line of help and the key bar. The dialog layer keeps
// what they show: sync reads it again. The user may resize it; what does not fit scrolls.
class DialogWindow : public Fl_Double_Window {
public:
    // As large as the template, and larger for a long list, but never larger than the screen.
    DialogWindow(HWND dialog, ScreenCalls calls, const std::vector<KeyOffer>& keys);

    // Shows what the layer has now.
    void sync();

    // Shows these keys in the key bar.
    void offerKeys(const std::vector<KeyOffer>& keys);

    // Whether its size is not that which it opened with.
    bool wasResized() const { return w() != openedWidth_ || h() != openedHeight_; }

    void resize(int x, int y, int width, int height) override;

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
    void makeWidgets(const JxwDialogInfo& info);
    Fl_Widget* makeWidget(int index, const JxwControlInfo& control);
    void chooseSize(int width, int height);
    void layOut();
    void placeControls();
    void reveal(const Fl_Widget& widget);
    RowList& listAt(int index) const { return static_cast<RowList&>(*widgets_[static_cast<std::size_t>(index)]); }
    std::string positionIn(int index) const;
    void syncWidget(int index, const JxwControlInfo& control);
    void syncList(int index, const JxwControlInfo& control);
    void hear(int index);
    void hearList(int index, unsigned short id);
    void press(const JxwControlInfo& button);
    void pressAccessKey(int key);
    bool takeListKey(int key, unsigned int state);
    int focusedIndex() const;
    void showHelp(const std::string& text);

    static void heard(Fl_Widget* widget, void* window);

    HWND dialog_;
    ScreenCalls calls_;
    assist::ListSearch search_;
    std::unique_ptr<Placement> placement_;
    std::vector<Fl_Widget*> widgets_;  // by index of their control; like all widgets below, owned by the window
    std::vector<std::string> labels_;  // what they show, to see a change
    Fl_Scroll* scroll_ = nullptr;
    Fl_Box* ground_ = nullptr;  // as large as what scrolls
    Fl_Box* help_ = nullptr;
    KeyBar* keys_ = nullptr;
    int openedWidth_ = 0;
    int openedHeight_ = 0;
    int revealed_ = -1;
    bool told_ = false;
};

}  // namespace jx::desktop
