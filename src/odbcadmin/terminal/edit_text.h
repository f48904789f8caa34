// Editing one line of UTF-8 text.
#pragma once

#include <cstddef>
#include <string>

#include "odbcadmin/terminal/glyphs.h"
#include "odbcadmin/terminal/input.h"

namespace jx::terminal {

// Does with text what a key means in an edit field; caret is in bytes and stands between glyphs. False when the key
// means nothing there.
bool editText(std::string& text, std::size_t& caret, const Input& input, Charset charset);

// The caret for a column of a text that is shown from its begin.
std::size_t caretAt(const std::string& text, int column, Charset charset);

}  // namespace jx::terminal
