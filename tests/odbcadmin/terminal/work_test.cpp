// While a driver's library works, and what is selected afterwards.
#include <gtest/gtest.h>
#include <odbcinst.h>

#include <clocale>

#include "odbcadmin/terminal/screen.h"
#include "scripted_terminal.h"
#include "test_home.h"

namespace jx::test {
namespace {

constexpr const char* kThree =
    "[ODBC Data "
    "Sources]\nAda=Mine\nBob=Mine\nCoy=Mine\n[Ada]\nDriver=/none\n[Bob]\nDriver=/none\n[Coy]\nDriver=/none\n";

class Work : public testing::Test {
protected:
    Work() { std::setlocale(LC_CTYPE, "C.UTF-8"); }

    void run() {
        const terminal::Screen screen(user_);
        SQLManageDataSources(0);
    }

    // The row that has the focus after these steps; the dialog is closed then.
    std::string rowAfter(const std::vector<Step>& steps) {
        std::string row;
        user_.then(steps);
        user_.then(perform([&] { row = user_.focusedRow(); }));
        run();
        return row;
    }

    TestHome home_{
        {".odbc.ini", kThree},
        {".odbcinst.ini", "[ODBC Drivers]\nMine=Installed\n[Mine]\nDriver=/none\nSetup=" JX_SETUP_LIBRARY "\n"}};
    ScriptedTerminal user_{80, 24};
};

TEST_F(Work, KeysTypedMeanwhileAreDropped) {
    rowAfter({press(Key::down), alt("e"), type("y"), meanwhile(alt("e")), meanwhile(type("y"))});
    const std::string text = home_.text(".odbc.ini");
    EXPECT_EQ(text.find("Bob"), std::string::npos) << text;
    EXPECT_NE(text.find("Ada"), std::string::npos) << text;
    EXPECT_NE(text.find("Coy"), std::string::npos) << text;
}

TEST_F(Work, AfterARemovalTheRowBelowIsSelectedAndTheListHasTheFocus) {
    EXPECT_EQ(rowAfter({press(Key::down), alt("e"), type("y")}), "Coy (Mine)");
}

TEST_F(Work, AfterTheLastRowIsRemovedTheOneAboveIsSelected) {
    EXPECT_EQ(rowAfter({press(Key::end), alt("e"), type("y")}), "Bob (Mine)");
}

TEST_F(Work, AnAddedDataSourceIsSelected) {
    std::vector<Step> steps{press(Key::end), alt("a"), press(Key::enter)};
    for (const Step& step : typed("Bea"))
        steps.push_back(step);
    steps.push_back(press(Key::enter));
    EXPECT_EQ(rowAfter(steps), "Bea (Mine)");
}

TEST_F(Work, ACancelledSetupKeepsTheSelection) {
    EXPECT_EQ(rowAfter({press(Key::down), press(Key::enter), press(Key::escape)}), "Bob (Mine)");
}

TEST_F(Work, AVisitToTheDriversKeepsTheSelection) {
    EXPECT_EQ(rowAfter({press(Key::down), alt("r"), press(Key::escape)}), "Bob (Mine)");
}

}  // namespace
}  // namespace jx::test
