// What a message box asks, by its style: for screens that show it in their own way.
#pragma once

#include <jxdialog.h>

#include <cstddef>
#include <vector>

namespace jx::assist {

struct BoxButton {
    unsigned int answer;
    const char* text;  // with its "&", which stands first
};

struct BoxStyle {
    std::vector<BoxButton> buttons;
    std::size_t first = 0;  // the button that the user begins at: a question about trouble begins at its "No"
    const char* sign = "";  // "X", "?", "!" or none

    // The answer when the user is gone: No, or OK where there is nothing else.
    unsigned int leastAnswer() const { return buttons.back().answer; }
};

inline BoxStyle boxStyle(unsigned int style) {
    constexpr unsigned int kButtonSet = 15;
    const unsigned int icon = style & 0xF0U;
    const char* sign = icon == MB_ICONSTOP          ? "X"
                       : icon == MB_ICONQUESTION    ? "?"
                       : icon == MB_ICONEXCLAMATION ? "!"
                                                    : "";
    if ((style & kButtonSet) != MB_YESNO)
        return {{{IDOK, "&OK"}}, 0, sign};
    return {{{IDYES, "&Yes"}, {IDNO, "&No"}}, icon == MB_ICONEXCLAMATION ? std::size_t{1} : std::size_t{0}, sign};
}

}  // namespace jx::assist
