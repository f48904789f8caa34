// Frames out of line characters.
#include "odbcadmin/terminal/frame.h"

namespace jx::terminal {

const Lines& linesOf(Charset charset) {
    static constexpr Lines kUtf8{"─", "│", "┌", "┐", "└", "┘", "▲", "▼", "◀", "▶", "…"};
    static constexpr Lines kAscii{"-", "|", "+", "+", "+", "+", "^", "v", "<", ">", ">"};
    return charset == Charset::utf8 ? kUtf8 : kAscii;
}

void drawFrame(Canvas& canvas, const Rect& part, Look look) {
    if (part.columns < 2 || part.lines < 2)
        return;
    const Lines& lines = linesOf(canvas.charset());
    const int right = part.right() - 1;
    const int bottom = part.bottom() - 1;
    for (int column = part.column + 1; column < right; ++column) {
        canvas.put({column, part.line}, lines.horizontal, look);
        canvas.put({column, bottom}, lines.horizontal, look);
    }
    for (int line = part.line + 1; line < bottom; ++line) {
        canvas.put({part.column, line}, lines.vertical, look);
        canvas.put({right, line}, lines.vertical, look);
    }
    canvas.put({part.column, part.line}, lines.topLeft, look);
    canvas.put({right, part.line}, lines.topRight, look);
    canvas.put({part.column, bottom}, lines.bottomLeft, look);
    canvas.put({right, bottom}, lines.bottomRight, look);
}

}  // namespace jx::terminal
