// A message box: what it shows, where, and what keys do to it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "odbcadmin/terminal/terminal.h"

namespace jx::terminal {

// Message: open until an answer is there.
class Message {
public:
    // style as JXW's message boxes have it. A question about trouble begins at its "No".
    Message(std::string text, std::string title, unsigned int style);

    // Paints it in the middle of area.
    void paint(Canvas& canvas, const Rect& area);

    // The answer that an input gives; nothing when it goes on. Places are those of the last painting.
    std::optional<unsigned int> take(const Input& input);

    // The answer when the user is gone: No, or OK where there is nothing else.
    unsigned int leastAnswer() const { return buttons_.back().answer; }

private:
    struct Button {
        unsigned int answer;
        const char* text;  // with its "&"
        Rect place;
    };

    void layOut(const Rect& area, Charset charset);
    void paintButtons(Canvas& canvas);
    std::optional<unsigned int> press(Point place) const;
    std::optional<unsigned int> typed(const Input& input) const;
    void scroll(int lines);

    std::string text_;
    std::string title_;
    const char* sign_;
    std::vector<Button> buttons_;
    std::size_t focus_ = 0;
    std::vector<std::string> lines_;
    Rect frame_;
    Rect inside_;  // where the lines are seen
    int firstLine_ = 0;
};

}  // namespace jx::terminal
