// Keys and the mouse: what each does to the control that has the focus, or that lies under it.
#include "odbcadmin/terminal/dialog_input.h"

#include <cstring>

#include "odbcadmin/assist/help.h"
#include "odbcadmin/assist/path_completion.h"
#include "odbcadmin/terminal/edit_text.h"

namespace jx::terminal {

namespace {

constexpr int kWheelRows = 3;
constexpr int kSideways = 8;

// The row that a key leads to; -1 for a key that leads to none.
int rowFor(Key key, const JxwControlInfo& list, int page) {
    const int last = list.rowCount - 1;
    switch (key) {
        case Key::up:
            return std::max(list.selection - 1, 0);
        case Key::down:
            return std::min(list.selection + 1, last);
        case Key::pageUp:
            return std::max(list.selection - page, 0);
        case Key::pageDown:
            return std::min(std::max(list.selection, 0) + page, last);
        case Key::home:
            return 0;
        case Key::end:
            return last;
        default:
            return -1;
    }
}

bool startsRadioGroup(const JxwControlInfo& control, int index, HWND dialog) {
    JxwControlInfo before{};
    return (control.flags & JXW_GROUP) != 0 || JXW_GetControlInfo(dialog, index - 1, &before) == 0 ||
           before.kind != JXW_RADIO;
}

// The next enabled radio button of the group at index in a direction; 0 when there is none.
unsigned short neighbour(HWND dialog, int index, int step) {
    JxwControlInfo control{};
    while (JXW_GetControlInfo(dialog, index, &control) != 0) {
        if (step < 0 && startsRadioGroup(control, index, dialog))
            return 0;
        index += step;
        if (JXW_GetControlInfo(dialog, index, &control) == 0 || control.kind != JXW_RADIO ||
            (step > 0 && (control.flags & JXW_GROUP) != 0))
            return 0;
        if (control.enabled != 0)
            return control.id;
    }
    return 0;
}

// The control at a place in the dialog; -1 when there is none. What a frame surrounds lies above it.
int controlAt(HWND dialog, const DialogPlace& place, Point inside) {
    int found = -1;
    JxwControlInfo control{};
    for (int index = 0; JXW_GetControlInfo(dialog, index, &control) != 0; ++index) {
        if (place.of(control).contains(inside) && (control.kind != JXW_GROUPBOX || found < 0))
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

// Presses on the bar at a list's right edge; false where that is not.
bool pressScrollBar(const JxwControlInfo& list, const Rect& part, Point inside, ListView& seen) {
    const Rect rows = rowsOf(part);
    const int line = inside.line - rows.line;
    if (part.lines < 3 || inside.column != part.right() - 1 || line < 0 || line >= rows.lines)
        return false;
    const ListThumb thumb = thumbOf(list, rows.lines, seen.firstRow);
    const int page = std::max(1, rows.lines - 1);
    if (line == 0 || line == rows.lines - 1)
        seen.scroll(list, rows.lines, line == 0 ? -1 : 1);
    else if (line < thumb.line)
        seen.scroll(list, rows.lines, -page);
    else if (line >= thumb.line + thumb.lines)
        seen.scroll(list, rows.lines, page);
    return true;
}

}  // namespace

bool DialogInput::listKey(const Focus& focus, Key key) {
    if (focus.control.kind != JXW_LISTBOX || focus.control.rowCount == 0)
        return false;
    const int page = std::max(1, rowsSeen(focus.place.of(focus.control)) - 1);
    const int row = rowFor(key, focus.control, page);
    if (row < 0)
        return false;
    search_.close();
    JXW_UserSelect(focus.dialog, focus.control.id, row);
    return true;
}

bool DialogInput::groupKey(const Focus& focus, Key key) {
    const bool isBack = key == Key::up || key == Key::left;
    if (focus.control.kind != JXW_RADIO || !(isBack || key == Key::down || key == Key::right))
        return false;
    const unsigned short id = neighbour(focus.dialog, focus.index, isBack ? -1 : 1);
    return id == 0 || JXW_UserCheck(focus.dialog, id) != 0;
}

bool DialogInput::fieldKey(const Focus& focus, const Input& input) {
    if (focus.control.kind != JXW_EDIT || focus.control.enabled == 0)
        return false;
    EditView& edit = focus.view.edits[focus.index];
    edit.follow(focus.control.text, focus.place.of(focus.control).columns, abilities_.charset);
    if (input.key == Key::undo) {
        undo(focus, edit);
        return true;
    }
    std::string text = focus.control.text;
    const EditState before{text, edit.caret};
    const bool isFresh = focus.view.freshField == focus.index && !input.alt;
    if (isFresh && (input.key == Key::character || input.key == Key::paste || input.key == Key::backspace ||
                    input.key == Key::erase))
        text.clear();
    if (!editText(text, edit.caret, input, abilities_.charset))
        return false;
    focus.view.freshField = -1;
    if (text == edit.shownText) {
        edit.history.endRun();
        return true;
    }
    edit.history.keep(before, input.key);
    edit.shownText = text;
    JXW_UserEdit(focus.dialog, focus.control.id, text.c_str());
    return true;
}

void DialogInput::undo(const Focus& focus, EditView& edit) {
    focus.view.freshField = -1;
    std::optional<EditState> before = edit.history.takeBack();
    if (!before)
        return;
    edit.caret = before->caret;
    edit.shownText = before->text;
    JXW_UserEdit(focus.dialog, focus.control.id, before->text.c_str());
}

// Pasted text goes into fields; anywhere else it would be taken for commands.
std::string DialogInput::paste(const Focus& focus, const Input& input) {
    if (fieldKey(focus, input))
        return {};
    return "Pasted text goes into fields only.";
}

// A grey control is not pressed; the user is told why.
std::string DialogInput::accessKey(HWND dialog, int letter) {
    const int index = assist::controlOfAccessKey(dialog, letter);
    JxwControlInfo control{};
    if (JXW_GetControlInfo(dialog, index, &control) == 0)
        return {};
    if (control.enabled == 0)
        return assist::helpOn(dialog, index);
    if (control.kind == JXW_BUTTON)
        command(dialog, control);
    else
        JXW_UserAccessKey(dialog, letter);
    return {};
}

std::string DialogInput::space(const Focus& focus) {
    if (focus.control.kind == JXW_BUTTON)
        command(focus.dialog, focus.control);
    else if (focus.control.kind == JXW_CHECKBOX || focus.control.kind == JXW_RADIO)
        JXW_UserCheck(focus.dialog, focus.control.id);
    else if (focus.control.kind == JXW_LISTBOX && focus.control.selection < 0)
        JXW_UserSelect(focus.dialog, focus.control.id, 0);
    return {};
}

// On a list with rows letters search and do nothing else.
std::string DialogInput::character(const Focus& focus, const Input& input) {
    if (fieldKey(focus, input))
        return {};
    const bool isList = focus.control.kind == JXW_LISTBOX && focus.control.rowCount > 0;
    if (input.text == " " && !input.alt && !(isList && search_.hasText()))
        return space(focus);
    if (isList && !input.alt)
        return search_.type(focus.dialog, focus.index, focus.control, input.text, input.time);
    return input.text.size() == 1 ? accessKey(focus.dialog, input.text[0]) : std::string();
}

// The keys of a search that is open: true when it took this one.
bool DialogInput::searchKey(const Focus& focus, Key key, std::string& said) {
    if (!search_.isOpen(focus.control) || key == Key::character)
        return false;
    if (key == Key::backspace) {
        said = search_.takeBack(focus.dialog, focus.index, focus.control);
        return true;
    }
    search_.close();
    return key == Key::enter || key == Key::escape;
}

void DialogInput::command(HWND dialog, const JxwControlInfo& button) {
    cancelled_ = button.id == IDCANCEL;
    if (button.id != IDCANCEL && (button.flags & JXW_CLOSE) == 0)
        working_(assist::withoutAccessKey(button.text));
    JXW_UserCommand(dialog, button.id);
}

void DialogInput::enter(const Focus& focus) {
    if (focus.control.kind == JXW_BUTTON) {
        command(focus.dialog, focus.control);
        return;
    }
    JxwControlInfo control{};
    for (int index = 0; JXW_GetControlInfo(focus.dialog, index, &control) != 0; ++index)
        if (control.kind == JXW_BUTTON && (control.flags & JXW_DEFAULT) != 0 && control.enabled != 0 &&
            (control.flags & JXW_CLOSE) == 0)
            working_(assist::withoutAccessKey(control.text));
    JXW_UserKey(focus.dialog, JXW_KEY_ENTER);
}

// Moves a dialog that is larger than the screen, or a list sideways with it.
void DialogInput::scrollKey(const Focus& focus, Key key) {
    const int page = std::max(1, focus.place.inside.lines - 1);
    Point& scrolled = focus.view.scrolled;
    if (key == Key::pageUp || key == Key::pageDown)
        scrolled.line += key == Key::pageUp ? -page : page;
    else if (focus.control.kind == JXW_LISTBOX && (key == Key::left || key == Key::right))
        scrolled.column += key == Key::left ? -8 : 8;
    else if (key == Key::up || key == Key::left)
        JXW_UserKey(focus.dialog, JXW_KEY_PREVIOUS);
    else if (key == Key::down || key == Key::right)
        JXW_UserKey(focus.dialog, JXW_KEY_NEXT);
}

std::string DialogInput::key(const Focus& focus, const Input& input) {
    std::string said;
    if (searchKey(focus, input.key, said))
        return said;
    switch (input.key) {
        case Key::character:
            return character(focus, input);
        case Key::paste:
            return paste(focus, input);
        case Key::enter:
            enter(focus);
            break;
        case Key::escape:
            cancelled_ = true;
            JXW_UserKey(focus.dialog, JXW_KEY_ESCAPE);
            break;
        case Key::tab:
            if (focus.view.freshField == focus.index || !assist::completePath(focus.dialog))
                JXW_UserKey(focus.dialog, JXW_KEY_NEXT);
            break;
        case Key::backTab:
            JXW_UserKey(focus.dialog, JXW_KEY_PREVIOUS);
            break;
        default:
            if (!fieldKey(focus, input) && !listKey(focus, input.key) && !groupKey(focus, input.key))
                scrollKey(focus, input.key);
            break;
    }
    return {};
}

void DialogInput::pressInList(const Spot& spot, bool isDouble) {
    const JxwControlInfo& list = spot.control;
    const Rect rows = rowsOf(spot.part);
    ListView& seen = spot.view.lists[spot.index];
    if (pressScrollBar(list, spot.part, spot.inside, seen))
        return;
    const int row = rows.contains(spot.inside) ? seen.firstRow + spot.inside.line - rows.line : list.rowCount;
    if (row >= list.rowCount) {
        JXW_UserFocus(spot.dialog, list.id);
        return;
    }
    seen.shownSelection = row;  // it stays where it was pressed
    if (isDouble)
        working_(JXW_GetRow(spot.dialog, spot.index, row));
    if (isDouble)
        JXW_UserDoubleClick(spot.dialog, list.id, row);
    else
        JXW_UserSelect(spot.dialog, list.id, row);
}

void DialogInput::pressInField(const Spot& spot) {
    const JxwControlInfo& field = spot.control;
    EditView& edit = spot.view.edits[spot.index];
    edit.follow(field.text, spot.part.columns, abilities_.charset);
    edit.history.endRun();
    const std::string_view seen = std::string_view(field.text).substr(edit.firstByte);
    const int column = spot.inside.column - spot.part.column;
    const bool isHidden = (field.flags & JXW_PASSWORD) != 0;
    edit.caret = edit.firstByte + (isHidden ? caretBehindGlyphs(seen, column, abilities_.charset)
                                            : caretAt(seen, column, abilities_.charset));
    JXW_UserFocus(spot.dialog, field.id);
    spot.view.shownFocus = spot.index;
    spot.view.freshField = -1;
}

std::string DialogInput::pressAt(const Spot& spot, const Input& input) {
    const JxwControlInfo& control = spot.control;
    if (control.enabled == 0)
        return assist::helpOn(spot.dialog, spot.index);
    switch (control.kind) {
        case JXW_BUTTON:
            command(spot.dialog, control);
            break;
        case JXW_CHECKBOX:
        case JXW_RADIO:
            JXW_UserCheck(spot.dialog, control.id);
            break;
        case JXW_LISTBOX:
            pressInList(spot, input.key == Key::doublePress);
            break;
        case JXW_EDIT:
            pressInField(spot);
            break;
        default:
            if (control.accessKey != 0)
                JXW_UserAccessKey(spot.dialog, control.accessKey);
            break;
    }
    return {};
}

std::string DialogInput::mouse(HWND dialog, const Input& input, const Rect& area, DialogView& view) {
    JxwDialogInfo info{};
    JXW_GetDialogInfo(dialog, &info);
    const DialogPlace place = placeDialog(info, area, view.scrolled);
    const bool isInside = place.inside.contains(input.place);
    Spot spot{dialog, -1, {}, {}, place.inDialog(input.place), view};
    spot.index = isInside ? controlAt(dialog, place, spot.inside) : -1;
    if (JXW_GetControlInfo(dialog, spot.index, &spot.control) != 0)
        spot.part = place.of(spot.control);
    if (input.key == Key::wheelUp || input.key == Key::wheelDown) {
        const int rows = input.key == Key::wheelUp ? -kWheelRows : kWheelRows;
        if (spot.control.kind == JXW_LISTBOX)
            view.lists[spot.index].scroll(spot.control, rowsSeen(spot.part), rows);
        else
            view.scrolled.line += rows;
    } else if (spot.index >= 0) {
        return pressAt(spot, input);
    } else if (!isInside) {
        pressFrame(place, input.place, view);
    }
    return {};
}

std::string DialogInput::take(HWND dialog, const Input& input, const Rect& area, DialogView& view) {
    cancelled_ = false;
    JxwDialogInfo info{};
    if (JXW_GetDialogInfo(dialog, &info) == 0)
        return {};
    switch (input.key) {
        case Key::press:
        case Key::doublePress:
        case Key::wheelUp:
        case Key::wheelDown:
            return mouse(dialog, input, area, view);
        default:
            break;
    }
    Focus focus{dialog, info.focus, {}, view, placeDialog(info, area, view.scrolled)};
    JXW_GetControlInfo(dialog, info.focus, &focus.control);
    return key(focus, input);
}

}  // namespace jx::terminal
