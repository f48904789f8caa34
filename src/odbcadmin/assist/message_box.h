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

inline BoxStyle boxStyle(unsigned int style, std::string_view text) {
    constexpr unsigned int kButtonSet = 15;
    const unsigned int icon = style & 0xF0U;
    const char* sign = icon == MB_ICONSTOP          ? "X"
                       : icon == MB_ICONQUESTION    ? "?"
                       : icon == MB_ICONEXCLAMATION ? "!"
                                                    : "";
    if ((style & kButtonSet) != MB_YESNO)
        return {{{IDOK, "&OK"}}, 0, sign};
    // The one question of the library whose "Yes" changes nothing.
    const bool isHarmless = text.starts_with("There is no installation script");
    return {{{IDYES, "&Yes"}, {IDNO, "&No"}}, isHarmless ? std::size_t{0} : std::size_t{1}, sign};
}

}  // namespace jx::assist
