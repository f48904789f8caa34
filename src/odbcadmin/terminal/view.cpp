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
    // One column is left for the caret behind the text. A long text is measured once, from the caret back.
    const std::vector<Glyph> glyphs = glyphsOf(text.substr(firstByte, caret - firstByte), charset);
    int left = std::max(columns, 1) - 1;
    auto seen = glyphs.rbegin();
    while (seen != glyphs.rend() && seen->columns <= left)
        left -= (seen++)->columns;
    if (seen != glyphs.rend())
        firstByte += seen->end;
}

}  // namespace jx::terminal
