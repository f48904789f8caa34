// What a message box asks, by its style: for screens that show it in their own way.
#pragma once

#include <jxdialog.h>

#include <cstddef>
#include <string_view>
#include <vector>

namespace jx::assist {

struct BoxButton {
    unsigned int answer;
    const char* text;  // with its "&", which stands first
};

struct BoxStyle {
    std::vector<BoxButton> buttons;
    std::size_t first = 0;  // the button that the user begins at: a question begins at its "No",
                            // for many destroy something, a driver's own ones as well, and Enter comes easily
    const char* sign = "";  // "X", "?", "!" or none

    // The answer when the user is gone: No, or OK where there is nothing else.
    unsigned int leastAnswer() const { return buttons.back().answer; }
};

// A question begins at its "Yes" only if it is known to destroy nothing: one of asksToGoOn, and the library's own for
// another directory, which asks for it once more.
BoxStyle boxStyle(unsigned int style, std::string_view text);

}  // namespace jx::assist
