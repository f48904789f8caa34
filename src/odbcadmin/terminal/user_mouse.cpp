// The mouse: what is under it, and what a press there does.
#include <cstring>

#include "odbcadmin/assist/help.h"
#include "odbcadmin/terminal/edit_text.h"
#include "odbcadmin/terminal/user.h"

namespace jx::terminal {

namespace {

constexpr int kWheelRows = 3;
constexpr int kSideways = 8;

// The control at a place in the dialog; -1 when there is none. What a frame surrounds lies above it.
int controlAt(HWND dialog, Point inside) {
    int found = -1;
    JxwControlInfo control{};
    for (int index = 0; JXW_GetControlInfo(dialog, index, &control) != 0; ++index) {
        if (placeOf(control).contains(inside) && (control.kind != JXW_GROUPBOX || found < 0))
            found = index;
    }
    return found;
}

// A press on the frame moves what is seen of a dialog that is larger than the screen.
void pressFrame(const DialogPlace& place, Point point, DialogView& view) {
    const Rect& frame = place.frame;
    if (!frame.contains(point))
        return;
    if (point.column == frame.right() - 1)
        view.scrolled.line += point.line < frame.line + frame.lines / 2 ? -kWheelRows : kWheelRows;
    else if (point.line == frame.bottom() - 1)
        view.scrolled.column += point.column < frame.column + frame.columns / 2 ? -kSideways : kSideways;
}

}  // namespace

void User::pressInList(HWND dialog, int index, Point inside, bool isDouble, DialogView& view) {
    JxwControlInfo list{};
    JXW_GetControlInfo(dialog, index, &list);
    const Rect place = placeOf(list);
    const Rect rows = rowsOf(place);
    ListView& seen = view.lists[index];
    if (place.lines >= 3 && inside.column == place.right() - 1) {
        seen.scroll(list, rows.lines, inside.line < place.line + place.lines / 2 ? 1 - rows.lines : rows.lines - 1);
        return;
    }
    const int row = rows.contains(inside) ? seen.firstRow + inside.line - rows.line : list.rowCount;
    if (row >= list.rowCount) {
        JXW_UserFocus(dialog, list.id);
        return;
    }
    seen.shownSelection = row;  // it stays where it was pressed
    if (isDouble)
        working_(JXW_GetRow(dialog, index, row));
    if (isDouble)
        JXW_UserDoubleClick(dialog, list.id, row);
    else
        JXW_UserSelect(dialog, list.id, row);
}

void User::pressInField(HWND dialog, int index, Point inside, DialogView& view) {
    JxwControlInfo field{};
    JXW_GetControlInfo(dialog, index, &field);
    EditView& edit = view.edits[index];
    edit.follow(field.text, placeOf(field).columns, abilities_.charset);
    edit.caret = edit.firstByte + caretAt(std::string(field.text).substr(edit.firstByte),
                                          inside.column - placeOf(field).column, abilities_.charset);
    JXW_UserFocus(dialog, field.id);
    view.shownFocus = index;
    view.freshField = -1;
}

std::string User::pressAt(HWND dialog, int index, Point inside, const Input& input, DialogView& view) {
    JxwControlInfo control{};
    JXW_GetControlInfo(dialog, index, &control);
    if (control.enabled == 0)
        return assist::helpOn(dialog, index);
    switch (control.kind) {
        case JXW_BUTTON:
            command(dialog, control);
            break;
        case JXW_CHECKBOX:
        case JXW_RADIO:
            JXW_UserCheck(dialog, control.id);
            break;
        case JXW_LISTBOX:
            pressInList(dialog, index, inside, input.key == Key::doublePress, view);
            break;
        case JXW_EDIT:
            pressInField(dialog, index, inside, view);
            break;
        default:
            if (control.accessKey != 0)
                JXW_UserAccessKey(dialog, control.accessKey);
            break;
    }
    return {};
}

void User::wheel(HWND dialog, int index, int rows, DialogView& view) {
    JxwControlInfo control{};
    if (JXW_GetControlInfo(dialog, index, &control) != 0 && control.kind == JXW_LISTBOX)
        view.lists[index].scroll(control, rowsSeen(placeOf(control)), rows);
    else
        view.scrolled.line += rows;
}

std::string User::mouse(HWND dialog, const Input& input, const Rect& area, DialogView& view) {
    JxwDialogInfo info{};
    JXW_GetDialogInfo(dialog, &info);
    const DialogPlace place = placeDialog(info, area, view.scrolled);
    const bool isInside = place.inside.contains(input.place);
    const Point inside = place.inDialog(input.place);
    const int index = isInside ? controlAt(dialog, inside) : -1;
    if (input.key == Key::wheelUp || input.key == Key::wheelDown)
        wheel(dialog, index, input.key == Key::wheelUp ? -kWheelRows : kWheelRows, view);
    else if (index >= 0)
        return pressAt(dialog, index, inside, input, view);
    else if (!isInside)
        pressFrame(place, input.place, view);
    return {};
}

}  // namespace jx::terminal
