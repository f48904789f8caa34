// Dialog units to cells.
#include "odbcadmin/terminal/layout.h"

namespace jx::terminal {

namespace {

constexpr int kUnitsPerColumn = 4;
constexpr int kUnitsPerLine = 8;

int nearest(int units, int perCell) {
    return units >= 0 ? (units + perCell / 2) / perCell : -((-units + perCell / 2) / perCell);
}

int roundedUp(int units, int perCell) {
    return (std::max(units, 0) + perCell - 1) / perCell;
}

bool hasSeveralLines(const JxwControlInfo& control) {
    return control.kind == JXW_LISTBOX || control.kind == JXW_GROUPBOX ||
           (control.kind == JXW_LABEL && control.height >= 2 * kUnitsPerLine);
}

// How far an inside of size cells may be scrolled when seen of them are seen.
int bounded(int scrolled, int size, int seen) {
    return std::clamp(scrolled, 0, std::max(0, size - seen));
}

int scrolledTo(int scrolled, int seen, int begin, int size) {
    return std::max(0, std::min(begin, std::max(scrolled, begin + size - seen)));
}

}  // namespace

ScreenParts partsOf(int columns, int lines, int wanted) {
    const int heading = lines >= 10 ? 1 : 0;
    const int most = lines >= 16 ? 3 : lines >= 8 ? 2 : lines >= 5 ? 1 : 0;
    // On the usual 24 lines every dialog is whole: a high one leaves less room for help.
    const int left = lines - heading - wanted;
    const int help = lines >= 24 && left >= 1 ? std::min(most, left) : most;
    return {{0, 0, columns, heading}, {0, heading, columns, lines - heading - help}, {0, lines - help, columns, help}};
}

int wantedLines(const JxwDialogInfo& dialog) {
    return roundedUp(dialog.height, kUnitsPerLine) + 2;
}

Rect placeOf(const JxwControlInfo& control) {
    const int left = nearest(control.x, kUnitsPerColumn);
    const int right = nearest(control.x + control.width, kUnitsPerColumn);
    Rect place{left, 0, std::max(1, right - left), 1};
    if (hasSeveralLines(control)) {
        place.line = nearest(control.y, kUnitsPerLine);
        place.lines = std::max(1, nearest(control.y + control.height, kUnitsPerLine) - place.line);
    } else {
        place.line = std::max(0, control.y + std::max<int>(control.height, 1) / 2) / kUnitsPerLine;
    }
    return place;
}

DialogPlace placeDialog(const JxwDialogInfo& dialog, const Rect& area, Point scrolled) {
    DialogPlace place{};
    place.columns = std::max(1, roundedUp(dialog.width, kUnitsPerColumn));
    place.lines = std::max(1, roundedUp(dialog.height, kUnitsPerLine));
    place.frame.columns = std::min(place.columns + 2, area.columns);
    place.frame.lines = std::min(place.lines + 2, area.lines);
    place.frame.column = area.column + (area.columns - place.frame.columns) / 2;
    place.frame.line = area.line + (area.lines - place.frame.lines) / 2;
    place.inside = {place.frame.column + 1, place.frame.line + 1, std::max(0, place.frame.columns - 2),
                    std::max(0, place.frame.lines - 2)};
    place.scrolled = {bounded(scrolled.column, place.columns, place.inside.columns),
                      bounded(scrolled.line, place.lines, place.inside.lines)};
    return place;
}

Point scrolledTo(const DialogPlace& place, const Rect& part) {
    return {scrolledTo(place.scrolled.column, place.inside.columns, part.column, part.columns),
            scrolledTo(place.scrolled.line, place.inside.lines, part.line, part.lines)};
}

}  // namespace jx::terminal
