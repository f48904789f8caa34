// Taking texts apart into what a terminal shows in its cells.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace jx::terminal {

// One character with the marks that are combined with it, as bytes of the text it was taken from.
struct Glyph {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::string shown;  // what is sent to the terminal: the bytes, or "?" for what it must not get
    int columns = 0;    // 1 or 2
};

// Which characters the terminal can show.
enum class Charset { ascii, utf8 };

// The glyphs of a text in order. Control characters, marks that turn the direction of writing, bytes that are not UTF-8
// and, with Charset::ascii, everything beyond ASCII are shown as "?", so that no text steers the terminal. What only
// changes its neighbours (joiners, variation selectors) belongs to the glyph before it and is not shown. Widths come
// from the C library, for the locale of the process.
std::vector<Glyph> glyphsOf(std::string_view text, Charset charset);

// How many columns a text takes.
int columnsOf(std::string_view text, Charset charset);

// Whether a text has room there, but for blanks at its end.
bool fits(std::string_view text, int columns, Charset charset);

// The words of a text in lines of at most columns; line breaks of the text are kept, longer words are cut.
std::vector<std::string> wrapped(std::string_view text, int columns, Charset charset);

// The begin of a text that fits in columns.
std::string cutTo(std::string_view text, int columns, Charset charset);

}  // namespace jx::terminal
