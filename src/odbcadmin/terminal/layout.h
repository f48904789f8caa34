// Where dialogs and their controls stand on a screen of cells.
#pragma once

#include <jxscreen.h>

#include "odbcadmin/terminal/geometry.h"

namespace jx::terminal {

// The parts of the screen. A screen too small for everything goes without the heading first, then without the keys,
// then without the help.
struct ScreenParts {
    Rect heading;  // one line, or none
    Rect area;     // the dialogs
    Rect help;     // two lines, one, or none
    Rect keys;     // one line, or none
};
// wanted: the lines of the dialog in front, with its frame. If that makes it whole, the help's second line and then the
// heading give way.
ScreenParts partsOf(int columns, int lines, int wanted);

// The part for message boxes: that of the dialogs, and the help where lines are few. There is none beside a box.
Rect boxAreaOf(const ScreenParts& parts);

// The lines of a dialog with its frame.
int wantedLines(const JxwDialogInfo& dialog);

// How a dialog becomes larger in one direction than its template, or smaller: what lies behind the edge moves, what
// reaches up to it or over it grows or shrinks.
struct Stretch {
    int edge = 0;
    int by = 0;

    int moved(int cell) const { return cell >= edge ? cell + by : std::min(cell, edge + by); }
};

// A dialog's inside and what of it can be seen. A dialog with a list is as large as the area allows, up to a width that
// can still be read across; its largest list grows with it. Where the dialog is whole if that list shrinks, it does.
struct DialogPlace {
    Rect frame;      // on the screen, with the border
    Rect inside;     // on the screen, without it: what is seen
    int columns;     // the whole inside
    int lines;       // likewise
    Point scrolled;  // the inside's first visible cell
    Stretch right;
    bool isListAcross;  // buttons of the right half keep to the right edge
    Stretch down;

    // The cells of a control from the inside's upper left corner: 4 dialog units to a column, 8 to a line. All but
    // lists, group boxes and labels of several lines take one line, the one their middle lies in. Buttons keep their
    // width.
    Rect of(const JxwControlInfo& control) const;

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
