// A picture of a screen in memory: what is painted ends here, and tests read it back.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "odbcadmin/terminal/geometry.h"
#include "odbcadmin/terminal/glyphs.h"

namespace jx::terminal {

// What a cell is, not how it looks: the terminal chooses colours or attributes for each.
enum class Look : unsigned char {
    plain,
    bar,       // the lines at the top and bottom of the screen
    barKey,    // a key's name in the one at the bottom
    title,     // a dialog's title
    key,       // the letter of an access key
    field,     // an edit field
    selected,  // the selected row of a list that has no focus
    focus,     // where the user is
    grey,      // what cannot be used now
    alarm,     // the sign of a message about trouble
};

struct Cell {
    std::string text = " ";  // one glyph in UTF-8; empty behind a glyph of two columns
    Look look = Look::plain;

    bool operator==(const Cell&) const = default;
};

// Canvas: columns x lines cells. What lies outside, or outside the clip, is not painted; any coordinate is allowed.
class Canvas {
public:
    Canvas(int columns, int lines, Charset charset = Charset::utf8);

    int columns() const { return columns_; }
    int lines() const { return lines_; }
    Charset charset() const { return charset_; }
    Rect whole() const { return {0, 0, columns_, lines_}; }

    // Painting goes on inside this part only, until the next clip.
    void clip(const Rect& part) { clip_ = common(part, whole()); }
    const Rect& clipped() const { return clip_; }

    // Paints text from a place on; returns the column behind it.
    int put(Point place, std::string_view text, Look look = Look::plain);

    // Fills a part with blanks.
    void fill(const Rect& part, Look look = Look::plain);

    // Changes the look of cells that are painted already.
    void dress(const Rect& part, Look look);

    const Cell& at(Point place) const;

    // A line as text, without the blanks at its end.
    std::string line(int line) const;

    // Every line, each ended with a line break.
    std::string text() const;

private:
    Cell* cell(Point place);
    void putGlyph(Point place, const Glyph& glyph, Look look);

    int columns_;
    int lines_;
    Charset charset_;
    Rect clip_;
    std::vector<Cell> cells_;
};

// The characters of lines and marks in a charset.
struct Lines {
    const char *horizontal, *vertical, *topLeft, *topRight, *bottomLeft, *bottomRight;
    const char *up, *down, *left, *right, *cut, *thumb;
};
const Lines& linesOf(Charset charset);

// A frame along the inner edge of part; nothing when it is too small for one.
void drawFrame(Canvas& canvas, const Rect& part, Look look);

}  // namespace jx::terminal
