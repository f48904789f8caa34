// Keeping selections and carets in view.
#include "odbcadmin/terminal/view.h"

namespace jx::terminal {

void ListView::follow(const JxwControlInfo& list, int rowsSeen) {
    if (list.selection != shownSelection && list.selection >= 0)
        firstRow = std::min(list.selection, std::max(firstRow, list.selection - rowsSeen + 1));
    shownSelection = list.selection;
    firstRow = std::clamp(firstRow, 0, std::max(0, list.rowCount - rowsSeen));
}

void ListView::scroll(const JxwControlInfo& list, int rowsSeen, int rows) {
    firstRow = std::clamp(firstRow + rows, 0, std::max(0, list.rowCount - rowsSeen));
}

void EditView::follow(std::string_view text, int columns, Charset charset) {
    if (text != shownText) {
        shownText = text;
        caret = text.size();
        firstByte = 0;
    }
    firstByte = std::min(firstByte, caret);
    // One column is left for the caret behind the text.
    while (columnsOf(text.substr(firstByte, caret - firstByte), charset) >= std::max(columns, 1))
        firstByte = glyphsOf(text.substr(firstByte, caret - firstByte), charset).front().end + firstByte;
}

}  // namespace jx::terminal
