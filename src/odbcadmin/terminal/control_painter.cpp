// How each kind of control looks.
#include "odbcadmin/terminal/control_painter.h"

#include "odbcadmin/assist/help.h"
#include "odbcadmin/assist/scope_mark.h"
#include "rules/utf8.h"

namespace jx::terminal {

namespace {

Look lookOf(const JxwControlInfo& control, bool hasFocus) {
    if (control.enabled == 0)
        return Look::grey;
    return hasFocus ? Look::focus : Look::plain;
}

const char* markOf(const JxwControlInfo& control) {
    if (control.kind == JXW_CHECKBOX)
        return control.checked != 0 ? "[x] " : "[ ] ";
    return control.checked != 0 ? "(o) " : "( ) ";
}

std::string hidden(std::string_view text, Charset charset) {
    return std::string(glyphsOf(text, charset).size(), '*');
}

}  // namespace

std::optional<Point> ControlPainter::paint(int index, const JxwControlInfo& control, const Rect& place, bool hasFocus) {
    switch (control.kind) {
        case JXW_LABEL:
            label(control, place);
            break;
        case JXW_BUTTON:
            button(control, place, hasFocus);
            break;
        case JXW_CHECKBOX:
        case JXW_RADIO:
            box(control, place, hasFocus);
            break;
        case JXW_GROUPBOX:
            group(control, place);
            break;
        case JXW_EDIT:
            return field(index, control, place, hasFocus);
        case JXW_LISTBOX:
            list(index, control, place, hasFocus);
            break;
        default:
            break;
    }
    return std::nullopt;
}

// The letter of the access key is set off.
int ControlPainter::putLabel(Point place, const char* text, Look look) {
    const std::string_view whole = text;
    std::string plain;
    for (std::size_t at = 0; at < whole.size(); ++at) {
        if (whole[at] != '&' || at + 1 == whole.size()) {
            plain.push_back(whole[at]);
            continue;
        }
        place.column = canvas_.put(place, plain, look);
        plain.clear();
        ++at;
        if (whole[at] == '&' || look != Look::plain) {
            plain.push_back(whole[at]);
        } else {
            const std::size_t length = rules::characterAt(whole, at).length;
            place.column = canvas_.put(place, whole.substr(at, length), Look::key);
            at += length - 1;
        }
    }
    return canvas_.put(place, plain, look);
}

void ControlPainter::label(const JxwControlInfo& control, const Rect& place) {
    const Look look = lookOf(control, /*hasFocus=*/false);
    if (place.lines == 1 && (control.flags & JXW_PLAIN) == 0) {
        putLabel({place.column, place.line}, control.text, look);
        return;
    }
    int line = place.line;
    for (const std::string& text : wrapped(assist::shownText(control), place.columns, abilities_.charset)) {
        if (line < place.bottom())
            canvas_.put({place.column, line++}, text, look);
    }
}

void ControlPainter::button(const JxwControlInfo& control, const Rect& place, bool hasFocus) {
    const bool isDefault = (control.flags & JXW_DEFAULT) != 0;
    const Look look = lookOf(control, hasFocus);
    const char* open = bracketsGrey(control) ? "(" : isDefault ? "<" : "[";
    const char* close = bracketsGrey(control) ? ")" : isDefault ? ">" : "]";
    canvas_.fill({place.column, place.line, place.columns, 1}, look);
    canvas_.put({place.column, place.line}, open, look);
    canvas_.put({place.right() - 1, place.line}, close, look);
    const int width = columnsOf(assist::withoutAccessKey(control.text), abilities_.charset);
    const int column = place.column + std::max(1, (place.columns - width) / 2);
    putLabel({column, place.line}, control.text, look);
}

void ControlPainter::box(const JxwControlInfo& control, const Rect& place, bool hasFocus) {
    const Look look = lookOf(control, hasFocus);
    Point point{place.column, place.line};
    if (bracketsGrey(control))
        point.column = canvas_.put(point, "(", look);
    point.column = canvas_.put(point, markOf(control), look);
    point.column = putLabel(point, control.text, look);
    if (bracketsGrey(control))
        canvas_.put(point, ")", look);
}

void ControlPainter::group(const JxwControlInfo& control, const Rect& place) {
    const Look look = lookOf(control, /*hasFocus=*/false);
    drawFrame(canvas_, place, look);
    if (*control.text == '\0')
        return;
    Point point{place.column + 2, place.line};
    point.column = canvas_.put(point, " ", look);
    point.column = putLabel(point, control.text, look);
    canvas_.put(point, " ", look);
}

std::optional<Point> ControlPainter::field(int index, const JxwControlInfo& control, const Rect& whole, bool hasFocus) {
    // What the window cuts off is of no use to whoever types.
    constexpr int kLeastColumns = 8;
    Rect place = whole;
    place.columns = std::max(std::min(kLeastColumns, whole.columns), common(whole, canvas_.clipped()).columns);
    EditView& edit = view_.edits[index];
    edit.follow(control.text, place.columns, abilities_.charset);
    std::string_view text = std::string_view(control.text).substr(edit.firstByte);
    std::string_view left = text.substr(0, edit.caret - edit.firstByte);
    std::string stars;
    std::string starsLeft;
    if ((control.flags & JXW_PASSWORD) != 0) {
        stars = hidden(text, abilities_.charset);
        starsLeft = hidden(left, abilities_.charset);
        text = stars;
        left = starsLeft;
    }
    const Look look = control.enabled == 0 ? Look::grey : Look::field;
    const bool isFresh = hasFocus && view_.freshField == index;
    canvas_.fill(place, look);
    const std::string shown = cutTo(text, place.columns, abilities_.charset);
    const int end = canvas_.put({place.column, place.line}, shown, isFresh ? Look::focus : look);
    for (int column = end; column < place.right() && !abilities_.underline; ++column)
        canvas_.put({column, place.line}, "_", look);
    if (edit.firstByte > 0)
        canvas_.put({place.column, place.line}, "<", Look::bar);
    if (shown.size() < text.size())
        canvas_.put({place.right() - 1, place.line}, ">", Look::bar);
    if (!hasFocus)
        return std::nullopt;
    return Point{place.column + columnsOf(left, abilities_.charset), place.line};
}

// What stands at the end of a row of the system's is seen however long its name is.
void ControlPainter::row(const std::string& text, const Rect& place, Look look) {
    canvas_.fill(place, look);
    if (fits(text, place.columns, abilities_.charset)) {
        canvas_.put({place.column, place.line}, cutTo(text, place.columns, abilities_.charset), look);
        return;
    }
    constexpr int kLeastOfName = 16;
    std::string mark = assist::shownMark(text);
    if (place.columns < kLeastOfName + columnsOf(mark, abilities_.charset))
        mark.clear();
    const int columns = place.columns - columnsOf(mark, abilities_.charset);
    canvas_.put({place.column, place.line}, cutTo(text, columns - 1, abilities_.charset), look);
    canvas_.put({place.column + columns - 1, place.line}, linesOf(abilities_.charset).cut, look);
    canvas_.put({place.column + columns, place.line}, mark, look);
}

void ControlPainter::scrollBar(const JxwControlInfo& control, const Rect& place, int firstRow, Look look) {
    const Lines& lines = linesOf(abilities_.charset);
    const Rect rows = rowsOf(place);
    const int column = place.right() - 1;
    const ListThumb thumb = thumbOf(control, rows.lines, firstRow);
    for (int line = 0; line < thumb.lines; ++line)
        canvas_.put({column, rows.line + thumb.line + line}, lines.thumb, look);
    if (firstRow > 0)
        canvas_.put({column, rows.line}, lines.up, look);
    if (firstRow + rows.lines < control.rowCount)
        canvas_.put({column, rows.bottom() - 1}, lines.down, look);
}

// Where in the list the user is, at the end of its lower edge.
void ControlPainter::position(const JxwControlInfo& control, const Rect& place, Look look) {
    if (control.rowCount == 0)
        return;
    const std::string count = std::to_string(control.rowCount);
    const std::string text = control.selection < 0 ? " " + count + (control.rowCount == 1 ? " row " : " rows ")
                                                   : " " + std::to_string(control.selection + 1) + " of " + count + " ";
    const int columns = static_cast<int>(text.size());
    if (columns <= place.columns - 4)
        canvas_.put({place.right() - 2 - columns, place.bottom() - 1}, text, look);
}

void ControlPainter::list(int index, const JxwControlInfo& control, const Rect& place, bool hasFocus) {
    const Look plain = control.enabled == 0 ? Look::grey : Look::plain;
    const Rect rows = rowsOf(place);
    ListView& view = view_.lists[index];
    view.follow(control, rows.lines);
    drawFrame(canvas_, place, hasFocus && control.rowCount == 0 ? Look::focus : plain);
    for (int line = 0; line < rows.lines && view.firstRow + line < control.rowCount; ++line) {
        const int number = view.firstRow + line;
        const char* text = JXW_GetRow(dialog_, index, number);
        const Look look = number != control.selection ? plain : hasFocus ? Look::focus : Look::selected;
        row(text != nullptr ? text : "", {rows.column, rows.line + line, rows.columns, 1}, look);
    }
    scrollBar(control, place, view.firstRow, plain);
    if (place.lines >= 3)
        position(control, place, plain);
    // Where the user is shows in a list without a selection, too.
    if (hasFocus && control.selection < 0 && control.rowCount > 0)
        canvas_.dress({rows.column, rows.line, 1, 1}, Look::focus);
}

}  // namespace jx::terminal
