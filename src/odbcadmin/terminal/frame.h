// Drawing what is not text: frames and the marks of lists.
#pragma once

#include "odbcadmin/terminal/canvas.h"

namespace jx::terminal {

// The characters of lines and marks in a charset.
struct Lines {
    const char *horizontal, *vertical, *topLeft, *topRight, *bottomLeft, *bottomRight;
    const char *up, *down, *left, *right, *cut;
};
const Lines& linesOf(Charset charset);

// A frame along the inner edge of part; nothing when it is too small for one.
void drawFrame(Canvas& canvas, const Rect& part, Look look);

}  // namespace jx::terminal
