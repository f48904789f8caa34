// The cursor the user sees while an installation works.
#pragma once

namespace jx::install {

// Shows that the program is busy, and that it is not any more.
void setWaitCursor();
void setArrowCursor();

}  // namespace jx::install
