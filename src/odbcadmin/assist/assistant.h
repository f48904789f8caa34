// What both screens add to the library's dialogs.
#pragma once

#include <jxscreen.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "odbcadmin/assist/function_key.h"
#include "odbcadmin/model/configuration.h"

namespace jx::assist {

// Assistant: hears what happens on one thread's screen.
//
// A box about a library that could not be loaded also shows the loader's own sentence, one about a data source that was
// not changed also the file and the reason. The box at the end of a script installation, which the library always calls
// aborted, begins with what the files show to have been entered. Lists of drivers are brought up to date after that and
// after a driver was registered by hand.
class Assistant {
public:
    // A dialog was opened.
    void opened(HWND dialog);

    // The user is about to do something: what earlier actions left behind is forgotten.
    void beforeAction();

    // The text to show for a message box.
    std::string boxText(const std::string& text);

    // After a message box was answered.
    void boxClosed();

    // The function keys that mean something in a dialog, in the order in which they are shown. They may be pressed as
    // long as the assistant lives.
    std::vector<FunctionKey> functionKeys(HWND dialog);

    // Shows the dialog that registers a driver; owner is the dialog in front. Nothing when that dialog is in front.
    void registerDriver(HWND owner);

private:
    std::optional<model::Configuration> beforeScript_;
};

// Whether a box of the library is only about a setup that the user may have cancelled: after a Cancel it is not shown.
bool asksWhetherCancelled(std::string_view text);

}  // namespace jx::assist
