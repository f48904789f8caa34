// The function keys of lists on the screen, and what a list does about changes from outside.
#include <gtest/gtest.h>
#include <odbcinst.h>

#include <clocale>
#include <filesystem>

#include "odbcadmin/terminal/screen.h"
#include "scripted_terminal.h"
#include "test_home.h"

namespace jx::test {
namespace {

class ListKeysOnTheScreen : public testing::Test {
protected:
    ListKeysOnTheScreen() { std::setlocale(LC_CTYPE, "C.UTF-8"); }

    // The screens at the looks, with the dialog closed afterwards.
    std::vector<std::string> run(std::vector<Step> steps) {
        user_.then(std::move(steps));
        user_.look();
        const terminal::Screen screen(user_);
        SQLManageDataSources(0);
        return user_.seen();
    }

    std::string after(std::vector<Step> steps) { return run(std::move(steps)).back(); }

    static bool has(const std::string& picture, const std::string& text) {
        return picture.find(text) != std::string::npos;
    }

    void putMany() {
        std::string list = "[ODBC Data Sources]\n";
        for (int i = 1000; i < 3000; ++i)
            list += "Source" + std::to_string(i) + "=Sample\n";
        home_.put(".odbc.ini", list);
    }

    TestHome home_{{".odbc.ini",
                    "[ODBC Data Sources]\nSales=Sample\nStock=Sample\n[Sales]\nDriver=/none/d.so\nServer=db1\n"
                    "PWD=geheim\n[Stock]\nDriver=/none/d.so\n"},
                   {".odbcinst.ini", "[ODBC Drivers]\nSample=Installed\n[Sample]\nDriver=/none/d.so\nSetup=/s.so\n"}};
    ScriptedTerminal user_{80, 24};
};

TEST_F(ListKeysOnTheScreen, F4ShowsTheValues) {
    const std::string shown = after({press(Key::f4)});
    EXPECT_TRUE(has(shown, "┌─ Values of Sales ")) << shown;
    EXPECT_TRUE(has(shown, "│Driver = /none/d.so ")) << shown;
    EXPECT_TRUE(has(shown, "│PWD = ******** ")) << shown;
    EXPECT_TRUE(has(shown, " Tab next  Arrows choose  Enter <button>  Esc leave  F1 help\n")) << shown;
}

TEST_F(ListKeysOnTheScreen, F3TellsThatItIsAtWorkAndDropsWhatIsTypedMeanwhile) {
    const std::string shown = after({press(Key::f3), meanwhile(press(Key::enter))});
    EXPECT_TRUE(has(shown, "Cannot connect to Sales: the loader says: /none/d.so:")) << shown;
    EXPECT_TRUE(has(shown, "The doctor says: There is no directory /none")) << shown;
    bool told = false;
    for (const std::string& picture : user_.pictures())
        told = told || has(picture, "Working on the connection. Please wait.");
    EXPECT_TRUE(told);
}

TEST_F(ListKeysOnTheScreen, F6AndF7MakeANewRowAndChooseIt) {
    std::vector<Step> steps{press(Key::down), press(Key::f6)};
    const auto name = typed("Copy");
    steps.insert(steps.end(), name.begin(), name.end());
    steps.push_back(press(Key::enter));
    after(steps);
    EXPECT_EQ(user_.focusedRow(), "Copy (Sample)");
    ScriptedTerminal other(80, 24);
    other.then({press(Key::f7)});
    other.then(typed("Shop"));
    other.then({press(Key::enter)});
    other.look();
    const terminal::Screen screen(other);
    SQLManageDataSources(0);
    EXPECT_EQ(other.focusedRow(), "Shop (Sample)");
}

TEST_F(ListKeysOnTheScreen, F8FiltersAllOfThemAndTheHelpSaysSo) {
    putMany();
    user_.then({press(Key::f8)});
    user_.then(typed("299"));
    const std::string shown = after({press(Key::enter)});
    EXPECT_TRUE(has(shown, "│Source2990 (Sample) ")) << shown;
    EXPECT_TRUE(has(shown, "1 of 12 ")) << shown;
    EXPECT_TRUE(has(shown, "Filter \"299\": 12 of 2,000 shown; F8 changes it.")) << shown;
}

TEST_F(ListKeysOnTheScreen, F9ListsAllOfThem) {
    putMany();
    const std::string cut = after({press(Key::down)});
    EXPECT_TRUE(has(cut, " of 2,000 shown; F9 shows all.")) << cut;
    ScriptedTerminal user(80, 24);
    user.then({press(Key::f9), press(Key::end)});
    user.look();
    const terminal::Screen screen(user);
    SQLManageDataSources(0);
    EXPECT_EQ(user.seen().at(0), R"( odbcadmin - Data sources in ~/.odbc.ini
    ┌─ All Data Sources ───────────────────────────────────────────────────┐
    │                                                                      │
    │  Data sources (driver):                                              │
    │  ┌───────────────────────────────────────────────┐  <  Setup...   >  │
    │  │Source2988 (Sample)                            ▲                   │
    │  │Source2989 (Sample)                            │                   │
    │  │Source2990 (Sample)                            │  [    View     ]  │
    │  │Source2991 (Sample)                            │                   │
    │  │Source2992 (Sample)                            │                   │
    │  │Source2993 (Sample)                            │  [    Test     ]  │
    │  │Source2994 (Sample)                            │                   │
    │  │Source2995 (Sample)                            │                   │
    │  │Source2996 (Sample)                            │  [   Delete    ]  │
    │  │Source2997 (Sample)                            │                   │
    │  │Source2998 (Sample)                            █                   │
    │  │Source2999 (Sample)                            │  [    Close    ]  │
    │  └──────────────────────────────── 2000 of 2000 ─┘                   │
    │                                                                      │
    └──────────────────────────────────────────────────────────────────────┘

 All your data sources. Enter or a double click sets one up.

 Tab Enter Esc F1 help F3 test F4 view F5 reload F6 copy F7 rename F8 filter
)");
}

TEST_F(ListKeysOnTheScreen, TheMarkOfTheSystemsIsSeenHoweverLongTheNameIs) {
    home_.putSystem("odbc.ini",
                    "[Accounts of the whole company since 1999]\nDriver=Sample\n[Of this size it fits]\n"
                    "Driver=Samplesamxx\n[Of this size it does]\nDriver=not fit, alas\n");
    const std::string shown = after({press(Key::end)});
    EXPECT_TRUE(has(shown, "│Accounts of the whole company sin…  [system]│")) << shown;
    EXPECT_TRUE(has(shown, "│Of this size it fits (Samplesamxx)  [system]│")) << shown;
    EXPECT_TRUE(has(shown, "│Of this size it does (not fit, al…  [system]│")) << shown;
    EXPECT_TRUE(has(shown, "\n Of this size it does (not fit, alas)  [system]\n")) << shown;
}

TEST_F(ListKeysOnTheScreen, AKeyForRowsThatAnotherProgramHasChangedDoesNothingAndTheListIsReadAgain) {
    const auto change = perform([&] {
        home_.put(".odbc.ini", "[ODBC Data Sources]\nAlpha=Sample\nStock=Sample\n[Stock]\nDriver=/none/d.so\n");
    });
    const std::string shown = after({press(Key::down), change, alt("e")});
    EXPECT_EQ(user_.focusedRow(), "Stock (Sample)");
    EXPECT_TRUE(has(shown, "Another program has changed")) << shown;
    EXPECT_TRUE(has(shown, "│Alpha (Sample) ")) << shown;
    EXPECT_FALSE(has(shown, "Remove the data source")) << shown;
}

TEST_F(ListKeysOnTheScreen, ASecondWithoutAKeyIsEnoughToNotice) {
    const auto change = perform([&] { home_.put(".odbc.ini", "[ODBC Data Sources]\nAlpha=Sample\n"); });
    const std::string shown = after({change, press(Key::none)});
    EXPECT_TRUE(has(shown, "│Alpha (Sample) ")) << shown;
}

TEST_F(ListKeysOnTheScreen, TabCompletesAPathThatIsBeingTypedAndOtherwiseMovesOn) {
    std::filesystem::create_directory(home_.file("drivers"));
    home_.put("drivers/libmine.so", "");
    user_.then({press(Key::f2), alt("l")});
    user_.then(typed("~/dr"));
    user_.then({press(Key::tab)});
    user_.look();
    user_.then(typed("lib"));
    user_.then({press(Key::tab)});
    user_.look();
    const std::string moved = after({press(Key::tab)});
    EXPECT_TRUE(has(user_.seen().at(0), "~/drivers/ ")) << user_.seen().at(0);
    EXPECT_TRUE(has(user_.seen().at(1), "~/drivers/libmine.so ")) << user_.seen().at(1);
    EXPECT_TRUE(has(moved, "Asks for the settings of data sources.")) << moved;
}

}  // namespace
}  // namespace jx::test
