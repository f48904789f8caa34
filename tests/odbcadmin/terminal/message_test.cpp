// Message boxes in small and large parts of a screen.
#include "odbcadmin/terminal/message.h"

#include <gtest/gtest.h>
#include <jxwindow.h>
#include <odbcinst.h>

#include <clocale>

namespace jx::test {
namespace {

using terminal::Canvas;
using terminal::Input;
using terminal::Key;
using terminal::Message;
using terminal::Rect;

constexpr unsigned int kQuestion = MB_YESNO | MB_ICONQUESTION;

std::string painted(Message& message, int columns, int lines) {
    Canvas canvas(columns, lines);
    message.paint(canvas, canvas.whole());
    return canvas.text();
}

Input input(Key key, int column = 0, int line = 0) {
    Input made;
    made.key = key;
    made.place = {column, line};
    return made;
}

class MessageTest : public testing::Test {
protected:
    MessageTest() { std::setlocale(LC_CTYPE, "C.UTF-8"); }
};

TEST_F(MessageTest, InATinyTerminalTextAndButtonsAreBothSeen) {
    Message message("Really remove it? It cannot be undone.", "Title", kQuestion);
    EXPECT_EQ(painted(message, 20, 5),
              "┌─ Title ──────────┐\n"
              "│ Really remove    │\n"
              "│ it? It cannot be ▼\n"
              "│   [Yes] <No >    │\n"
              "└──────────────────┘\n");
    for (const Rect& size : {Rect{0, 0, 20, 4}, Rect{0, 0, 12, 3}, Rect{0, 0, 1, 1}, Rect{}})
        painted(message, size.columns, size.lines);
    EXPECT_EQ(painted(message, 60, 8),
              "\n"
              "       ┌─ Title ────────────────────────────────────┐\n"
              "       │ (?) Really remove it? It cannot be undone. │\n"
              "       │                                            │\n"
              "       │           [  Yes   ]  <   No   >           │\n"
              "       └────────────────────────────────────────────┘\n\n\n");
}

TEST_F(MessageTest, ItsRightEdgeAndTheWheelScrollIt) {
    std::string text;
    for (int line = 10; line < 40; ++line)
        text += "line " + std::to_string(line) + "\n";
    const struct {
        std::vector<Input> inputs;
        const char* first;
    } rows[] = {{{}, "line 10"},
                {{input(Key::wheelDown)}, "line 13"},
                {{input(Key::wheelDown), input(Key::wheelUp)}, "line 10"},
                {{input(Key::press, 47, 8)}, "line 15"},
                {{input(Key::press, 47, 8), input(Key::doublePress, 47, 8), input(Key::press, 47, 1)}, "line 15"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.first);
        Message message(text, "A title that is forty columns wide or so", MB_OK);
        painted(message, 50, 10);
        for (const Input& each : row.inputs)
            EXPECT_FALSE(message.take(each).has_value());
        const std::string shown = painted(message, 50, 10);
        EXPECT_EQ(shown.substr(shown.find("line "), 7), row.first) << shown;
    }
}

TEST_F(MessageTest, AClickOnAButtonAnswersAndOneBesideItDoesNot) {
    Message message("Really?", "Title", kQuestion);
    Canvas canvas(20, 5);
    message.paint(canvas, canvas.whole());
    ASSERT_EQ(canvas.line(2), "│   [Yes] <No >    │");
    const int column = 4;
    EXPECT_EQ(message.take(input(Key::press, column, 2)), std::optional<unsigned int>(IDYES));
    EXPECT_EQ(message.take(input(Key::press, column + 6, 2)), std::optional<unsigned int>(IDNO));
    EXPECT_FALSE(message.take(input(Key::press, column + 5, 2)).has_value());
    EXPECT_FALSE(message.take(input(Key::press, 0, 0)).has_value());
}

}  // namespace
}  // namespace jx::test
