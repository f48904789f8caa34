// Keys and the mouse: what each does to the control that has the focus, or that lies under it.
#include "odbcadmin/terminal/dialog_input.h"

#include <cstring>

#include "odbcadmin/assist/help.h"
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

bool DialogInput::listKey(const Focus& focus, Key key) {
    if (focus.control.kind != JXW_LISTBOX || focus.control.rowCount == 0)
        return false;
    const int page = std::max(1, rowsSeen(placeOf(focus.control)) - 1);
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
    edit.follow(focus.control.text, placeOf(focus.control).columns, abilities_.charset);
    std::string text = focus.control.text;
    const bool isFresh = focus.view.freshField == focus.index && !input.alt;
    if (isFresh && (input.key == Key::character || input.key == Key::paste || input.key == Key::backspace ||
                    input.key == Key::erase))
        text.clear();
    if (!editText(text, edit.caret, input, abilities_.charset))
        return false;
    focus.view.freshField = -1;
    if (text == edit.shownText)
        return true;
    edit.shownText = text;
    JXW_UserEdit(focus.dialog, focus.control.id, text.c_str());
    return true;
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

void DialogInput::pressInList(HWND dialog, int index, Point inside, bool isDouble, DialogView& view) {
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

void DialogInput::pressInField(HWND dialog, int index, Point inside, DialogView& view) {
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

std::string DialogInput::pressAt(HWND dialog, int index, Point inside, const Input& input, DialogView& view) {
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

void DialogInput::wheel(HWND dialog, int index, int rows, DialogView& view) {
    JxwControlInfo control{};
    if (JXW_GetControlInfo(dialog, index, &control) != 0 && control.kind == JXW_LISTBOX)
        view.lists[index].scroll(control, rowsSeen(placeOf(control)), rows);
    else
        view.scrolled.line += rows;
}

std::string DialogInput::mouse(HWND dialog, const Input& input, const Rect& area, DialogView& view) {
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
