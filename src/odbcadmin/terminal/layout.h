// Where dialogs and their controls stand on a screen of cells.
#pragma once

#include <jxscreen.h>

#include "odbcadmin/terminal/geometry.h"

namespace jx::terminal {

// The parts of the screen. A screen too small for everything goes without the heading first, then without the help.
struct ScreenParts {
    Rect heading;  // one line, or none
    Rect area;     // the dialogs
    Rect help;     // three lines, two, one, or none
};
// wanted: the lines of the dialog in front, with its frame; for a high one the help has fewer lines.
ScreenParts partsOf(int columns, int lines, int wanted);

// The lines of a dialog with its frame.
int wantedLines(const JxwDialogInfo& dialog);

// The cells of a control from its dialog's upper left inside corner: 4 dialog units to a column, 8 to a line. All but
// lists, group boxes and labels of several lines take one line, the one their middle lies in.
Rect placeOf(const JxwControlInfo& control);

// A dialog's inside and what of it can be seen.
struct DialogPlace {
    Rect frame;      // on the screen, with the border
    Rect inside;     // on the screen, without it: what is seen
    int columns;     // the whole inside
    int lines;       // likewise
    Point scrolled;  // the inside's first visible cell

    // From a place in the dialog to the screen and back.
    Point onScreen(Point point) const {
        return {point.column - scrolled.column + inside.column, point.line - scrolled.line + inside.line};
    }
    Rect onScreen(const Rect& rect) const {
        const Point corner = onScreen(Point{rect.column, rect.line});
        return {corner.column, corner.line, rect.columns, rect.lines};
    }
    Point inDialog(Point point) const {
        return {point.column - inside.column + scrolled.column, point.line - inside.line + scrolled.line};
    }
};

// A dialog in the middle of area, as large as fits, scrolled as far as asked where that is possible.
DialogPlace placeDialog(const JxwDialogInfo& dialog, const Rect& area, Point scrolled);

// How far to scroll so that part of the dialog is seen, starting from place.scrolled: its end first, then its begin.
Point scrolledTo(const DialogPlace& place, const Rect& part);

}  // namespace jx::terminal
