// Keeping and giving back states.
#include "odbcadmin/terminal/edit_history.h"

#include <utility>

namespace jx::terminal {

namespace {

constexpr std::size_t kMostStates = 100;

bool comesInRuns(Key key) {
    return key == Key::character || key == Key::backspace || key == Key::erase;
}

}  // namespace

void EditHistory::keep(EditState before, Key key) {
    const bool goesOn = key == std::exchange(last_, key) && comesInRuns(key) && !states_.empty();
    if (goesOn)
        return;
    states_.push_back(std::move(before));
    if (states_.size() > kMostStates)
        states_.pop_front();
}

std::optional<EditState> EditHistory::takeBack() {
    endRun();
    if (states_.empty())
        return std::nullopt;
    EditState state = std::move(states_.back());
    states_.pop_back();
    return state;
}

void EditHistory::clear() {
    states_.clear();
    endRun();
}

}  // namespace jx::terminal
