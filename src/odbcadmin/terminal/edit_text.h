// Editing one line of UTF-8 text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "odbcadmin/terminal/glyphs.h"
#include "odbcadmin/terminal/input.h"

namespace jx::terminal {

// Does with text what a key means in an edit field; caret is in bytes and stands between glyphs. False when the key
// means nothing there.
bool editText(std::string& text, std::size_t& caret, const Input& input, Charset charset);

// The caret one glyph before and one behind; at the ends of the text it stays.
std::size_t caretBefore(std::string_view text, std::size_t caret, Charset charset);
std::size_t caretBehind(std::string_view text, std::size_t caret, Charset charset);

// The caret for a column of a text that is shown from its begin.
std::size_t caretAt(std::string_view text, int column, Charset charset);

// The same for a text of which every glyph is shown as a star.
std::size_t caretBehindGlyphs(std::string_view text, int count, Charset charset);

}  // namespace jx::terminal
