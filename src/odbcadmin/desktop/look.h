// Colours and edges.
#pragma once

namespace jx::desktop {

// Takes over the colours that the desktop sets as X resources (background, foreground, Text.background), light grey
// where it sets none, and the look of the edges that goes with them. The display is open, and no window is there yet.
void takeLook();

}  // namespace jx::desktop
