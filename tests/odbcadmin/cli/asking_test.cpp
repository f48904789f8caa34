// Questions at a terminal: values that are typed unseen, and removals.
#include <sys/stat.h>

#include "../terminal/pty.h"
#include "admin_test.h"

namespace jx::test {
namespace {

class Asking : public AdminTest {
protected:
    // A program that runs odbcadmin with this line.
    std::string program(const std::string& line) {
        home_.put("program", "#!/bin/sh\nexec " + shellQuoted(JX_ODBCADMIN) + " " + line + "\n");
        chmod(home_.file("program").c_str(), 0700);
        return home_.file("program");
    }

    // What a terminal shows of dsn set when this is typed for the value, and how the program ends.
    std::string typed(const std::string& line, const std::string& keys) {
        Pty terminal(program(line), {});
        const auto isUnseen = [&] { return terminal.modes().find(" -echo") != std::string::npos; };
        EXPECT_TRUE(waitUntil(isUnseen));
        terminal.send(keys);
        const std::string end = terminal.waitForEnd();
        EXPECT_EQ(terminal.modes(), terminal.modesBefore());
        return terminal.take() + end;
    }

    // The same of apply --prune, which shows what goes and asks.
    std::string answered(const std::string& answer) {
        home_.put("some.json", R"({"schema":"odbcadmin/1","dataSources":[{"name":"Sales","driver":"Plain","keys":{}}],)"
                               R"("drivers":[{"name":"Plain","keys":{"Driver":"/opt/libplain.so"}}]})");
        Pty terminal(program("apply -f " + home_.file("some.json") + " --prune user"), {});
        EXPECT_TRUE(terminal.waitFor("Remove data source Accounts? [y/N] "));
        const std::string shown = terminal.take();
        terminal.send(answer);
        const std::string end = terminal.waitForEnd();
        return shown + terminal.take() + end;
    }
};

TEST_F(Asking, AValueIsTypedUnseen) {
    EXPECT_EQ(typed("dsn set Sales PWD --stdin --direct -q", "neues Wort\n"), "Value of PWD: \r\nexited 0");
    EXPECT_EQ(sources(), with(kSources, "geheim", "neues Wort"));
}

TEST_F(Asking, WithoutAValueNothingChanges) {
    for (const char* keys : {"\n", "\x03", "half\x03", "\x04"}) {
        const std::string shown = typed("dsn set Sales PWD --stdin --direct", keys);
        EXPECT_NE(shown.find("Standard input gave no value for PWD; nothing was changed"), std::string::npos) << shown;
        EXPECT_TRUE(shown.ends_with("exited 2")) << shown;
        EXPECT_EQ(shown.find("half"), std::string::npos);
        EXPECT_EQ(sources(), kSources);
    }
    EXPECT_TRUE(typed("dsn set Sales PWD --stdin --allow-empty --direct", "\n").ends_with("exited 0"));
    EXPECT_EQ(sources(), with(kSources, "geheim", ""));
}

TEST_F(Asking, ARemovalIsShownAndAgreedTo) {
    const std::string kept = answered("n\n");
    EXPECT_NE(kept.find("\n-[Accounts]\r\n-Driver=/opt/libplain.so\r\n"), std::string::npos) << kept;
    for (const std::string& refused : {kept, answered("\n"), answered("\x04"), answered("yellow\n")}) {
        EXPECT_NE(refused.find("odbcadmin: Nothing was changed\r\n"), std::string::npos) << refused;
        EXPECT_TRUE(refused.ends_with("exited 1")) << refused;
        EXPECT_EQ(sources(), kSources);
    }
    for (const char* yes : {"y\n", "Y\n", "yes\n"}) {
        home_.put(".odbc.ini", kSources);
        const std::string done = answered(yes);
        EXPECT_NE(done.find("; removed data source Accounts\r\n"), std::string::npos) << done;
        EXPECT_TRUE(done.ends_with("exited 0")) << done;
        EXPECT_EQ(out({"dsn", "list", "-q"}), "Sales\n");
    }
}

TEST_F(Asking, WhatAFileHoldsCannotSteerTheTerminal) {
    home_.put(".odbc.ini", with(kSources, "[Accounts]\n", "[Accounts]\nNote=\x1b[31m\x07\t\xC2\x9B\x7F\xC3\xA4\n"));
    const std::string shown = answered("n\n");
    EXPECT_NE(shown.find("-Note=?[31m?\t???\xC3\xA4\r\n"), std::string::npos) << shown;
}

}  // namespace
}  // namespace jx::test
