// The widget that shows a control.
#pragma once

#include <FL/Fl_Hold_Browser.H>
#include <FL/Fl_Widget.H>
#include <jxscreen.h>

#include <string>
#include <vector>

#include "odbcadmin/desktop/placement.h"

namespace jx::desktop {

// RowList: a list that knows how many rows it shows, and scrolls no further than it must.
class RowList : public Fl_Hold_Browser {
public:
    RowList();

    int rowHeight() const { return incr_height(); }
    int rowsShown() const;

    // Scrolls until the chosen row can be seen.
    void revealChosen();
};

// Makes the widget for a control in the group that is open; the group owns it. It has no place and no text yet.
Fl_Widget* newWidget(const JxwControlInfo& control);

// What a control does with room, and where its template puts it on this screen.
Part partOf(const JxwControlInfo& control);

// Gives labels the height of the field beside them, so that both texts stand on one line.
void alignLabels(std::vector<Part>& parts);

// A control's text as the widget's label, its access key underlined.
std::string labelOf(const JxwControlInfo& control);

// A text as labels take it: "@" would begin a symbol.
std::string asLabel(const std::string& text);

// Whether the user turns it on and off: a check box or a radio button.
bool isTurned(const JxwControlInfo& control);

// Whether the user acts on it.
bool isActedOn(const JxwControlInfo& control);

}  // namespace jx::desktop
