// Dialogs one above the other, and the bars.
#include "odbcadmin/terminal/desk_painter.h"

#include "odbcadmin/terminal/control_painter.h"

namespace jx::terminal {

namespace {

// The begin of an edit field, and of its label what fits beside that.
Rect fieldToShow(const JxwDialogInfo& dialog, const DialogPlace& place, const Rect& field) {
    constexpr int kLeastColumns = 12;
    JxwControlInfo label{};
    if (JXW_GetControlInfo(dialog.dialog, dialog.focus - 1, &label) == 0 || label.kind != JXW_LABEL)
        return field;
    const int end = field.column + std::min(kLeastColumns, field.columns);
    const int begin = std::max(std::min(place.of(label).column, field.column), end - place.inside.columns);
    return {begin, field.line, end - begin, field.lines};
}

// What stands beside and above a control is seen with it where there is room.
Rect withSurroundings(const Rect& part, const Rect& seen) {
    Rect wider = part;
    if (part.columns + 3 <= seen.columns) {
        wider.column = std::max(0, part.column - 2);
        wider.columns = part.columns + 3;
    }
    if (part.lines + 1 <= seen.lines) {
        wider.line = std::max(0, part.line - 1);
        wider.lines = part.lines + 1;
    }
    return wider;
}

// What of a control is to be seen when the user is there: all of it, or the chosen row of a list that is larger than
// the window.
Rect partToShow(const JxwDialogInfo& dialog, const JxwControlInfo& control, const DialogPlace& place, int firstRow) {
    const Rect& seen = place.inside;
    Rect part = place.of(control);
    if (control.kind == JXW_EDIT && place.columns > seen.columns)
        return withSurroundings(fieldToShow(dialog, place, part), seen);
    if (control.kind != JXW_LISTBOX || part.lines + 1 <= seen.lines)
        return withSurroundings(part, seen);
    constexpr int kRoomForLabel = 4;
    if (control.selection <= 0 && seen.lines >= kRoomForLabel)
        return {part.column, std::max(0, part.line - 1), part.columns, part.lines};
    const Rect rows = rowsOf(part);
    part.line = rows.line + std::clamp(control.selection - firstRow, 0, rows.lines - 1);
    part.lines = 1;
    return part;
}

// Scrolls a dialog to the control that has the focus when that is another than before.
void followFocus(const JxwDialogInfo& dialog, DialogPlace& place, const Rect& area, DialogView& view) {
    JxwControlInfo control{};
    const bool isThere = JXW_GetControlInfo(dialog.dialog, dialog.focus, &control) != 0;
    const int row = isThere && control.kind == JXW_LISTBOX ? control.selection : -1;
    const bool isOther = dialog.focus != view.shownFocus || area != view.shownArea;
    if (isThere && (isOther || row != view.shownRow)) {
        ListView& list = view.lists[dialog.focus];
        if (control.kind == JXW_LISTBOX)
            list.follow(control, rowsSeen(place.of(control)));
        Rect part = partToShow(dialog, control, place, list.firstRow);
        // Another row of a list that is wider than the window does not move it sideways.
        if (!isOther && part.columns > place.inside.columns)
            part = {place.scrolled.column, part.line, place.inside.columns, part.lines};
        view.scrolled = scrolledTo(place, part);
        place = placeDialog(dialog, area, view.scrolled);
    }
    view.shownArea = area;
    if (dialog.focus != view.shownFocus)
        view.freshField = isThere && control.kind == JXW_EDIT && *control.text != '\0' ? dialog.focus : -1;
    view.shownFocus = dialog.focus;
    view.shownRow = row;
    view.scrolled = place.scrolled;
}

void paintScrollMarks(Canvas& canvas, const DialogPlace& place) {
    const Lines& lines = linesOf(canvas.charset());
    const Rect& frame = place.frame;
    const int right = frame.right() - 1;
    const int bottom = frame.bottom() - 1;
    if (place.scrolled.line > 0)
        canvas.put({right, frame.line + 1}, lines.up, Look::title);
    if (place.scrolled.line + place.inside.lines < place.lines)
        canvas.put({right, bottom - 1}, lines.down, Look::title);
    if (place.scrolled.column > 0)
        canvas.put({frame.column + 1, bottom}, lines.left, Look::title);
    if (place.scrolled.column + place.inside.columns < place.columns)
        canvas.put({right - 1, bottom}, lines.right, Look::title);
}

void paintFrame(Canvas& canvas, const JxwDialogInfo& dialog, const DialogPlace& place, const Rect& area) {
    canvas.clip(area);
    canvas.fill(place.frame);
    drawFrame(canvas, place.frame, Look::plain);
    if (*dialog.title != '\0')
        canvas.put({place.frame.column + 2, place.frame.line},
                   " " + cutTo(dialog.title, place.frame.columns - 6, canvas.charset()) + " ", Look::title);
    paintScrollMarks(canvas, place);
}

std::optional<Point> paintDialog(Canvas& canvas, const Abilities& abilities, const Rect& area,
                                 const JxwDialogInfo& dialog, DialogView& view) {
    DialogPlace place = placeDialog(dialog, area, view.scrolled);
    followFocus(dialog, place, area, view);
    paintFrame(canvas, dialog, place, area);
    canvas.clip(common(place.inside, area));
    std::optional<Point> cursor;
    ControlPainter painter(canvas, abilities, dialog.dialog, view);
    for (int index = 0; index < dialog.controlCount; ++index) {
        JxwControlInfo control{};
        if (JXW_GetControlInfo(dialog.dialog, index, &control) == 0)
            continue;
        const bool hasFocus = index == dialog.focus && dialog.active != 0 && dialog.enabled != 0;
        const auto found = painter.paint(index, control, place.onScreen(place.of(control)), hasFocus);
        if (found && place.inside.contains(*found))
            cursor = found;
    }
    canvas.clip(canvas.whole());
    return cursor;
}

}  // namespace

std::optional<Point> paintDialogs(Canvas& canvas, const Abilities& abilities, const Rect& area, Views& views) {
    std::optional<Point> cursor;
    for (HWND dialog = JXW_NextDialog(0); dialog != 0; dialog = JXW_NextDialog(dialog)) {
        JxwDialogInfo info{};
        const auto view = views.find(dialog);
        if (view != views.end() && JXW_GetDialogInfo(dialog, &info) != 0)
            cursor = paintDialog(canvas, abilities, area, info, view->second);
    }
    return cursor;
}

void paintHeading(Canvas& canvas, const Rect& part, const std::string& text) {
    canvas.fill(part, Look::bar);
    if (part.lines > 0)
        canvas.put({part.column + 1, part.line}, cutTo(text, part.columns - 2, canvas.charset()), Look::bar);
}

void paintHelp(Canvas& canvas, const Rect& part, const std::string& told) {
    canvas.fill(part);
    const std::vector<std::string> lines = wrapped(told, part.columns - 2, canvas.charset());
    for (int line = 0; line < part.lines && line < static_cast<int>(lines.size()); ++line) {
        const bool isCut = line == part.lines - 1 && line + 1 < static_cast<int>(lines.size());
        const int end = canvas.put({part.column + 1, part.line + line}, lines[static_cast<std::size_t>(line)]);
        if (isCut)
            canvas.put({std::min(end, part.right() - 1), part.line + line}, linesOf(canvas.charset()).cut);
    }
}

}  // namespace jx::terminal
