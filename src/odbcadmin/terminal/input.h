// What comes from the user of a terminal, one thing at a time.
#pragma once

#include <string>

#include "odbcadmin/terminal/geometry.h"

namespace jx::terminal {

enum class Key {
    none,       // something that means nothing here, or a second without anything
    character,  // text
    enter,
    escape,
    tab,
    backTab,
    up,
    down,
    left,
    right,
    home,
    end,
    pageUp,
    pageDown,
    backspace,
    erase,         // the key Delete
    eraseWord,     // Ctrl-W
    eraseToBegin,  // Ctrl-U
    eraseToEnd,    // Ctrl-K
    wordLeft,      // Ctrl and the arrow
    wordRight,
    undo,  // Ctrl-_
    f1,    // the function keys in their order
    f2,
    f3,
    f4,
    f5,
    f6,
    f7,
    f8,
    f9,
    f10,
    f11,
    f12,
    paste,        // text that the terminal inserts, line breaks and all
    press,        // the left mouse button, at place
    doublePress,  // the same a second time at one place within a short time
    wheelUp,
    wheelDown,
    repaint,  // the size changed or the program was stopped
    gone,     // there is no user any more
};

// The number of a function key; 0 for every other key.
constexpr int functionNumber(Key key) {
    return key >= Key::f1 && key <= Key::f12 ? static_cast<int>(key) - static_cast<int>(Key::f1) + 1 : 0;
}
constexpr Key functionKey(int number) {
    return static_cast<Key>(static_cast<int>(Key::f1) + number - 1);
}

struct Input {
    Key key = Key::none;
    bool alt = false;
    std::string text;  // of a character or what was pasted, in UTF-8
    Point place;       // of the mouse
    long time = 0;     // when it came, in milliseconds from any begin
};

}  // namespace jx::terminal
