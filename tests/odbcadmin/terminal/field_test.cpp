// Edit fields on the screen: texts longer than the field, and taking changes back.
#include <gtest/gtest.h>
#include <jxwindow.h>

#include <clocale>

#include "odbcadmin/terminal/screen.h"
#include "scripted_terminal.h"
#include "test_home.h"

namespace jx::test {
namespace {

constexpr unsigned short kEdit = 11;
constexpr unsigned short kOther = 12;
constexpr unsigned short kHidden = 13;

constexpr JxwControl kControls[] = {
    {JXW_LABEL, 0, 8, 8, 60, 8, "&Text:", 0},    {JXW_EDIT, kEdit, 72, 8, 40, 12, nullptr, 0},
    {JXW_LABEL, 0, 8, 16, 60, 8, "&Other:", 0},  {JXW_EDIT, kOther, 72, 16, 40, 12, nullptr, 0},
    {JXW_LABEL, 0, 8, 24, 60, 8, "&Hidden:", 0}, {JXW_EDIT, kHidden, 72, 24, 40, 12, nullptr, JXW_PASSWORD},
    {JXW_NO_CONTROL, 0, 0, 0, 0, 0, nullptr, 0}};
constexpr JxwTemplate kTemplates[] = {{1, "Fields", 160, 40, kControls}, {0, nullptr, 0, 0, nullptr}};

unsigned int setUp(HWND dialog, int message, int wparam, uintptr_t lparam) {
    if (message == WM_INITDIALOG)
        JXW_SetDlgItemText(dialog, kEdit, reinterpret_cast<const char*>(lparam));
    if (message == WM_COMMAND && wparam == IDCANCEL)
        JXW_EndDialog(dialog, 0);
    return 1;
}

class Field : public testing::Test {
protected:
    Field() { std::setlocale(LC_CTYPE, "C.UTF-8"); }

    // The first field of ten columns as it is seen after these steps, blanks and all, with "|" at the caret.
    std::string after(const std::string& text, const std::vector<Step>& steps) {
        std::string shown;
        ScriptedTerminal user(60, 20);
        user.then(steps);
        user.then(perform([&] {
            const std::string label = "Text:";
            for (int line = 0; line < user.lines(); ++line) {
                if (user.canvas().line(line).find(label) == std::string::npos)
                    continue;
                int column = 0;
                while (user.canvas().at({column, line}).text != "T")
                    ++column;
                for (int cell = column + 16; cell < column + 26; ++cell) {
                    if (user.cursor() == Point{cell, line})
                        shown += "|";
                    shown += user.canvas().at({cell, line}).text;
                }
                if (user.cursor() == Point{column + 26, line})
                    shown += "|";
            }
        }));
        const terminal::Screen screen(user);
        JXW_RegisterModule("fields", nullptr, kTemplates);
        JXW_DialogBox("fields", 1, 0, setUp, const_cast<char*>(text.c_str()));
        return shown;
    }

    static std::vector<Step> times(int count, Key key) {
        return std::vector<Step>(static_cast<std::size_t>(count), press(key));
    }
    static std::vector<Step> joined(std::vector<Step> one, const std::vector<Step>& other) {
        one.insert(one.end(), other.begin(), other.end());
        return one;
    }

    TestHome home_;
};

TEST_F(Field, MarksAtItsEdgesSayWhereTheTextGoesOn) {
    const std::string text = "0123456789abcdef";
    const struct {
        std::vector<Step> steps;
        const char* shown;
    } rows[] = {
        {{}, "<89abcdef| "},
        {{press(Key::home)}, "|012345678>"},
        {joined({press(Key::home)}, times(8, Key::right)), "01234567|8>"},
        {joined({press(Key::home)}, times(9, Key::right)), "<2345678|9>"},
        {joined({press(Key::end)}, times(7, Key::left)), "<8|9abcdef "},
        {joined({press(Key::end)}, times(9, Key::left)), "<|789abcdef"},
        {joined({press(Key::end)}, times(15, Key::left)), "0|12345678>"},
    };
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(after(text, rows[i].steps), rows[i].shown);
    }
}

TEST_F(Field, AShorterTextIsSeenFromAsFarBackAsFits) {
    EXPECT_EQ(after("0123456789abcdef", {press(Key::end), press(Key::backspace)}), "<789abcde| ");
    EXPECT_EQ(
        after("0123456789ab", {press(Key::end), press(Key::backspace), press(Key::backspace), press(Key::backspace)}),
        "012345678| ");
    EXPECT_EQ(after("0123456789abcdef", {press(Key::end), press(Key::left), press(Key::left), press(Key::eraseToEnd)}),
              "<6789abcd| ");
}

TEST_F(Field, ATextThatFitsHasNoMarks) {
    EXPECT_EQ(after("012345678", {press(Key::end)}), "012345678| ");
    EXPECT_EQ(after("0123456789", {press(Key::home)}), "|0123456789");
    EXPECT_EQ(after("0123456789", {press(Key::end)}), "<23456789| ");
}

TEST_F(Field, WideCharactersAndMarksStayWholeAtTheEdges) {
    EXPECT_EQ(after("表表表表表表", {press(Key::home)}), "|表表表表 >");
    EXPECT_EQ(after("表表表表表表", {press(Key::end)}), "< 表表表|  ");
    EXPECT_EQ(after("e\u0301e\u0301", {press(Key::end), press(Key::left)}), "e\u0301|e\u0301        ");
}

TEST_F(Field, CtrlUnderscoreTakesChangesBackOneByOne) {
    EXPECT_EQ(after("old", {type("n"), type("e"), press(Key::undo)}), "old|       ");
    EXPECT_EQ(after("old", {press(Key::end), type("x"), press(Key::home), type("y"), press(Key::undo)}), "|oldx      ");
    EXPECT_EQ(after("old", {press(Key::eraseToBegin), press(Key::undo), press(Key::undo)}), "old|       ");
    Step pasted = press(Key::paste);
    pasted.input.text = "abc";
    EXPECT_EQ(after("old", {press(Key::end), pasted, pasted, press(Key::undo)}), "oldabc|    ");
}

TEST_F(Field, OneFieldsChangesAreNotTakenBackInAnother) {
    EXPECT_EQ(after("old", {press(Key::end), type("x"), press(Key::tab), type("y"), press(Key::undo), press(Key::undo),
                            press(Key::backTab)}),
              "oldx|      ");
}

TEST_F(Field, AChangeOfTheDialogsOwnIsNotTakenBack) {
    std::string shown;
    const auto change = [] { JXW_SetDlgItemText(JXW_NextDialog(0), kEdit, "dialog's"); };
    EXPECT_EQ(after("old", {press(Key::end), type("x"), perform(change), press(Key::undo)}), "dialog's|  ");
}

TEST_F(Field, AClickInAHiddenFieldCountsItsStars) {
    std::string text;
    ScriptedTerminal user(60, 20);
    user.then({alt("h"), type("表"), type("表"), type("表")});
    user.then(perform([&] {
        const Point caret = user.cursor().value_or(Point{});
        Step step = click(caret.column - 1, caret.line);
        user.thenFirst({step, type("x")});
    }));
    user.then(perform([&] {
        char bytes[64] = {};
        JXW_GetDlgItemText(JXW_NextDialog(0), kHidden, bytes, sizeof bytes);
        text = bytes;
    }));
    const terminal::Screen screen(user);
    JXW_RegisterModule("fields", nullptr, kTemplates);
    JXW_DialogBox("fields", 1, 0, setUp, const_cast<char*>(""));
    EXPECT_EQ(text, "表表x表");
}

}  // namespace
}  // namespace jx::test
