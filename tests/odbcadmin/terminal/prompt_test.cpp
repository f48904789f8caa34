// What the command line does differently on a terminal: it asks for secrets, and shows no control characters of a file.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "pty.h"
#include "run_program.h"
#include "test_home.h"

namespace jx::test {
namespace {

// A terminal with one line of a shell running on it.
class OnTerminal : public testing::Test {
protected:
    OnTerminal() {
        home_.put(".odbc.ini", "[ODBC Data Sources]\nSales=Plain\n[Sales]\nPWD=old\nNote=a\x1b[31mb\n");
        home_.put(".odbcinst.ini", "[ODBC Drivers]\nPlain=Installed\n[Plain]\nDriver=/opt/libplain.so\n");
    }

    std::string script(const std::string& line) const {
        home_.put("run", "#!/bin/sh\n" + line + "\n");
        ::chmod(home_.file("run").c_str(), 0700);
        return home_.file("run");
    }

    TestHome home_;
};

TEST_F(OnTerminal, ASecretIsAskedForAndNotShown) {
    Pty terminal(script("exec " + shellQuoted(JX_ODBCADMIN) + " dsn set Sales PWD --stdin --direct -q"), {});
    ASSERT_TRUE(terminal.waitFor("Value of PWD: "));
    terminal.send("geheim\n");
    EXPECT_EQ(terminal.waitForEnd(), "exited 0");
    EXPECT_EQ(terminal.take().find("geheim"), std::string::npos);
    EXPECT_EQ(terminal.modes(), terminal.modesBefore());
    EXPECT_NE(home_.text(".odbc.ini").find("PWD=geheim\n"), std::string::npos);
}

TEST_F(OnTerminal, GivingUpLeavesTheSecretAndTheTerminalAsTheyWere) {
    Pty terminal(script("exec " + shellQuoted(JX_ODBCADMIN) + " dsn set Sales PWD --stdin --direct"), {});
    ASSERT_TRUE(terminal.waitFor("Value of PWD: "));
    terminal.send("half\x03");
    EXPECT_EQ(terminal.waitForEnd(), "exited 2");
    EXPECT_EQ(terminal.modes(), terminal.modesBefore());
    EXPECT_NE(home_.text(".odbc.ini").find("PWD=old\n"), std::string::npos);
}

TEST_F(OnTerminal, ControlCharactersOfAFileDoNotReachIt) {
    for (const char* verb : {"dsn get Sales Note", "dsn show Sales", "dsn remove Sales --dry-run"}) {
        SCOPED_TRACE(verb);
        Pty terminal(script("exec " + shellQuoted(JX_ODBCADMIN) + " --no-color " + verb), {});
        EXPECT_TRUE(terminal.waitFor("a?[31mb"));
        EXPECT_EQ(terminal.waitForEnd(), "exited 0");
    }
}

TEST_F(OnTerminal, WhatIsToBeRemovedIsShownAndAskedFor) {
    home_.put("none.json", R"({"schema": "odbcadmin/1"})");
    const std::string before = home_.text(".odbc.ini");
    const std::string command =
        "exec " + shellQuoted(JX_ODBCADMIN) + " apply -f " + shellQuoted(home_.file("none.json")) + " --prune user";
    for (const char* answer : {"\n", "n\n", "\x04"}) {
        Pty terminal(script(command), {});
        ASSERT_TRUE(terminal.waitFor("-Sales=Plain"));
        ASSERT_TRUE(terminal.waitFor("Remove data source Sales, driver Plain? [y/N] "));
        terminal.send(answer);
        EXPECT_EQ(terminal.waitForEnd(), "exited 1");
        EXPECT_EQ(home_.text(".odbc.ini"), before);
    }
    Pty terminal(script(command), {});
    ASSERT_TRUE(terminal.waitFor("[y/N] "));
    terminal.send("y\n");
    EXPECT_EQ(terminal.waitForEnd(), "exited 0");
    EXPECT_EQ(home_.text(".odbc.ini"), "[ODBC Data Sources]\n");
}

}  // namespace
}  // namespace jx::test
