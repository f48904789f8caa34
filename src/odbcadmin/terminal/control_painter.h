// Painting single controls.
#pragma once

#include <jxscreen.h>

#include <optional>

#include "odbcadmin/terminal/terminal.h"
#include "odbcadmin/terminal/view.h"

namespace jx::terminal {

// ControlPainter: paints the controls of one dialog. The canvas is clipped to the dialog's inside.
class ControlPainter {
public:
    ControlPainter(Canvas& canvas, const Abilities& abilities, HWND dialog, DialogView& view)
        : canvas_(canvas), abilities_(abilities), dialog_(dialog), view_(view) {}

    // Paints the control at index into place; hasFocus: the user is there. Gives the text cursor's place when it
    // stands in this control.
    std::optional<Point> paint(int index, const JxwControlInfo& control, const Rect& place, bool hasFocus);

private:
    int putLabel(Point place, const char* text, Look look);
    void label(const JxwControlInfo& control, const Rect& place);
    void button(const JxwControlInfo& control, const Rect& place, bool hasFocus);
    void box(const JxwControlInfo& control, const Rect& place, bool hasFocus);
    void group(const JxwControlInfo& control, const Rect& place);
    std::optional<Point> field(int index, const JxwControlInfo& control, const Rect& whole, bool hasFocus);
    void list(int index, const JxwControlInfo& control, const Rect& place, bool hasFocus);
    void scrollBar(const JxwControlInfo& control, const Rect& place, int firstRow, Look look);
    void position(const JxwControlInfo& control, const Rect& place, Look look);
    void row(const std::string& text, const Rect& place, Look look);
    bool bracketsGrey(const JxwControlInfo& control) const { return control.enabled == 0 && !abilities_.dim; }

    Canvas& canvas_;
    const Abilities& abilities_;
    HWND dialog_;
    DialogView& view_;
};

}  // namespace jx::terminal
