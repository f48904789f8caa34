// Keys that arrive in pieces, and the locale: the real program, or its terminal, on a pseudo-terminal.
#include <gtest/gtest.h>
#include <pty.h>
#include <unistd.h>

#include <cstdlib>

#include "odbcadmin/terminal/curses_terminal.h"
#include "pty.h"
#include "run_program.h"
#include "test_home.h"
#include "tmux.h"

// ncurses defines short names for everything; it comes last.
#include "odbcadmin/terminal/curses.h"

namespace jx::test {
namespace {

constexpr const char* kSources = "[ODBC Data Sources]\nSales=Mine\nStock=Mine\nZürich=Mine\n";

// The program waits for the next byte of a sequence longer than any test, and each byte is sent when it waits: the line
// is always slower than the program.
class SlowLine : public testing::TestWithParam<const char*> {
protected:
    SlowLine()
        : pty_(JX_ODBCADMIN,
               {std::string("TERM=") + GetParam(), "HOME=" + home_.path(), "LC_ALL=C.UTF-8", "ESCDELAY=60000"}) {}

    TestHome home_{{".odbc.ini", kSources}};
    Pty pty_;
};

TEST_P(SlowLine, ASequenceInPiecesIsNoEscape) {
    ASSERT_TRUE(pty_.waitFor("new driver"));
    pty_.take();
    // Down, End in two fashions, Page Up, F1: the help page opens, and nothing was left or typed before.
    for (const char* keys : {"\033[B", "\033OB", "\033[4~", "\033[F", "\033[5~", "\033OP"})
        pty_.sendSlowly(keys);
    EXPECT_TRUE(pty_.waitFor("Help"));
}

TEST_P(SlowLine, ASequenceThatNobodyKnowsIsReadToItsEnd) {
    ASSERT_TRUE(pty_.waitFor("new driver"));
    pty_.take();
    pty_.sendSlowly("\033[24;5~");
    pty_.sendSlowly("\033[?1;2c");
    pty_.sendSlowly("\033OP");
    EXPECT_TRUE(pty_.waitFor("Help"));
    EXPECT_EQ(pty_.take().find("No row begins"), std::string::npos) << "its end was typed";
}

TEST_P(SlowLine, AClickInPiecesIsAClick) {
    ASSERT_TRUE(pty_.waitFor("new driver"));
    pty_.take();
    pty_.sendSlowly(std::string(GetParam()) == "xterm-256color" ? "\033[<0;60;14M" : "\033[M \\.");
    EXPECT_TRUE(pty_.waitFor("Call tracing"));
}

TEST_P(SlowLine, PastedTextInPiecesIsOneText) {
    ASSERT_TRUE(pty_.waitFor("new driver"));
    pty_.take();
    pty_.sendSlowly("\033[200~o\r\033[201~");
    EXPECT_TRUE(pty_.waitFor("Pasted text goes into fields only."));
}

TEST_P(SlowLine, ACharacterInPiecesIsTyped) {
    ASSERT_TRUE(pty_.waitFor("new driver"));
    pty_.take();
    // Stray bytes and begins of characters among them are dropped.
    pty_.sendSlowly("/\xbc\xe8\xa1\xc3\xbc");
    EXPECT_TRUE(pty_.waitFor("ü_")) << pty_.take();
    pty_.take();
    pty_.sendSlowly("\xc3r");
    EXPECT_TRUE(pty_.waitFor("r_")) << pty_.take();
}

INSTANTIATE_TEST_SUITE_P(Terminals, SlowLine, testing::Values("xterm-256color", "screen"),
                         [](const auto& each) { return std::string(each.param).substr(0, 5); });

TEST(Escape, MayBeTornApartFor300MillisecondsUnlessTheUserSaysOtherwise) {
    const struct {
        const char* asked;
        int expected;
    } rows[] = {{nullptr, 300}, {"25", 25}, {"1000", 1000}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.asked == nullptr ? "(not set)" : row.asked);
        int master = -1;
        int slave = -1;
        ASSERT_EQ(::openpty(&master, &slave, nullptr, nullptr, nullptr), 0);
        if (row.asked != nullptr)
            ::setenv("ESCDELAY", row.asked, 1);
        else
            ::unsetenv("ESCDELAY");
        {
            const terminal::CursesTerminal terminal(slave, slave, "xterm");
            ASSERT_TRUE(terminal.isOpen());
            EXPECT_EQ(get_escdelay(), row.expected);
        }
        ::unsetenv("ESCDELAY");
        ::close(slave);
        ::close(master);
    }
}

TEST(Locale, OneThatIsNotInstalledIsTakenForUtf8UnlessItsNameSaysOtherwise) {
    const struct {
        const char* locale;
        const char* corner;
    } rows[] = {{"LC_ALL=xx_YY.UTF-8", "┌─ Data"},
                {"LC_ALL=xx_YY.utf8@euro", "┌─ Data"},
                {"LC_ALL=xx_YY", "┌─ Data"},
                {"LC_ALL= LC_CTYPE=xx_YY.UTF-8", "┌─ Data"},
                {"LC_ALL= LC_CTYPE= LANG=xx", "┌─ Data"},
                {"LC_ALL=xx_YY.ISO-8859-1", "+- Data"},
                {"LC_ALL=C", "+- Data"},
                {"LC_ALL=C.UTF-8", "┌─ Data"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.locale);
        const TestHome home{{".odbc.ini", kSources}};
        const Tmux tmux(home, 80, 24, std::string("TERM=screen ") + row.locale, shellQuoted(JX_ODBCADMIN));
        const std::string shown = tmux.waitForPart("F2 new driver");
        EXPECT_NE(shown.find(row.corner), std::string::npos) << shown;
    }
}

}  // namespace
}  // namespace jx::test
