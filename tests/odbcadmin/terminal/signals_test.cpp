// Every way out gives the terminal back: modes before and after, the last bytes, and how the program ended.
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fstream>

#include "pty.h"
#include "test_home.h"

namespace jx::test {
namespace {

// xterm's ends: of the second picture, of the mouse, and the cursor is seen.
constexpr const char* kPictureBack = "\033[?1049l";
constexpr const char* kMouseBack = "\033[?1000l";
constexpr const char* kCursorBack = "\033[?25h";

std::vector<std::string> environment(const TestHome& home, std::vector<std::string> more = {}) {
    more.push_back("HOME=" + home.path());
    more.push_back("TERM=xterm-256color");
    more.push_back("LC_ALL=C.UTF-8");
    return more;
}

// Adds a line to the table of ways out when the variable names a file for it.
void note(const std::string& way, const std::string& before, const std::string& during, const std::string& after,
          const std::string& end) {
    if (const char* path = std::getenv("JX_SIGNAL_TABLE"))
        std::ofstream(path, std::ios::app)
            << way << " | " << before << " | " << during << " | " << after << " | " << end << "\n";
}

void expectGivenBack(Pty& pty, const std::string& modesBefore) {
    EXPECT_EQ(pty.modes(), modesBefore);
    const std::string last = pty.take();
    for (const char* part : {kPictureBack, kMouseBack, kCursorBack})
        EXPECT_NE(last.find(part), std::string::npos) << part + 1;
}

TEST(Signals, EndTheProgramAsTheyWouldAndGiveTheTerminalBack) {
    const TestHome home;
    const struct {
        int number;
        const char* name;
    } rows[] = {{SIGINT, "SIGINT"},   {SIGTERM, "SIGTERM"},     {SIGHUP, "SIGHUP"},     {SIGQUIT, "SIGQUIT"},
                {SIGABRT, "SIGABRT"}, {SIGSEGV, "SIGSEGV"},     {SIGBUS, "SIGBUS"},     {SIGFPE, "SIGFPE"},
                {SIGILL, "SIGILL"},   {SIGPIPE, "SIGPIPE"},     {SIGUSR1, "SIGUSR1"},   {SIGUSR2, "SIGUSR2"},
                {SIGALRM, "SIGALRM"}, {SIGVTALRM, "SIGVTALRM"}, {SIGPROF, "SIGPROF"},   {SIGXCPU, "SIGXCPU"},
                {SIGXFSZ, "SIGXFSZ"}, {SIGSYS, "SIGSYS"},       {SIGTRAP, "SIGTRAP"},   {SIGIO, "SIGIO"},
                {SIGPWR, "SIGPWR"},   {SIGSTKFLT, "SIGSTKFLT"}, {SIGRTMIN, "SIGRTMIN"}, {SIGRTMAX, "SIGRTMAX"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Pty pty(JX_ODBCADMIN, environment(home));
        const std::string& before = pty.modesBefore();
        ASSERT_TRUE(pty.waitFor("new driver"));
        const std::string during = pty.modes();
        EXPECT_NE(during, before);
        pty.take();
        pty.signal(row.number);
        const std::string end = pty.waitForEnd();
        EXPECT_EQ(end, "signal " + std::to_string(row.number));
        note(row.name, before, during, pty.modes(), end);
        expectGivenBack(pty, before);
    }
}

TEST(Signals, AStopGivesTheTerminalBackAndGoingOnPaintsAnew) {
    const TestHome home;
    for (const int number : {SIGTSTP, SIGSTOP}) {
        SCOPED_TRACE(number);
        Pty pty(JX_ODBCADMIN, environment(home));
        const std::string& before = pty.modesBefore();
        ASSERT_TRUE(pty.waitFor("new driver"));
        const std::string during = pty.modes();
        pty.take();
        pty.signal(number);
        EXPECT_EQ(pty.waitForEnd(), "stopped " + std::to_string(number));
        if (number == SIGTSTP) {
            note("SIGTSTP", before, during, pty.modes(), "stopped");
            expectGivenBack(pty, before);
        }
        pty.take();
        pty.signal(SIGCONT);
        EXPECT_TRUE(pty.waitFor("new driver"));
        EXPECT_EQ(pty.modes(), during);
        note(number == SIGTSTP ? "SIGCONT" : "SIGSTOP, SIGCONT", before, during, pty.modes(), "running");
        // Still obeys: a stop works a second time.
        pty.signal(SIGTSTP);
        EXPECT_EQ(pty.waitForEnd(), "stopped " + std::to_string(SIGTSTP));
    }
}

TEST(Signals, TheKeysForInterruptAndStopWork) {
    const TestHome home;
    Pty pty(JX_ODBCADMIN, environment(home));
    const std::string& before = pty.modesBefore();
    ASSERT_TRUE(pty.waitFor("new driver"));
    pty.take();
    pty.send("\003");
    EXPECT_EQ(pty.waitForEnd(), "signal " + std::to_string(SIGINT));
    expectGivenBack(pty, before);
}

TEST(Signals, AnOrdinaryEndGivesTheTerminalBack) {
    const TestHome home;
    Pty pty(JX_ODBCADMIN, environment(home));
    const std::string& before = pty.modesBefore();
    ASSERT_TRUE(pty.waitFor("new driver"));
    const std::string during = pty.modes();
    pty.take();
    pty.send("\033");
    const std::string end = pty.waitForEnd();
    EXPECT_EQ(end, "exited 0");
    note("Escape", before, during, pty.modes(), end);
    expectGivenBack(pty, before);
}

// Opens the list of drivers for a new data source; gives the terminal's modes before.
std::string openDrivers(Pty& pty) {
    EXPECT_TRUE(pty.waitFor("new driver"));
    const std::string modes = pty.modes();
    pty.send("a");
    EXPECT_TRUE(pty.waitFor("new data source:"));
    pty.take();
    return modes;
}

// What a driver does inside the program: its last words come behind the picture.
TEST(Signals, WhatADriverDoesLeavesTheTerminalAsItWas) {
    const struct {
        const char* deed;
        const char* end;
        const char* told;
    } rows[] = {{"exit", "exited 7", " ended this program."},
                {"crash", "signal 11", " crashed, which ends this program."},
                {"overflow", "signal 11", " crashed, which ends this program."},
                {"abort", "signal 6", " crashed, which ends this program."}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.deed);
        const TestHome home{
            {".odbcinst.ini", "[ODBC Drivers]\nMine=Installed\n[Mine]\nDriver=/d.so\nSetup=" JX_DRIVER "\n"}};
        Pty pty(JX_ODBCADMIN, environment(home, {std::string("JX_SCREEN_DEED=") + row.deed}));
        const std::string& before = pty.modesBefore();
        const std::string during = openDrivers(pty);
        pty.send("\033[B\r");
        const std::string end = pty.waitForEnd();
        EXPECT_EQ(end, row.end);
        note(std::string("driver: ") + row.deed, before, during, pty.modes(), end);
        EXPECT_EQ(pty.modes(), before);
        const std::string last = pty.take();
        const std::string told = "odbcadmin: The setup library " JX_DRIVER " of driver Mine" + std::string(row.told);
        ASSERT_NE(last.find(told), std::string::npos) << last;
        EXPECT_GT(last.find(told), last.find(kPictureBack));
    }
}

TEST(Signals, ALibraryThatSetsTheTerminalOtherwiseOrPaintsOnItIsUndone) {
    const TestHome home{
        {".odbcinst.ini", "[ODBC Drivers]\nMine=Installed\n[Mine]\nDriver=/d.so\nSetup=" JX_DRIVER "\n"}};
    Pty pty(JX_ODBCADMIN, environment(home, {"JX_SCREEN_DEED=terminal"}));
    ASSERT_TRUE(pty.waitFor("new driver"));
    const std::string during = pty.modes();
    pty.take();
    pty.send("a");
    // The picture from its begin to its end.
    ASSERT_TRUE(pty.waitFor("new data source:"));
    ASSERT_TRUE(pty.waitFor("new driver"));
    pty.take();
    pty.send("\033[B\r");
    ASSERT_TRUE(pty.waitFor("paint over it"));
    // The whole picture, not only what changed in it.
    ASSERT_TRUE(pty.waitFor("new driver"));
    EXPECT_EQ(pty.modes(), during);
}

TEST(Signals, PastedTextOnAListPressesNothing) {
    const TestHome home{{".odbc.ini", "[ODBC Data Sources]\nSales=Mine\n"}};
    Pty pty(JX_ODBCADMIN, environment(home));
    ASSERT_TRUE(pty.waitFor("\033[?2004h"));
    ASSERT_TRUE(pty.waitFor("new driver"));
    pty.take();
    pty.send("\033[200~o\r\033[201~");
    EXPECT_TRUE(pty.waitFor("Pasted text goes into fields only."));
    pty.send("\033");
    EXPECT_EQ(pty.waitForEnd(), "exited 0");
    EXPECT_NE(pty.take().find("\033[?2004l"), std::string::npos);
}

TEST(Signals, WhatADriverPrintsComesAfterThePicture) {
    const TestHome home{
        {".odbcinst.ini", "[ODBC Drivers]\nMine=Installed\n[Mine]\nDriver=/d.so\nSetup=" JX_DRIVER "\n"}};
    Pty pty(JX_ODBCADMIN, environment(home, {"JX_SCREEN_DEED=print"}));
    ASSERT_TRUE(pty.waitFor("new driver"));
    pty.send("a");
    ASSERT_TRUE(pty.waitFor("new data source:"));
    pty.send("\033[B\r");
    ASSERT_TRUE(pty.waitFor("(Mine)"));
    const std::string during = pty.take();
    EXPECT_EQ(during.find("own words"), std::string::npos);
    pty.send("\033");
    EXPECT_EQ(pty.waitForEnd(), "exited 0");
    const std::string last = pty.take();
    EXPECT_GT(last.find("the driver's own words"), last.find(kPictureBack));
    EXPECT_NE(last.find("the driver's own words"), std::string::npos);
}

// Through the library and the screen to the program, which tells it on a terminal that is its own again.
TEST(Signals, AnExceptionOfADriverGivesTheTerminalBack) {
    const struct {
        std::vector<std::string> more;
        const char* told;
    } rows[] = {{{}, "odbcadmin: the driver's own words"}, {{"JX_SCREEN_DEED=odd"}, "an exception that says nothing"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.told);
        const TestHome home{
            {".odbcinst.ini", "[ODBC Drivers]\nMine=Installed\n[Mine]\nDriver=/d.so\nSetup=" JX_THROWER "\n"}};
        Pty pty(JX_ODBCADMIN, environment(home, row.more));
        const std::string& before = pty.modesBefore();
        const std::string during = openDrivers(pty);
        pty.send("\r");
        const std::string end = pty.waitForEnd();
        EXPECT_EQ(end, "exited 1");
        note("driver: throw", before, during, pty.modes(), end);
        EXPECT_EQ(pty.modes(), before);
        const std::string last = pty.take();
        ASSERT_NE(last.find(row.told), std::string::npos) << last;
        EXPECT_GT(last.find(row.told), last.find(kPictureBack));
    }
}

TEST(Signals, AConnectionThatBreaksEndsTheProgram) {
    const TestHome home;
    Pty pty(JX_ODBCADMIN, environment(home));
    ASSERT_TRUE(pty.waitFor("new driver"));
    pty.hangUp();
    const std::string end = pty.waitForEnd();
    EXPECT_TRUE(end == "signal 1" || end == "exited 0") << end;
}

TEST(Signals, ANewSizeIsPaintedAtOnce) {
    const TestHome home;
    Pty pty(JX_ODBCADMIN, environment(home));
    ASSERT_TRUE(pty.waitFor("new driver"));
    pty.take();
    pty.resize(60, 20);
    EXPECT_TRUE(pty.waitFor("help"));
}

TEST(Mouse, SeveralEventsInOneReadAreTakenInTheirOrder) {
    const TestHome home{{".odbc.ini", "[ODBC Data Sources]\nSales=Mine\nStock=Mine\nZoo=Mine\n"}};
    Pty pty(JX_ODBCADMIN, environment(home));
    ASSERT_TRUE(pty.waitFor("new driver"));
    pty.take();
    // Presses and releases of the left button: on the last row, then on the button Options.
    pty.send("\033[<0;12;9M\033[<0;12;9m\033[<0;60;14M\033[<0;60;14m");
    EXPECT_TRUE(pty.waitFor("Call tracing"));
    pty.send("\033");
    pty.send("\033");
    EXPECT_EQ(pty.waitForEnd(), "exited 0");
}

TEST(Mouse, AClickOnTheLineOfKeysPressesTheKey) {
    const TestHome home;
    Pty pty(JX_ODBCADMIN, environment(home));
    ASSERT_TRUE(pty.waitFor("new driver"));
    pty.take();
    pty.send("\033[<0;10;24M\033[<0;10;24m");
    EXPECT_TRUE(pty.waitFor("Register a Driver"));
}

TEST(Mouse, TwoPressesAtOnePlaceAreADoubleClick) {
    const TestHome home{{".odbc.ini", "[ODBC Data Sources]\nSales=Mine\n"},
                        {".odbcinst.ini", "[ODBC Drivers]\nMine=Installed\n[Mine]\nSetup=/none.so\n"}};
    Pty pty(JX_ODBCADMIN, environment(home));
    ASSERT_TRUE(pty.waitFor("new driver"));
    pty.take();
    pty.send("\033[<0;12;7M\033[<0;12;7m\033[<0;12;7M\033[<0;12;7m");
    EXPECT_TRUE(pty.waitFor("The loader says:"));
}

}  // namespace
}  // namespace jx::test
