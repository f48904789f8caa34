// Keeping selections and carets in view.
#include "odbcadmin/terminal/view.h"

#include "odbcadmin/terminal/edit_text.h"

namespace jx::terminal {

void ListView::follow(const JxwControlInfo& list, int rowsSeen) {
    if ((list.selection != shownSelection || rowsSeen != shownRows) && list.selection >= 0)
        firstRow = std::min(list.selection, std::max(firstRow, list.selection - rowsSeen + 1));
    shownSelection = list.selection;
    shownRows = rowsSeen;
    firstRow = std::clamp(firstRow, 0, std::max(0, list.rowCount - rowsSeen));
}

void ListView::scroll(const JxwControlInfo& list, int rowsSeen, int rows) {
    firstRow = std::clamp(firstRow + rows, 0, std::max(0, list.rowCount - rowsSeen));
}

ListThumb thumbOf(const JxwControlInfo& list, int rowsSeen, int firstRow) {
    const int track = rowsSeen - 2;
    const int hidden = list.rowCount - rowsSeen;
    if (track < 1 || hidden <= 0)
        return {};
    const int lines = std::max(1, track * rowsSeen / list.rowCount);
    return {1 + (track - lines) * firstRow / hidden, lines};
}

void EditView::follow(std::string_view text, int columns, Charset charset) {
    if (text != shownText) {
        shownText = text;
        caret = text.size();
        firstByte = 0;
        history.clear();
    }
    if (firstByte >= caret)
        firstByte = caretBefore(text, caret, charset);
    // A long text is measured once, from the caret back.
    const std::vector<Glyph> glyphs = glyphsOf(text.substr(firstByte, caret - firstByte), charset);
    // The caret needs a column behind the text, and two where a mark stands there.
    int left = std::max(columns - (caret < text.size() ? 2 : 1), 1);
    auto seen = glyphs.rbegin();
    while (seen != glyphs.rend() && seen->columns <= left)
        left -= (seen++)->columns;
    if (seen != glyphs.rend())
        firstByte += seen->end;
    fill(text, columns, charset);
}

// A field that became wider, or a text that became shorter, leaves no room free behind the text while part of it is
// hidden before.
void EditView::fill(std::string_view text, int columns, Charset charset) {
    if (firstByte == 0 || cutTo(text.substr(firstByte), columns, charset).size() < text.size() - firstByte)
        return;
    int used = columnsOf(text.substr(firstByte), charset) + 1;
    while (firstByte > 0) {
        const std::size_t before = caretBefore(text, firstByte, charset);
        used += columnsOf(text.substr(before, firstByte - before), charset);
        if (used > columns)
            return;
        firstByte = before;
    }
}

}  // namespace jx::terminal
