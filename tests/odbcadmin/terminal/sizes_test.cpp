// The screen on terminals of every size: what is seen, and what of it after the size has changed.
#include <gtest/gtest.h>
#include <odbcinst.h>

#include <clocale>

#include "odbcadmin/terminal/screen.h"
#include "scripted_terminal.h"
#include "test_home.h"

namespace jx::test {
namespace {

using terminal::Charset;
using terminal::Look;

class Sizes : public testing::Test {
protected:
    Sizes() { std::setlocale(LC_CTYPE, "C.UTF-8"); }

    static void run(ScriptedTerminal& user) {
        const terminal::Screen screen(user);
        SQLManageDataSources(0);
    }

    static bool has(const std::string& picture, const std::string& text) {
        return picture.find(text) != std::string::npos;
    }

    TestHome home_{{".odbc.ini", "[ODBC Data Sources]\nSales=Sample\nStock=Sample\nZoo=Sample\n"},
                   {".odbcinst.ini", "[ODBC Drivers]\nSample=Installed\n[Sample]\nDriver=/none/d.so\n"}};
    ScriptedTerminal user_{80, 24};
};

TEST_F(Sizes, ADialogLargerThanTheWindowFollowsTheFocus) {
    ScriptedTerminal small(40, 12, {Charset::ascii, false, false});
    small.look();
    small.then(press(Key::tab));
    small.look();
    run(small);
    ASSERT_EQ(small.seen().size(), 2U);
    EXPECT_EQ(small.seen()[0],
              R"( Data sources in ~/.odbc.ini
+- Data Sources -----------------------+
|Data sources (driver):                ^
|+-------------------------------------|
||Sales (Sample)                       |
||Stock (Sample)                       |
||Zoo (Sample)                         |
||                                     |
||                                     v
+<------------------------------------>+
 Your data sources. Enter or a double>
 F1 help F2 driver F3 test F4 view
)");
    EXPECT_TRUE(has(small.seen()[1], "<   Setup...    >")) << small.seen()[1];
}

TEST_F(Sizes, ANewSizePaintsEverythingAnewAtAnyDepth) {
    user_.then({alt("r"), alt("e"), alt("e"), perform([&] { user_.resize(40, 12); }), press(Key::repaint)});
    user_.look();
    user_.then({perform([&] { user_.resize(20, 4); }), press(Key::repaint)});
    user_.then({perform([&] { user_.resize(1, 1); }), press(Key::repaint)});
    user_.then({perform([&] { user_.resize(80, 24); }), press(Key::repaint)});
    user_.look();
    run(user_);
    EXPECT_TRUE(has(user_.seen()[0], "<   No   >")) << user_.seen()[0];
    EXPECT_TRUE(has(user_.seen()[1], "<   No   >")) << user_.seen()[1];
}

TEST_F(Sizes, ALargeTerminalShowsMoreRows) {
    home_.put(".odbc.ini", manySources(60));
    ScriptedTerminal large(200, 60);
    large.look();
    run(large);
    EXPECT_TRUE(has(large.seen()[0], "│S100 (Sample)")) << large.seen()[0];
    EXPECT_TRUE(has(large.seen()[0], "│S146 (Sample)"));
    EXPECT_TRUE(has(large.seen()[0], " 1 of 60 ─┘"));
}

TEST_F(Sizes, ANewSizeKeepsFocusAndSelectionInView) {
    home_.put(".odbc.ini", manySources(60));
    std::vector<std::string> rows;
    const auto resizedTo = [this](int columns, int lines) {
        return std::vector<Step>{perform([this, columns, lines] { user_.resize(columns, lines); }),
                                 press(Key::repaint)};
    };
    user_.then(std::vector<Step>(30, press(Key::down)));
    for (const Point size : {Point{20, 5}, Point{40, 12}, Point{200, 60}, Point{80, 24}}) {
        user_.then(resizedTo(size.column, size.line));
        user_.then(perform([&] {
            for (int line = 0; line < user_.lines(); ++line)
                for (int column = 0; column < user_.columns(); ++column)
                    if (user_.canvas().at({column, line}).look == Look::focus && rows.size() < 4) {
                        rows.push_back(user_.canvas().line(line));
                        return;
                    }
            rows.emplace_back("(no focus)");
        }));
    }
    user_.then(press(Key::tab));
    user_.then(resizedTo(20, 5));
    user_.look();
    run(user_);
    ASSERT_EQ(rows.size(), 4U);
    for (const std::string& row : rows)
        EXPECT_TRUE(has(row, "S130 ")) << row;
    EXPECT_TRUE(has(user_.seen()[0], " <   Setup...    >")) << user_.seen()[0];
}

TEST_F(Sizes, OnAVerySmallTerminalEveryControlIsSeenWholeWhenTheUserIsThere) {
    ScriptedTerminal tiny(20, 5);
    for (int i = 0; i < 6; ++i) {
        tiny.then(press(Key::tab));
        tiny.look();
    }
    run(tiny);
    const char* buttons[] = {"<   Setup...    >", "[    Delete     ]", "[    Add...     ]",
                             "[  Drivers...   ]", "[  Options...   ]", "[     Close     ]"};
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_TRUE(has(tiny.seen()[i], buttons[i])) << tiny.seen()[i];
}

TEST_F(Sizes, AListWiderThanTheTerminalStaysWhereItWasMovedSideways) {
    home_.put(".odbc.ini",
              "[ODBC Data Sources]\nA name of twenty-six bytes=Sample\nAnother one of twenty-nine=Sample\n");
    ScriptedTerminal tiny(20, 5);
    tiny.then({press(Key::right), press(Key::right), press(Key::down)});
    tiny.look();
    tiny.then({press(Key::tab), press(Key::backTab)});
    tiny.look();
    run(tiny);
    EXPECT_TRUE(has(tiny.seen()[0], "│twenty-nine (Sampl▼")) << tiny.seen()[0];
    EXPECT_TRUE(has(tiny.seen()[1], "│Another one")) << tiny.seen()[1];
}

TEST_F(Sizes, OnAVerySmallTerminalABoxTakesTheHelpsLineToo) {
    ScriptedTerminal tiny(20, 5);
    tiny.then(press(Key::f1));
    tiny.look();
    run(tiny);
    EXPECT_TRUE(has(tiny.seen()[0], "│ ~/.odbc.ini")) << tiny.seen()[0];
    EXPECT_TRUE(has(tiny.seen()[0], "<   OK   >"));
}

TEST_F(Sizes, OnAVerySmallTerminalAFieldIsSeenRatherThanAllOfItsLabel) {
    ScriptedTerminal tiny(20, 5);
    tiny.then({alt("o"), alt("f"), press(Key::home)});
    tiny.look();
    tiny.then({perform([&] { tiny.resize(80, 24); }), press(Key::repaint)});
    tiny.look();
    run(tiny);
    EXPECT_TRUE(has(tiny.seen()[0], "│e:    sql.log     ▼")) << tiny.seen()[0];
    EXPECT_TRUE(has(tiny.seen()[1], "Trace file:    sql.log ")) << tiny.seen()[1];
}
}  // namespace
}  // namespace jx::test
