// The line of keys at the bottom of the screen.
#pragma once

#include <string>
#include <vector>

#include "odbcadmin/assist/function_key.h"
#include "odbcadmin/terminal/canvas.h"
#include "odbcadmin/terminal/input.h"

namespace jx::terminal {

// KeyBar: which keys the line names and where, as many as fit: hints about Tab, Enter and Escape give way to function
// keys, and the last function keys give way to the first ones.
//
//     const KeyBar bar(assistant.functionKeys(dialog), part.columns, charset);
//     bar.paint(canvas, part);
//     bar.keyAt(column)          // the key that a click there stands for
class KeyBar {
public:
    KeyBar(const std::vector<assist::FunctionKey>& keys, int columns, Charset charset);

    // part: one line, as wide as the columns given.
    void paint(Canvas& canvas, const Rect& part) const;

    // Key::none where no key stands. Columns are counted from the begin of the line.
    Key keyAt(int column) const;

private:
    struct Item {
        std::string name;   // of the key
        std::string label;  // what it does
        Key key = Key::none;
        int column = 0;
        int columns = 0;
    };
    enum class Hints { whole, shortened, none };

    static std::vector<Item> itemsOf(Hints hints, const std::vector<assist::FunctionKey>& keys);
    static int place(std::vector<Item>& items, int gap, Charset charset);

    std::vector<Item> items_;
};

}  // namespace jx::terminal
