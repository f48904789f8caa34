// The rows of a list box and which of them is selected.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace jx::dialog {

// ListBox: every operation returns what its message does (jxdialog.h); a row that does not exist changes nothing.
// Throws std::bad_alloc when it cannot store a text, with the list unchanged.
class ListBox {
public:
    int rowCount() const { return static_cast<int>(rows_.size()); }
    int selection() const { return selection_; }  // -1: none

    // The text of a row; null when there is no such row.
    const std::string* row(int index) const;

    int insert(int index, std::string_view text);  // -1 for the end
    int remove(int index);
    int select(int index);
    void clear();

private:
    bool has(int index) const { return index >= 0 && index < rowCount(); }

    std::vector<std::string> rows_;
    int selection_ = -1;
};

}  // namespace jx::dialog
