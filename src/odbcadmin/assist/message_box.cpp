// Buttons, sign and first button of message boxes.
#include "odbcadmin/assist/message_box.h"

#include <text_ids.h>

#include <string>

#include "odbcadmin/assist/library_text.h"
#include "odbcadmin/assist/say.h"

namespace jx::assist {

namespace {

// Screens may have added something behind the text.
bool beginsWith(std::string_view text, const std::string& question) {
    return !question.empty() && text.starts_with(question);
}

const char* signOf(unsigned int style) {
    switch (style & 0xF0U) {
        case MB_ICONSTOP:
            return "X";
        case MB_ICONQUESTION:
            return "?";
        case MB_ICONEXCLAMATION:
            return "!";
        default:
            return "";
    }
}

}  // namespace

BoxStyle boxStyle(unsigned int style, std::string_view text) {
    constexpr unsigned int kButtonSet = 15;
    if ((style & kButtonSet) != MB_YESNO)
        return {{{IDOK, "&OK"}}, 0, signOf(style)};
    const bool destroysNothing = beginsWith(text, questionToGoOn()) || beginsWith(text, libraryText(JxTextNoScript));
    return {{{IDYES, "&Yes"}, {IDNO, "&No"}}, destroysNothing ? std::size_t{0} : std::size_t{1}, signOf(style)};
}

}  // namespace jx::assist
