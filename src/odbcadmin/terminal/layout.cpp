// Dialog units to cells.
#include "odbcadmin/terminal/layout.h"

#include <string_view>
#include <vector>

namespace jx::terminal {

namespace {

constexpr int kUnitsPerColumn = 4, kUnitsPerLine = 8;

// What a dialog that grows leaves free around its frame, and the columns of the widest one with that.
constexpr int kBesideFrame = 4, kAboveFrame = 1, kWidestDialog = 140;

// A list across the dialog has at most this beside it.
constexpr int kMostBeside = 4;

// What a list or a field that shrinks keeps.
constexpr int kLeastListColumns = 20, kLeastListLines = 4, kLeastFieldColumns = 12;

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

// The controls of a dialog with their places in its template.
struct Placed {
    JxwControlInfo control;
    Rect place;
};

std::vector<Placed> placedControls(HWND dialog) {
    std::vector<Placed> all;
    JxwControlInfo control{};
    for (int index = 0; JXW_GetControlInfo(dialog, index, &control) != 0; ++index)
        all.push_back({control, templatePlaceOf(control)});
    return all;
}

// The list with the most cells; an empty place when there is none.
Rect largestList(const std::vector<Placed>& controls) {
    Rect largest;
    for (const auto& [control, place] : controls)
        if (control.kind == JXW_LISTBOX && place.columns * place.lines > largest.columns * largest.lines)
            largest = place;
    return largest;
}

bool canShrink(const JxwControlInfo& control) {
    return control.kind == JXW_LISTBOX || control.kind == JXW_GROUPBOX;
}

// The columns that a control cannot do without.
int leastColumns(const JxwControlInfo& control, const Rect& place) {
    switch (control.kind) {
        case JXW_LISTBOX:
        case JXW_GROUPBOX:
            return std::min(place.columns, kLeastListColumns);
        case JXW_EDIT:
            return std::min(place.columns, kLeastFieldColumns);
        case JXW_LABEL:
            return std::min(place.columns, static_cast<int>(std::string_view(control.text).size()));
        default:
            return place.columns;
    }
}

bool isButtonOfRightHalf(const JxwControlInfo& control, const Rect& place, int columns) {
    return control.kind == JXW_BUTTON && 2 * place.column + place.columns >= columns;
}

// The columns between a button of the right half and what stands before it in its line.
int freeBefore(const std::vector<Placed>& controls, const Rect& button, int columns) {
    int end = 1;
    for (const auto& [control, place] : controls) {
        if (place.line == button.line && place.column < button.column && !isButtonOfRightHalf(control, place, columns))
            end = std::max(end, place.right() + 1);
    }
    return button.column - end;
}

// The smallest edge that leaves every control before it what it needs. columns: of a dialog that a list goes across; 0
// of every other one.
Point leastEdge(const std::vector<Placed>& controls, Point edge, int columns) {
    Point least;
    for (const auto& [control, place] : controls) {
        if (columns > 0 && isButtonOfRightHalf(control, place, columns))
            least.column = std::max(least.column, edge.column - freeBefore(controls, place, columns));
        else if (place.column < edge.column)
            least.column = std::max(least.column, place.column + leastColumns(control, place));
        if (place.line < edge.line)
            least.line = std::max(
                least.line, place.line + std::min(place.lines, canShrink(control) ? kLeastListLines : place.lines));
    }
    return least;
}

// How much a dialog of a size becomes larger when it leaves free cells on both sides, or smaller by at most least.
int changeOf(int size, int room, int free, int least) {
    if (size + 2 * free <= room)
        return room - 2 * free - size;
    return size > room && size - room <= least ? room - size : 0;
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
    constexpr int kFewAreaLines = 8;
    Rect area = parts.area;
    if (area.lines < kFewAreaLines)
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
    else if (isListAcross && isButtonOfRightHalf(control, place, columns - right.by))
        grown.column = place.column + right.by;
    if (hasSeveralLines(control))
        grown.lines = down.moved(place.bottom()) - grown.line;
    return grown;
}

DialogPlace placeDialog(const JxwDialogInfo& dialog, const Rect& area, Point scrolled) {
    DialogPlace place{};
    place.columns = std::max(1, roundedUp(dialog.width, kUnitsPerColumn));
    place.lines = std::max(1, roundedUp(dialog.height, kUnitsPerLine));
    const std::vector<Placed> controls = placedControls(dialog.dialog);
    const Rect list = largestList(controls);
    if (list.lines > 0) {
        const Point edge{list.right(), list.bottom()};
        place.isListAcross = list.right() + kMostBeside >= place.columns;
        const Point least = leastEdge(controls, edge, place.isListAcross ? place.columns : 0);
        const int room = std::min(area.columns, std::max(kWidestDialog, place.columns + 2));
        place.right = {edge.column, changeOf(place.columns + 2, room, kBesideFrame, edge.column - least.column)};
        place.down = {edge.line, changeOf(place.lines + 2, area.lines, kAboveFrame, edge.line - least.line)};
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
