// Painting everything that is open: dialogs, the heading, the help.
#pragma once

#include <jxscreen.h>

#include <optional>
#include <string>

#include "odbcadmin/terminal/layout.h"
#include "odbcadmin/terminal/terminal.h"
#include "odbcadmin/terminal/view.h"

namespace jx::terminal {

// Paints the thread's dialogs in the order in which they were opened, scrolled so that a focus that moved is seen.
// Gives the text cursor's place.
std::optional<Point> paintDialogs(Canvas& canvas, const Abilities& abilities, const Rect& area, Views& views);

// Paints the line at the top.
void paintHeading(Canvas& canvas, const Rect& part, const std::string& text);

// Paints what is told, as much as part holds.
void paintHelp(Canvas& canvas, const Rect& part, const std::string& told);

}  // namespace jx::terminal
