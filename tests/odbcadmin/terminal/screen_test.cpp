// The screen without a terminal: keys from a list, cells read back.
#include "odbcadmin/terminal/screen.h"

#include <gtest/gtest.h>
#include <odbcinst.h>

#include <clocale>

#include "scripted_terminal.h"
#include "test_home.h"

namespace jx::test {
namespace {

using terminal::Abilities;
using terminal::Charset;
using terminal::Look;

constexpr const char* kSources =
    "[ODBC Data Sources]\nSales=Sample\nStock=Sample\nZoo=Sample\n[Sales]\nDriver=/none\n[Stock]\nDriver=/none\n"
    "[Zoo]\nDriver=/none\n";
constexpr const char* kDrivers = "[ODBC Drivers]\nSample=Installed\n[Sample]\nDriver=/none/d.so\nSetup=/none/s.so\n";

class ScreenTest : public testing::Test {
protected:
    ScreenTest() { std::setlocale(LC_CTYPE, "C.UTF-8"); }

    void run(ScriptedTerminal& user) {
        const terminal::Screen screen(user);
        SQLManageDataSources(0);
    }

    // What was seen at the first look after the steps, with the dialog closed afterwards.
    std::string after(std::vector<Step> steps) {
        user_.then(std::move(steps));
        user_.look();
        run(user_);
        return user_.seen().empty() ? "(nothing)" : user_.seen().back();
    }

    bool has(const std::string& picture, const std::string& text) { return picture.find(text) != std::string::npos; }

