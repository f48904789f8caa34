// Lines without a command open the dialogs; which lines do, and on which files.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "pty.h"
#include "run_program.h"
#include "test_home.h"
#include "tmux.h"

namespace jx::test {
namespace {

constexpr const char* kHere = "[ODBC Data Sources]\nHere=Mine\n";
constexpr const char* kThere = "[ODBC Data Sources]\nThere=Mine\n";

TEST(WaysIn, HomeAloneOpensTheDialogsOnThatHome) {
    for (const char* line : {"--home ", "--no-color --home="}) {
        SCOPED_TRACE(line);
        const TestHome home{{".odbc.ini", kHere}, {"named.ini", kHere}};
        ASSERT_EQ(::mkdir(home.file("other").c_str(), 0700), 0);
        home.put("other/.odbc.ini", kThere);
        const Tmux tmux(home, 80, 24, "TERM=screen LC_ALL=C.UTF-8 ODBCINI=" + home.file("named.ini"),
                        shellQuoted(JX_ODBCADMIN) + " " + line + home.file("other"));
        const std::string shown = tmux.waitForPart("There (Mine)");
        EXPECT_NE(shown.find("There (Mine)"), std::string::npos) << shown;
        EXPECT_EQ(shown.find("Here"), std::string::npos);
        EXPECT_NE(shown.find("Data sources in ~/.odbc.ini"), std::string::npos) << shown;
        tmux.keys("M-o Space Enter");
        EXPECT_TRUE(waitUntil([&] { return home.text("other/.odbc.ini").find("Trace=1") != std::string::npos; }));
        EXPECT_EQ(home.text(".odbc.ini"), kHere);
        EXPECT_EQ(home.text("named.ini"), kHere);
    }
}

TEST(WaysIn, NoColorAloneOpensThemToo) {
    const TestHome home{{".odbc.ini", kHere}};
    const Tmux tmux(home, 80, 24, "TERM=screen LC_ALL=C.UTF-8", shellQuoted(JX_ODBCADMIN) + " --no-color");
    const std::string shown = tmux.waitForPart("Here (Mine)");
    EXPECT_NE(shown.find("Here (Mine)"), std::string::npos) << shown;
}

TEST(WaysIn, OtherLinesWithoutACommandAreToldWhatIsMissing) {
    const TestHome home;
    const struct {
        std::vector<std::string> line;
        int code;
        const char* told;
    } rows[] = {
        {{}, 2, "is not a terminal"},
        {{"--home", home.path()}, 2, "is not a terminal"},
        {{"--home", home.file("absent")}, 7, "Give --home a directory that exists."},
        {{"--home", home.path(), "--json"}, 2, "needs one of dsn"},
        {{"--home", home.path(), "-n"}, 2, "needs one of dsn"},
        {{"--quiet"}, 2, "needs one of dsn"},
        {{"--show-secrets"}, 2, "needs one of dsn"},
        {{"--home", home.path(), "nosuch"}, 2, "no command nosuch"},
        {{"--home", home.path(), "dsn"}, 2, "dsn needs one of"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.line));
        const ProgramResult result = runProgram(JX_ODBCADMIN, row.line);
        EXPECT_EQ(result.code, row.code);
        EXPECT_EQ(result.out.empty(), row.line.empty() || row.line.back() != "--json") << result.out;
        EXPECT_NE(result.err.find(row.told), std::string::npos) << result.err;
    }
}

}  // namespace
}  // namespace jx::test
