// What an edit field held before, for taking changes back.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>

#include "odbcadmin/terminal/input.h"

namespace jx::terminal {

// EditState: a text and where its caret stands, in bytes.
struct EditState {
    std::string text;
    std::size_t caret = 0;
};

// EditHistory: the states of one field, the oldest ones forgotten after a hundred. Characters typed one after another
// are one change, and so are characters erased one after another.
class EditHistory {
public:
    // Keeps the state before a key changes it.
    void keep(EditState before, Key key);

    // The next key begins a change of its own: the caret was moved.
    void endRun() { last_ = Key::none; }

    // The state before the last change, which is forgotten; nothing when there is none.
    std::optional<EditState> takeBack();

    void clear();

private:
    std::deque<EditState> states_;
    Key last_ = Key::none;
};

}  // namespace jx::terminal
