// The user's editor.
#pragma once

#include <string>

#include "odbcadmin/model/reason.h"

namespace jx::cli {

// Runs what VISUAL, or else EDITOR, says, as a shell would, with the path behind it; without both the system's editor,
// which needs a terminal. Waits until it has ended. Call it while EndSignals lives: a signal that ends programs is
// passed on to the editor; those that a terminal sends to it as well are the editor's own business and forgotten. The
// reason says why it could not be run or how it failed; of kind none when it ended with success.
model::Reason runEditor(const std::string& path);

}  // namespace jx::cli