    TestHome home_{{".odbc.ini", kSources}, {".odbcinst.ini", kDrivers}};
    ScriptedTerminal user_{80, 24};
};

TEST_F(ScreenTest, ShowsWhatItListsAndFromWhichFile) {
    EXPECT_EQ(after({}),
              R"( odbcadmin - Data sources in ~/.odbc.ini

    ┌─ Data Sources ───────────────────────────────────────────────────────┐
    │                                                                      │
    │  Data sources (driver):                                              │
    │  ┌────────────────────────────────────────────┐   <   Setup...    >  │
    │  │Sales (Sample)                              │                      │
    │  │Stock (Sample)                              │   [    Delete     ]  │
    │  │Zoo (Sample)                                │                      │
    │  │                                            │   [    Add...     ]  │
    │  │                                            │                      │
    │  │                                            │   [  Drivers...   ]  │
    │  │                                            │                      │
    │  │                                            │   [  Options...   ]  │
    │  │                                            │                      │
    │  │                                            │                      │
    │  │                                            │   [     Close     ]  │
    │  └─────────────────────────────────── 1 of 3 ─┘                      │
    │                                                                      │
    └──────────────────────────────────────────────────────────────────────┘

 Your data sources. Enter or a double click sets one up.

 F1 help F2 new driver F3 test F4 view F5 reload F6 copy F7 rename F8 filter
)");
}

TEST_F(ScreenTest, ADialogLargerThanTheWindowFollowsTheFocus) {
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
 F1 help F2 new driver F3 test F4 view
)");
    EXPECT_TRUE(has(small.seen()[1], "<   Setup...    >")) << small.seen()[1];
}

TEST_F(ScreenTest, GreyButtonsAreBracketedWhereNothingIsDim) {
    home_.put(".odbc.ini", "");
    ScriptedTerminal plain(80, 24, {Charset::utf8, false, true});
    plain.look();
    run(plain);
    EXPECT_TRUE(has(plain.seen()[0], "(   Setup...    )")) << plain.seen()[0];
    EXPECT_TRUE(has(plain.seen()[0], "(    Delete     )"));
    EXPECT_TRUE(has(plain.seen()[0], "[    Add...     ]"));
}

TEST_F(ScreenTest, AGreyButtonTellsWhyWhenItIsClickedOrItsLetterPressed) {
    home_.put(".odbc.ini", "");
    const std::string reason = " Delete is grey: Choose a data source in the list first.";
    EXPECT_TRUE(has(after({click(60, 7)}), reason)) << user_.shown();
    EXPECT_EQ(user_.canvas().at({60, 7}).look, Look::grey);
    ScriptedTerminal other(80, 24);
    other.then(alt("e"));
    other.look();
    run(other);
    EXPECT_TRUE(has(other.seen()[0], reason)) << other.seen()[0];
}

TEST_F(ScreenTest, ArrowsAndLettersChooseRows) {
    std::string all;
    const auto note = [&] { all += user_.focusedRow().substr(0, 3) + " "; };
    user_.then({perform(note), press(Key::down), perform(note), press(Key::end), perform(note), press(Key::home),
                perform(note), type("s"), perform(note), type("t"), perform(note), press(Key::up), type("z"),
                perform(note), press(Key::pageUp), perform(note)});
    run(user_);
    EXPECT_EQ(all, "Sal Sto Zoo Sal Sto Sto Zoo Sal ");
}

TEST_F(ScreenTest, OnAListWithRowsNoWordPressesAButton) {
    std::vector<Step> steps;
    for (const char* word : {"easy", "only", "ey", "delete", "YES"})
        for (const Step& step : typed(word))
            steps.push_back(step);
    const std::string shown = after(steps);
    EXPECT_TRUE(has(shown, "No row begins with \"")) << shown;
    for (const std::string& picture : user_.pictures())
        EXPECT_FALSE(has(picture, "Remove the data source") || has(picture, "Call tracing")) << picture;
    EXPECT_EQ(home_.text(".odbc.ini"), kSources);
}

TEST_F(ScreenTest, OnAnEmptyListALetterIsAnAccessKey) {
    home_.put(".odbc.ini", "");
    EXPECT_TRUE(has(after({type("o")}), "Call tracing"));
}

TEST_F(ScreenTest, SearchIsBlindForCaseInEveryAlphabet) {
    home_.put(".odbc.ini", "[ODBC Data Sources]\nAlt=Sample\nÄrzte=Sample\nΩmega=Sample\n");
    std::string all;
    const auto note = [&] { all += user_.focusedRow() + "\n"; };
    user_.then({type("ä"), perform(note), type("R"), perform(note), press(Key::home), type("ω"), perform(note)});
    run(user_);
    EXPECT_EQ(all, "Ärzte (Sample)\nÄrzte (Sample)\nΩmega (Sample)\n");
}

TEST_F(ScreenTest, ASlashSearchesInsideTheRowsUntilItIsEnded) {
    std::vector<Step> steps{type("/")};
    for (const Step& step : typed("oo ("))
        steps.push_back(step);
    user_.then(steps);
    user_.look();
    user_.then({press(Key::backspace), type("x")});
    user_.look();
    user_.then({press(Key::enter)});
    user_.look();
    user_.then({type("/"), press(Key::escape)});
    user_.look();
    run(user_);
    ASSERT_EQ(user_.seen().size(), 4U);
    EXPECT_TRUE(has(user_.seen()[0], "Search: oo (_")) << user_.seen()[0];
    EXPECT_TRUE(has(user_.seen()[1], "Search: oo x   no row holds this")) << user_.seen()[1];
    for (const int ended : {2, 3}) {
        EXPECT_FALSE(has(user_.seen()[static_cast<std::size_t>(ended)], "Search:"));
        EXPECT_TRUE(has(user_.seen()[static_cast<std::size_t>(ended)], "Data sources (driver):"));
    }
}

TEST_F(ScreenTest, PastedTextIsNeverACommand) {
    Step pasted = press(Key::paste);
    pasted.input.text = "easy\ny\n";
    const std::string shown = after({pasted, alt("e"), pasted});
    EXPECT_TRUE(has(shown, "Remove the data source")) << shown;
    EXPECT_EQ(home_.text(".odbc.ini"), kSources);
}

TEST_F(ScreenTest, PastedTextGoesIntoAFieldAsOneLine) {
    Step pasted = press(Key::paste);
    pasted.input.text = "/tmp/a\tb\x01\r\nc\r\n";
    after({alt("o"), type(" "), press(Key::tab), press(Key::down), pasted, press(Key::enter)});
    const std::string text = home_.text(".odbc.ini");
    EXPECT_TRUE(has(text, "TraceFile=/tmp/a b  c\n")) << text;
}

TEST_F(ScreenTest, AQuestionBeginsAtItsNo) {
    const std::string shown = after({alt("e"), press(Key::enter)});
    EXPECT_FALSE(has(shown, "Remove the data source")) << shown;
    EXPECT_EQ(home_.text(".odbc.ini"), kSources);
}

TEST_F(ScreenTest, AltMakesAnyLetterAnAccessKey) {
    EXPECT_TRUE(has(after({alt("r")}), "Installed drivers:"));
}

TEST_F(ScreenTest, SpaceTurnsBoxesAndTypingReplacesTheFieldsText) {
    std::vector<Step> steps{alt("o"), type(" "), press(Key::tab), press(Key::down)};
    for (const Step& step : typed("/tmp/löge"))
        steps.push_back(step);
    // Back over two bytes at once, and a letter before the last one.
    for (const Step& step : {press(Key::left), press(Key::left), press(Key::backspace), type("o"), press(Key::enter)})
        steps.push_back(step);
    after(steps);
    const std::string text = home_.text(".odbc.ini");
    EXPECT_TRUE(has(text, "[ODBC]\nTrace=1\nTraceAutoStop=0\nTraceFile=/tmp/loge\n")) << text;
}

TEST_F(ScreenTest, TheCaretStandsBehindWhatWasTyped) {
    std::vector<Step> steps{alt("o"), alt("f"), press(Key::end), type("ä")};
    after(steps);
    const int line = 10;
    ASSERT_TRUE(user_.pictures().size() > 3);
    ScriptedTerminal again(80, 24);
    again.then(steps);
    std::optional<Point> cursor;
    again.then(perform([&] { cursor = again.cursor(); }));
    run(again);
    ASSERT_TRUE(cursor.has_value());
    EXPECT_EQ(*cursor, (Point{5 + 19 + 8, line}));
}

TEST_F(ScreenTest, ADoubleClickShowsTheLoadersOwnSentenceToo) {
    const std::string box = after({click(10, 7), doubleClick(10, 7)});
    EXPECT_TRUE(has(box, "The driver's setup library could not be loaded")) << box;
    EXPECT_TRUE(has(box, "The loader says:")) << box;
    EXPECT_TRUE(has(box, "/none/s.so: cannot open shared object file")) << box;
}

TEST_F(ScreenTest, TheLoadersSentenceIsNotShownAgainInAnotherBox) {
    const std::string box = after({press(Key::enter), press(Key::enter), press(Key::f1)});
    EXPECT_TRUE(has(box, "┌─ Help")) << box;
    EXPECT_FALSE(has(box, "loader")) << box;
}

TEST_F(ScreenTest, ABoxThatWarnsBeginsAtNoAndEscapeMeansNo) {
    const std::string box = after({alt("r"), press(Key::tab), press(Key::tab), type(" "), alt("e")});
    EXPECT_TRUE(has(box, "[  Yes   ]  <   No   >")) << box;
    ScriptedTerminal other(80, 24);
    other.then({alt("r"), alt("e"), alt("e"), press(Key::escape), press(Key::escape)});
    other.look();
    run(other);
    EXPECT_TRUE(has(other.seen()[0], "Sample"));
    EXPECT_EQ(home_.text(".odbcinst.ini"), kDrivers);
}

TEST_F(ScreenTest, AYesRemoves) {
    after({alt("r"), alt("e"), alt("e"), type("y")});
    EXPECT_FALSE(has(home_.text(".odbcinst.ini"), "[Sample]"));
}

TEST_F(ScreenTest, TheWheelMovesTheRowsAndNotTheChoice) {
    std::string sources = "[ODBC Data Sources]\n";
    for (int i = 10; i < 40; ++i)
        sources += "S" + std::to_string(i) + "=Sample\n";
    home_.put(".odbc.ini", sources);
    const std::string below = after({wheel(Key::wheelDown, 10, 8)});
    EXPECT_FALSE(has(below, "S12 ")) << below;
    EXPECT_TRUE(has(below, "S13 "));
    EXPECT_TRUE(has(below, "▲") && has(below, "▼"));
    ScriptedTerminal other(80, 24);
    other.then({wheel(Key::wheelDown, 10, 8), wheel(Key::wheelUp, 10, 8), wheel(Key::wheelUp, 10, 8)});
    other.look();
    run(other);
    EXPECT_TRUE(has(other.seen()[0], "S10 "));
}

TEST_F(ScreenTest, TheHelpPageNamesEveryControlAndWhyItIsGrey) {
    home_.put(".odbc.ini", "");
    const std::string help = after({press(Key::f1)});
    for (const char* part : {"Data sources in ~/.odbc.ini", "Setup... is grey: Choose a data source", "Add...: Makes",
                             "Drivers...: Shows", "Close: Ends the program."})
        EXPECT_TRUE(has(help, part)) << part << "\n" << help;
}

TEST_F(ScreenTest, TellsThatADriverIsAtWork) {
    after({press(Key::tab), press(Key::enter)});
    bool told = false;
    for (const std::string& picture : user_.pictures())
        told = told || has(picture, "Working on Setup. Please wait.");
    EXPECT_TRUE(told);
}

TEST_F(ScreenTest, ANewSizePaintsEverythingAnewAtAnyDepth) {
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

// As many data sources as the library lists.
std::string manySources(int count) {
    std::string text = "[ODBC Data Sources]\n";
    for (int i = 0; i < count; ++i)
        text += "S" + std::to_string(100 + i) + "=Sample\n";
    return text;
}

TEST_F(ScreenTest, ALargeTerminalShowsMoreRows) {
    home_.put(".odbc.ini", manySources(60));
    ScriptedTerminal large(200, 60);
    large.look();
    run(large);
    EXPECT_TRUE(has(large.seen()[0], "│S100 (Sample)")) << large.seen()[0];
    EXPECT_TRUE(has(large.seen()[0], "│S146 (Sample)"));
    EXPECT_TRUE(has(large.seen()[0], " 1 of 60 ─┘"));
}

TEST_F(ScreenTest, ANewSizeKeepsFocusAndSelectionInView) {
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

TEST_F(ScreenTest, OnAVerySmallTerminalEveryControlIsSeenWholeWhenTheUserIsThere) {
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

TEST_F(ScreenTest, AListWiderThanTheTerminalStaysWhereItWasMovedSideways) {
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

TEST_F(ScreenTest, OnAVerySmallTerminalABoxTakesTheHelpsLineToo) {
    ScriptedTerminal tiny(20, 5);
    tiny.then(press(Key::f1));
    tiny.look();
    run(tiny);
    EXPECT_TRUE(has(tiny.seen()[0], "│ ~/.odbc.ini")) << tiny.seen()[0];
    EXPECT_TRUE(has(tiny.seen()[0], "<   OK   >"));
}

TEST_F(ScreenTest, OnAVerySmallTerminalAFieldIsSeenRatherThanAllOfItsLabel) {
    ScriptedTerminal tiny(20, 5);
    tiny.then({alt("o"), alt("f"), press(Key::home)});
    tiny.look();
    tiny.then({perform([&] { tiny.resize(80, 24); }), press(Key::repaint)});
    tiny.look();
    run(tiny);
    EXPECT_TRUE(has(tiny.seen()[0], "│e:    sql.log     ▼")) << tiny.seen()[0];
    EXPECT_TRUE(has(tiny.seen()[1], "Trace file:    sql.log ")) << tiny.seen()[1];
}

TEST_F(ScreenTest, AClickOnTheLineOfKeysPressesTheKey) {
    const int bottom = 23;
    user_.resize(160, 24);
    const std::string keys =
        " Tab next  Arrows choose  Enter <button>  Esc leave  F1 help  F2 new driver  F3 test  F4 view  F5 reload  F6 "
        "copy  F7 rename  F8 filter";
    const auto clickOn = [&](const std::string& part) { return click(static_cast<int>(keys.find(part)), bottom); };
    user_.then({clickOn("Tab")});
    user_.look();
    user_.then({clickOn("choose"), click(159, bottom)});
    user_.look();
    user_.then({clickOn("F2")});
    user_.look();
    user_.then({press(Key::escape), clickOn("F1")});
    user_.look();
    run(user_);
    ASSERT_EQ(user_.seen().size(), 4U);
    EXPECT_TRUE(has(user_.seen()[0], keys)) << user_.seen()[0];
    EXPECT_TRUE(has(user_.seen()[0], "Changes the settings of the chosen data source."));
    EXPECT_EQ(user_.seen()[1], user_.seen()[0]);
    EXPECT_TRUE(has(user_.seen()[2], "Register a Driver")) << user_.seen()[2];
    EXPECT_TRUE(has(user_.seen()[3], "┌─ Help")) << user_.seen()[3];
}

TEST_F(ScreenTest, ADoubleClickOnAKeyPressesItOnce) {
    const int escape = 46;
    user_.then({press(Key::f1), press(Key::enter), alt("r"), click(escape, 23), doubleClick(escape, 23)});
    user_.look();
    run(user_);
    ASSERT_EQ(user_.seen().size(), 1U);
    EXPECT_TRUE(has(user_.seen()[0], "Data sources (driver):")) << user_.seen()[0];
}

// Where the text stands on the screen.
Point placeOf(const ScriptedTerminal& terminal, const std::string& text) {
    for (int line = 0; line < terminal.lines(); ++line) {
        std::string cells;
        for (int column = terminal.columns() - 1; column >= 0; --column) {
            cells = terminal.canvas().at({column, line}).text + cells;
            if (cells.starts_with(text))
                return {column, line};
        }
    }
    return {-1, -1};
}

TEST_F(ScreenTest, ADoubleClickOnABoxIsNotMeantForWhatLiesBelow) {
    home_.put(".odbc.ini", manySources(60));
    user_.then({alt("s"), perform([&] {
                    const Point button = placeOf(user_, "<   OK   >");
                    user_.thenFirst({click(button.column, button.line), doubleClick(button.column, button.line)});
                })});
    user_.look();
    run(user_);
    EXPECT_TRUE(has(user_.seen()[0], "Data sources (driver):")) << user_.seen()[0];
    EXPECT_FALSE(has(user_.seen()[0], "<   OK   >")) << user_.seen()[0];
    EXPECT_TRUE(has(user_.seen()[0], " 1 of 60 ")) << "another row was chosen";
}

TEST_F(ScreenTest, AKeyThatMeansNothingHereDoesNothing) {
    const std::string before = after({});
    ScriptedTerminal other(80, 24);
    for (const Key key : {Key::f9, Key::f10, Key::f11, Key::f12, Key::undo, Key::wordLeft})
        other.then(press(key));
    other.look();
    run(other);
    EXPECT_EQ(other.seen()[0], before);
}

TEST_F(ScreenTest, TheBarOfAListMovesItsRowsByOneOrByAPage) {
    home_.put(".odbc.ini", manySources(60));
    const int bar = 52;
    const int top = 6;
    const int bottom = 16;
    const auto firstRowAfter = [&](const std::vector<Step>& steps) {
        ScriptedTerminal user(80, 24);
        user.then(steps);
        user.look();
        run(user);
        return user.canvas().line(top).substr(user.canvas().line(top).find('S'), 4);
    };
    EXPECT_EQ(firstRowAfter({click(bar, bottom)}), "S101");
    EXPECT_EQ(firstRowAfter({click(bar, bottom), doubleClick(bar, bottom)}), "S102");
    EXPECT_EQ(firstRowAfter({click(bar, bottom - 1)}), "S110");
    EXPECT_EQ(firstRowAfter({click(bar, bottom - 1), click(bar, bottom - 1), click(bar, top)}), "S119");
    EXPECT_EQ(firstRowAfter({click(bar, bottom - 1), click(bar, bottom - 1), click(bar, top + 1)}), "S110");
    EXPECT_EQ(firstRowAfter({click(bar, top)}), "S100");
}

TEST_F(ScreenTest, TheListSaysWhereTheUserIsInIt) {
    home_.put(".odbc.ini", manySources(60));
    EXPECT_TRUE(has(after({press(Key::down)}), " 2 of 60 ─┘"));
    ScriptedTerminal last(80, 24);
    last.then(press(Key::end));
    last.look();
    run(last);
    EXPECT_TRUE(has(last.seen()[0], " 60 of 60 ─┘")) << last.seen()[0];
    EXPECT_TRUE(has(last.seen()[0], "S158 (Sample)                               █")) << last.seen()[0];
    home_.put(".odbc.ini", "");
    ScriptedTerminal empty(80, 24);
    empty.look();
    run(empty);
    EXPECT_FALSE(has(empty.seen()[0], " of ")) << empty.seen()[0];
}

TEST_F(ScreenTest, WithoutAUserEveryDialogCloses) {
    ScriptedTerminal none(80, 24);
    run(none);
    ScriptedTerminal inBox(80, 24);
    inBox.then({alt("r"), alt("e")});
    run(inBox);
    EXPECT_EQ(JXW_NextDialog(0), 0U);
    EXPECT_EQ(home_.text(".odbcinst.ini"), kDrivers);
}

TEST_F(ScreenTest, ASmallListIsReachedByArrowsFromButtons) {
    const std::string picture = after({press(Key::tab), press(Key::up)});
    EXPECT_TRUE(has(picture, "Your data sources.")) << picture;
}

}  // namespace
}  // namespace jx::test
