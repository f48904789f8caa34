// The function keys: what a screen offers besides the controls of its dialogs.
#pragma once

#include <jxscreen.h>

#include <functional>
#include <string>

namespace jx::assist {

// FunctionKey: one of them, as the line of keys shows it.
//
//     {3, "test", "", [this](HWND dialog) { return test(dialog); }}     // "F3 test"
//
// Screens show the keys in the order of Assistant::functionKeys, and press a key when it is typed or clicked.
struct FunctionKey {
    int number = 0;       // 1 for F1, up to 12
    std::string label;    // a word or two
    std::string working;  // what the key works on, when that may take its time: "Working on ... Please wait."
    // Does it in the dialog in front. Gives a line for the user, mostly an empty one.
    std::function<std::string(HWND dialog)> press;
};

}  // namespace jx::assist
