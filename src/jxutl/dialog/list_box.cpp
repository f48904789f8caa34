// Keeps the rows of a list box and moves the selection with its row.
#include "jxutl/dialog/list_box.h"

#include <jxdialog.h>

namespace jx::dialog {

namespace {

constexpr int kMostRows = 32767;  // callers take rows as signed 16 bits

}  // namespace

const std::string* ListBox::row(int index) const {
    return has(index) ? &rows_[static_cast<std::size_t>(index)] : nullptr;
}

int ListBox::insert(int index, std::string_view text) {
    const int place = index == -1 ? rowCount() : index;
    if (place < 0 || place > rowCount())
        return LB_ERR;
    if (rowCount() >= kMostRows)
        return LB_ERRSPACE;
    rows_.emplace(rows_.begin() + place, text);
    if (selection_ >= place)
        ++selection_;
    return place;
}

int ListBox::remove(int index) {
    if (!has(index))
        return LB_ERR;
    rows_.erase(rows_.begin() + index);
    if (selection_ == index)
        selection_ = -1;
    else if (selection_ > index)
        --selection_;
    return rowCount();
}

int ListBox::select(int index) {
    constexpr int kNone16 = 0xFFFF;  // -1 in a caller's 16 bits
    if (index == -1 || index == kNone16) {
        selection_ = -1;
        return LB_ERR;
    }
    if (!has(index))
        return LB_ERR;
    selection_ = index;
    return index;
}

void ListBox::clear() {
    rows_.clear();
    selection_ = -1;
}

}  // namespace jx::dialog
