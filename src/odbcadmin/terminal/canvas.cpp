// Painting into cells.
#include "odbcadmin/terminal/canvas.h"

namespace jx::terminal {

Canvas::Canvas(int columns, int lines, Charset charset)
    : columns_(std::max(columns, 0)),
      lines_(std::max(lines, 0)),
      charset_(charset),
      clip_(whole()),
      cells_(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(lines_)) {}

Cell* Canvas::cell(Point place) {
    if (!clip_.contains(place))
        return nullptr;
    const auto index = static_cast<std::size_t>(place.line) * static_cast<std::size_t>(columns_) +
                       static_cast<std::size_t>(place.column);
    return &cells_[index];
}

const Cell& Canvas::at(Point place) const {
    static const Cell kOutside;
    if (!whole().contains(place))
        return kOutside;
    return cells_[static_cast<std::size_t>(place.line) * static_cast<std::size_t>(columns_) +
                  static_cast<std::size_t>(place.column)];
}

// Half of a wide glyph cannot be shown: where one is cut, a blank stands.
void Canvas::putGlyph(Point place, const Glyph& glyph, Look look) {
    const Point second{place.column + 1, place.line};
    Cell* first = cell(place);
    Cell* other = glyph.columns == 2 ? cell(second) : nullptr;
    const bool isWhole = glyph.columns == 1 || (first != nullptr && other != nullptr);
    if (first != nullptr) {
        // The second half of what stood here before goes with its first half.
        Cell* before = first->text.empty() ? cell({place.column - 1, place.line}) : nullptr;
        if (before != nullptr)
            before->text = " ";
        *first = {isWhole ? glyph.shown : " ", look};
    }
    if (other != nullptr)
        *other = {isWhole ? "" : " ", look};
    // A first half that loses its second one becomes a blank as well: the cell behind must not be an empty one.
    Cell* behind = cell({place.column + glyph.columns, place.line});
    if (behind != nullptr && behind->text.empty())
        behind->text = " ";
}

int Canvas::put(Point place, std::string_view text, Look look) {
    for (const Glyph& glyph : glyphsOf(text, charset_)) {
        putGlyph(place, glyph, look);
        place.column += glyph.columns;
    }
    return place.column;
}

void Canvas::fill(const Rect& part, Look look) {
    const Rect painted = common(part, clip_);
    if (painted.columns == 0)
        return;
    for (int line = painted.line; line < painted.bottom(); ++line) {
        // The edges may cut glyphs of two columns; what lies between goes as it is.
        putGlyph({painted.column, line}, {0, 1, " ", 1}, look);
        putGlyph({painted.right() - 1, line}, {0, 1, " ", 1}, look);
        const Cell blank{" ", look};
        Cell* first = cell({painted.column, line});
        std::fill(first, first + painted.columns, blank);
    }
}

void Canvas::dress(const Rect& part, Look look) {
    const Rect painted = common(part, clip_);
    for (int line = painted.line; line < painted.bottom(); ++line) {
        for (int column = painted.column; column < painted.right(); ++column)
            cell({column, line})->look = look;
    }
}

std::string Canvas::line(int line) const {
    std::string text;
    for (int column = 0; column < columns_; ++column)
        text += at({column, line}).text;
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

std::string Canvas::text() const {
    std::string whole;
    for (int line = 0; line < lines_; ++line)
        whole += this->line(line) + "\n";
    return whole;
}

const Lines& linesOf(Charset charset) {
    static constexpr Lines kUtf8{"─", "│", "┌", "┐", "└", "┘", "▲", "▼", "◀", "▶", "…", "█"};
    static constexpr Lines kAscii{"-", "|", "+", "+", "+", "+", "^", "v", "<", ">", ">", "#"};
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
