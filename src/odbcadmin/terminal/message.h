// A message box: what it shows, where, and what keys do to it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "odbcadmin/assist/message_box.h"
#include "odbcadmin/terminal/terminal.h"

namespace jx::terminal {

// Message: open until an answer is there.
class Message {
public:
    // style as JXW's message boxes have it.
    Message(std::string text, std::string title, unsigned int style);

    // Paints it in the middle of area.
    void paint(Canvas& canvas, const Rect& area);

    // The answer that an input gives; nothing when it goes on. Places are those of the last painting.
    std::optional<unsigned int> take(const Input& input);

    unsigned int leastAnswer() const { return style_.leastAnswer(); }

private:
    void layOut(const Rect& area, Charset charset);
    int buttonColumns(int width, int gap) const;
    void paintButtons(Canvas& canvas);
    std::optional<unsigned int> press(Point place);
    std::optional<unsigned int> typed(const Input& input) const;
    void scroll(int lines);
    int page() const { return std::max(1, inside_.lines - 1); }

    std::string text_;
    std::string title_;
    assist::BoxStyle style_;
    std::vector<Rect> places_;  // of the buttons
    std::size_t focus_;
    std::vector<std::string> lines_;
    Rect frame_;
    Rect inside_;  // where the lines are seen
    int firstLine_ = 0;
    bool hasSign_ = false;
};

}  // namespace jx::terminal
