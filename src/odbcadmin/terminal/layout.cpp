// Dialog units to cells.
#include "odbcadmin/terminal/layout.h"

namespace jx::terminal {

namespace {

constexpr int kUnitsPerColumn = 4;
constexpr int kUnitsPerLine = 8;

// What a dialog that grows leaves free around its frame, and the columns of the widest one with that.
constexpr int kBesideFrame = 4;
constexpr int kAboveFrame = 1;
constexpr int kWidest = 140;

int spare(int room, int taken) {
    return std::max(0, room - taken);
}

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

// The cells of a control as the template has them.
Rect templatePlaceOf(const JxwControlInfo& control) {
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

// The list with the most cells; an empty place when the dialog has none.
Rect largestList(const JxwDialogInfo& dialog) {
    Rect largest;
    JxwControlInfo control{};
    for (int index = 0; JXW_GetControlInfo(dialog.dialog, index, &control) != 0; ++index) {
        const Rect place = templatePlaceOf(control);
        if (control.kind == JXW_LISTBOX && place.columns * place.lines > largest.columns * largest.lines)
            largest = place;
    }
    return largest;
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
    int heading = lines >= 10 ? 1 : 0;
    int help = lines >= 16 ? 2 : lines >= 5 ? 1 : 0;
    const int keys = lines >= 8 ? 1 : 0;
    const int missing = wanted + heading + help + keys - lines;
    if (missing > 0 && help == 2 && missing <= 1 + heading) {
        help = 1;
        heading = missing > 1 ? 0 : heading;
    }
    const int below = lines - help - keys;
    return {{0, 0, columns, heading},
            {0, heading, columns, below - heading},
            {0, below, columns, help},
            {0, below + help, columns, keys}};
}

Rect boxAreaOf(const ScreenParts& parts) {
    constexpr int kFewLines = 8;
    Rect area = parts.area;
    if (area.lines < kFewLines)
        area.lines += parts.help.lines;
    return area;
}

int wantedLines(const JxwDialogInfo& dialog) {
    return roundedUp(dialog.height, kUnitsPerLine) + 2;
}

Rect DialogPlace::of(const JxwControlInfo& control) const {
    const Rect place = templatePlaceOf(control);
    Rect grown{right.moved(place.column), down.moved(place.line), place.columns, place.lines};
    if (control.kind != JXW_BUTTON)
        grown.columns = right.moved(place.right()) - grown.column;
    if (hasSeveralLines(control))
        grown.lines = down.moved(place.bottom()) - grown.line;
    return grown;
}

DialogPlace placeDialog(const JxwDialogInfo& dialog, const Rect& area, Point scrolled) {
    DialogPlace place{};
    place.columns = std::max(1, roundedUp(dialog.width, kUnitsPerColumn));
    place.lines = std::max(1, roundedUp(dialog.height, kUnitsPerLine));
    const Rect list = largestList(dialog);
    if (list.lines > 0) {
        place.right = {list.right(), spare(std::min(area.columns, kWidest) - 2 * kBesideFrame, place.columns + 2)};
        place.down = {list.bottom(), spare(area.lines - 2 * kAboveFrame, place.lines + 2)};
        place.columns += place.right.by;
        place.lines += place.down.by;
    }
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
