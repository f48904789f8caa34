// Widgets by the kind of control.
#include "odbcadmin/desktop/control_widget.h"

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_Round_Button.H>
#include <FL/Fl_Secret_Input.H>

#include <algorithm>

#include "odbcadmin/desktop/scale.h"

namespace jx::desktop {

namespace {

constexpr int kLeastHeight = 18;
constexpr int kMostRaised = 4;

// Text: a label. The toolkit underlines access keys in widgets that take them; a label names the one of its neighbour.
class Text : public Fl_Box {
public:
    Text() : Fl_Box(0, 0, 0, 0) {
        set_flag(SHORTCUT_LABEL);
        align(FL_ALIGN_LEFT | FL_ALIGN_INSIDE | FL_ALIGN_WRAP | FL_ALIGN_CLIP);
    }
};

class Frame : public Fl_Box {
public:
    Frame() : Fl_Box(0, 0, 0, 0) {
        set_flag(SHORTCUT_LABEL);
        box(FL_ENGRAVED_FRAME);
        align(FL_ALIGN_TOP_LEFT | FL_ALIGN_INSIDE);
    }
};

Fl_Widget* newField(const JxwControlInfo& control) {
    Fl_Widget* field = (control.flags & JXW_PASSWORD) != 0 ? new Fl_Secret_Input(0, 0, 0, 0) : new Fl_Input(0, 0, 0, 0);
    field->when(FL_WHEN_CHANGED);
    return field;
}

// The one that Enter presses is bold.
Fl_Widget* newButton(const JxwControlInfo& control) {
    auto* button = new Fl_Button(0, 0, 0, 0);
    if ((control.flags & JXW_DEFAULT) != 0)
        button->labelfont(FL_HELVETICA_BOLD);
    return button;
}

Growth growthOf(int kind) {
    switch (kind) {
        case JXW_LISTBOX:
            return Growth::list;
        case JXW_EDIT:
            return Growth::field;
        case JXW_BUTTON:
            return Growth::button;
        case JXW_GROUPBOX:
            return Growth::frame;
        default:
            return Growth::text;
    }
}

}  // namespace

RowList::RowList() : Fl_Hold_Browser(0, 0, 0, 0) {
    format_char(0);
    column_char(0);
    when(FL_WHEN_RELEASE | FL_WHEN_NOT_CHANGED);
}

int RowList::rowsShown() const {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bbox(x, y, width, height);
    return std::max(1, height / std::max(1, rowHeight()));
}

void RowList::revealChosen() {
    const int row = value();
    if (row <= 0 || displayed(row) != 0)
        return;
    if (row < topline())
        topline(row);
    else
        bottomline(row);
}

Fl_Widget* newWidget(const JxwControlInfo& control) {
    switch (control.kind) {
        case JXW_EDIT:
            return newField(control);
        case JXW_BUTTON:
            return newButton(control);
        case JXW_CHECKBOX:
            return new Fl_Check_Button(0, 0, 0, 0);
        case JXW_RADIO:
            return new Fl_Round_Button(0, 0, 0, 0);
        case JXW_LISTBOX:
            return new RowList;
        case JXW_GROUPBOX:
            return new Frame;
        default:
            return new Text;
    }
}

Part partOf(const JxwControlInfo& control) {
    const int height = std::max(dots(control.height), scaled(kLeastHeight));
    // A label often stands directly above what it names, which would cover its access key's line.
    const Growth growth = growthOf(control.kind);
    const int raised = growth == Growth::text ? height - dots(control.height) : 0;
    return {growth, {dots(control.x), dots(control.y) - raised, dots(control.width), height}};
}

void alignLabels(std::vector<Part>& parts) {
    for (Part& label : parts) {
        if (label.growth != Growth::text)
            continue;
        const auto isBeside = [&label](const Part& part) {
            const int lower = part.place.y - label.place.y;
            return part.growth == Growth::field && lower >= 0 && lower <= scaled(kMostRaised) &&
                   part.place.x >= label.place.right();
        };
        const auto field = std::find_if(parts.begin(), parts.end(), isBeside);
        if (field == parts.end())
            continue;
        label.place.y = field->place.y;
        label.place.height = field->place.height;
    }
}

std::string asLabel(const std::string& text) {
    std::string label;
    for (const char each : text)
        label.append(each == '@' ? 2 : 1, each);
    return label;
}

std::string labelOf(const JxwControlInfo& control) {
    if ((control.flags & JXW_PLAIN) == 0)
        return asLabel(control.text);
    std::string label;
    for (const char each : std::string(control.text))
        label.append(each == '&' ? 2 : 1, each);
    return asLabel(label);
}

bool isTurned(const JxwControlInfo& control) {
    return control.kind == JXW_CHECKBOX || control.kind == JXW_RADIO;
}

bool isActedOn(const JxwControlInfo& control) {
    return isTurned(control) || control.kind == JXW_BUTTON || control.kind == JXW_EDIT || control.kind == JXW_LISTBOX;
}

}  // namespace jx::desktop
