// While a driver's library works, and what is selected afterwards.
#include <gtest/gtest.h>
#include <odbcinst.h>

#include <algorithm>
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

// The library reads its names into 1,024 bytes: names of 6 bytes and one of x fill them up to the last one's part.
std::string listThatEndsWithin(const std::string& last, std::size_t bytesOfIt) {
    std::string list = "[ODBC Data Sources]\nProd=Mine\n";
    std::size_t room = 1024 - 5 - bytesOfIt;
    for (int number = 10000; room > 12; ++number, room -= 7)
        list += "N" + std::to_string(number) + "=Mine\n";
    return list + std::string(room - 1, 'x') + "=Mine\n" + last + "=Mine\nMore=Mine\n";
}

TEST_F(Work, AListThatIsCutInsideANameShowsNoRowOfAnotherOne) {
    for (std::size_t bytes = 2; bytes < 10; ++bytes) {
        SCOPED_TRACE(bytes);
        const std::string list = listThatEndsWithin("Production", bytes);
        const auto names = std::count(list.begin(), list.end(), '=');
        home_.put(".odbc.ini", list);
        ScriptedTerminal user(80, 24);
        std::string row;
        user.then({press(Key::end), perform([&] { row = user.focusedRow(); })});
        user.look();
        const terminal::Screen screen(user);
        SQLManageDataSources(0);
        EXPECT_TRUE(row.starts_with("x")) << row;
        EXPECT_NE(user.seen().at(0).find(std::to_string(names - 2) + " of " + std::to_string(names) +
                                         " shown; F9 shows all."),
                  std::string::npos)
            << user.seen().at(0);
    }
}

TEST_F(Work, AListWithoutRoomForOneWholeNameMoreIsNotCutFurther) {
    home_.put(".odbc.ini", listThatEndsWithin("Production", 11));
    EXPECT_EQ(rowAfter({press(Key::end)}), "Production (Mine)");
}

TEST_F(Work, BelowACutNameStandsTheDefaultDataSource) {
    home_.put(".odbc.ini", listThatEndsWithin("Production", 4) + "[Default]\nDriver=/none\n");
    home_.put(".odbcinst.ini", "[ODBC Drivers]\nMine=Installed\n[Default]\nDriver=Mine\n");
    EXPECT_EQ(rowAfter({press(Key::end)}), "Default (Mine)");
    std::size_t productions = 0;
    for (const std::string& picture : user_.pictures())
        productions += picture.find("Prod (Mine)") != picture.rfind("Prod (Mine)") ? 1 : 0;
    EXPECT_EQ(productions, 0U);
}

}  // namespace
}  // namespace jx::test
