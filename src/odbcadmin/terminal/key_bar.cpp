// Choosing and placing the keys of the line.
#include "odbcadmin/terminal/key_bar.h"

#include <utility>

namespace jx::terminal {

namespace {

constexpr int kMargin = 1;

}  // namespace

std::vector<KeyBar::Item> KeyBar::itemsOf(Hints hints, const std::vector<assist::FunctionKey>& keys) {
    std::vector<Item> items;
    if (hints == Hints::whole)
        items = {{"Tab", "next", Key::tab},
                 {"Arrows", "choose", Key::none},
                 {"Enter", "<button>", Key::enter},
                 {"Esc", "leave", Key::escape}};
    else if (hints == Hints::shortened)
        items = {{"Tab", "", Key::tab}, {"Enter", "", Key::enter}, {"Esc", "", Key::escape}};
    for (const assist::FunctionKey& key : keys)
        items.push_back({"F" + std::to_string(key.number), key.label, functionKey(key.number)});
    return items;
}

// Gives each item its columns; returns the columns that all take with the margins.
int KeyBar::place(std::vector<Item>& items, int gap, Charset charset) {
    int column = kMargin;
    for (Item& item : items) {
        item.column = column;
        item.columns = columnsOf(item.name, charset) + (item.label.empty() ? 0 : 1 + columnsOf(item.label, charset));
        column += item.columns + gap;
    }
    return column - gap + kMargin;
}

KeyBar::KeyBar(const std::vector<assist::FunctionKey>& keys, int columns, Charset charset) {
    constexpr std::pair<Hints, int> kForms[] = {
        {Hints::whole, 2}, {Hints::shortened, 2}, {Hints::shortened, 1}, {Hints::none, 2}, {Hints::none, 1}};
    for (const auto& [hints, gap] : kForms) {
        items_ = itemsOf(hints, keys);
        if (place(items_, gap, charset) <= columns)
            return;
    }
    while (items_.size() > 1 && items_.back().column + items_.back().columns > columns - kMargin)
        items_.pop_back();
}

void KeyBar::paint(Canvas& canvas, const Rect& part) const {
    canvas.fill(part, Look::bar);
    canvas.clip(part);
    for (const Item& item : items_) {
        const Point begin{part.column + item.column, part.line};
        const int end = canvas.put(begin, item.name, Look::barKey);
        canvas.put({end + 1, part.line}, item.label, Look::bar);
    }
    canvas.clip(canvas.whole());
}

Key KeyBar::keyAt(int column) const {
    for (const Item& item : items_)
        if (column >= item.column && column < item.column + item.columns)
            return item.key;
    return Key::none;
}

}  // namespace jx::terminal
