// The command line itself: global options, wrong use, help; and files that cannot be had.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "admin_test.h"
#include "installed_copy.h"

namespace jx::test {
namespace {

class Line : public AdminTest {};

TEST_F(Line, GlobalOptionsStandAnywhere) {
    const std::string expected = out({"--json", "dsn", "show", "Sales"});
    EXPECT_EQ(out({"dsn", "--json", "show", "Sales"}), expected);
    EXPECT_EQ(out({"dsn", "show", "--json", "Sales"}), expected);
    EXPECT_EQ(out({"dsn", "show", "Sales", "--json"}), expected);
}

TEST_F(Line, WhatFollowsTwoDashesIsNeverAnOption) {
    out({"-q", "dsn", "add", "X", "--driver", "Plain", "--", "-a=1", "--b=2", "--=3"});
    EXPECT_EQ(out({"dsn", "show", "X", "-q"}), "[X]\nDriver=/opt/libplain.so\n-a=1\n--b=2\n--=3\n");
    out({"dsn", "unset", "X", "--", "-a", "--"});
    EXPECT_EQ(out({"dsn", "show", "X", "-q"}), "[X]\nDriver=/opt/libplain.so\n--b=2\n");
}

TEST_F(Line, DryRunPrintsAUnifiedDiffAndWritesNothing) {
    const std::string path = home_.file(".odbc.ini");
    EXPECT_EQ(out({"dsn", "set", "Sales", "Server=db2", "-n"}), "--- " + path + "\n+++ " + path + R"(
@@ -6,7 +6,7 @@
 ; the shop
 [Sales]
 Driver=/opt/libplain.so
-Server = db1
+Server = db2
 PWD=********
 
 [Accounts]
)");
    EXPECT_EQ(sources(), kSources);
}

TEST_F(Line, DryRunHidesSecretsUnlessAsked) {
    EXPECT_EQ(out({"dsn", "set", "Sales", "PWD=neu", "-n"}).find("neu"), std::string::npos);
    EXPECT_NE(out({"dsn", "set", "Sales", "PWD=neu", "-n", "--show-secrets"}).find("+PWD=neu\n"), std::string::npos);
    const auto shown = json({"dsn", "set", "Sales", "Server=x", "-n"});
    EXPECT_EQ(shown["result"], "would change");
    EXPECT_NE(shown["difference"].get<std::string>().find("+Server = x"), std::string::npos);
}

TEST_F(Line, TheDiffCanBeAppliedWithPatch) {
    home_.put("diff", out({"dsn", "copy", "Sales", "New", "-n", "--show-secrets"}));
    const ProgramResult patched = runProgram("/usr/bin/patch", {"-s", home_.file(".odbc.ini"), home_.file("diff")});
    if (patched.code == 127)
        return;  // no patch on this system
    EXPECT_EQ(patched.code, 0) << patched.out;
    const std::string byPatch = sources();
    home_.put(".odbc.ini", kSources);
    out({"dsn", "copy", "Sales", "New"});
    EXPECT_EQ(byPatch, sources());
}

// Every verb that can change a file: nothing is written with --dry-run and --check, and --check gives 9.
TEST_F(Line, EveryChangingVerbLeavesTheFilesAloneWhenAsked) {
    const std::vector<std::vector<std::string>> lines{{"dsn", "add", "X", "--driver", "Plain"},
                                                      {"dsn", "ensure", "X", "--driver", "Plain"},
                                                      {"dsn", "set", "Sales", "a=b"},
                                                      {"dsn", "unset", "Sales", "PWD"},
                                                      {"dsn", "rename", "Sales", "X"},
                                                      {"dsn", "copy", "Sales", "X"},
                                                      {"dsn", "remove", "Sales"},
                                                      {"dsn", "default", "Sales"},
                                                      {"driver", "add", "X", "--lib", "/x.so"},
                                                      {"driver", "ensure", "Plain", "--lib", "/x.so"},
                                                      {"driver", "remove", "Plain", "--with-dsns"},
                                                      {"translator", "add", "X", "--lib", "/x.so"},
                                                      {"trace", "on", "/tmp/x"},
                                                      {"config", "set", ".odbc.ini", "a", "b", "c"},
                                                      {"config", "unset", ".odbc.ini", "Sales"}};
    for (std::vector<std::string> line : lines) {
        SCOPED_TRACE(line[0] + " " + line[1]);
        line.emplace_back("--check");
        EXPECT_EQ(run(line).code, 9);
        line.back() = "--dry-run";
        EXPECT_NE(out(line).find("@@ "), std::string::npos);
        EXPECT_EQ(sources(), kSources);
        EXPECT_EQ(drivers(), kDrivers);
        line.pop_back();
        out(line);
        EXPECT_TRUE(sources() != kSources || drivers() != kDrivers);
        home_.put(".odbc.ini", kSources);
        home_.put(".odbcinst.ini", kDrivers);
    }
    EXPECT_EQ(run({"dsn", "ensure", "Sales", "Server=db1", "--check"}).code, 0);
}

TEST_F(Line, HomeWinsOverTheEnvironment) {
    mkdir(home_.file("other").c_str(), 0700);
    setenv("ODBCINI", home_.file(".odbc.ini").c_str(), 1);
    EXPECT_EQ(out({"dsn", "list", "-q", "--home", home_.file("other")}), "");
    out({"--home", home_.file("other"), "driver", "add", "D", "--lib", "/d.so", "--no-setup", "-q"});
    EXPECT_EQ(home_.text("other/.odbcinst.ini"), "[ODBC Drivers]\nD=Installed\n\n[D]\nDriver=/d.so\n");
    EXPECT_EQ(drivers(), kDrivers);
    EXPECT_EQ(run({"dsn", "list", "--home", home_.file("absent")}).code, 7);
    EXPECT_EQ(run({"dsn", "list", "--home", home_.file(".odbc.ini")}).code, 7);
}

TEST_F(Line, TheEnvironmentNamesTheFiles) {
    home_.put("mine.ini", "[ODBC Data Sources]\nMine=Plain\n");
    setenv("ODBCINI", home_.file("mine.ini").c_str(), 1);
    EXPECT_EQ(out({"dsn", "list", "-q"}), "Mine\n");
}

TEST_F(Line, WrongUseIsToldInTwoLines) {
    for (const std::vector<std::string>& line : std::vector<std::vector<std::string>>{{"nosuch"},
                                                                                      {"dsn"},
                                                                                      {"dsn", "nosuch"},
                                                                                      {"dsn", "show"},
                                                                                      {"dsn", "show", "a", "b"},
                                                                                      {"dsn", "list", "--nosuch"},
                                                                                      {"dsn", "add", "X"},
                                                                                      {"driver", "add", "X"},
                                                                                      {"--home"}}) {
        SCOPED_TRACE(testing::PrintToString(line));
        const ProgramResult result = run(line);
        EXPECT_EQ(result.code, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 2) << result.err;
    }
    EXPECT_NE(run({"--nosuch"}).err.find("odbcadmin has no option --nosuch\n"), std::string::npos);
    EXPECT_NE(run({"dsn", "lst"}).err.find("Did you mean list?"), std::string::npos);
    EXPECT_NE(run({"dsm", "list"}).err.find("Did you mean dsn?"), std::string::npos);
}

TEST_F(Line, HelpStandsAtEveryLevelWithExamples) {
    EXPECT_NE(out({"--help"}).find("Exit codes: 0 done"), std::string::npos);
    EXPECT_NE(out({"--help"}).find("Examples:\n  odbcadmin "), std::string::npos);
    for (const char* noun : {"dsn", "driver", "translator", "trace", "config"})
        EXPECT_NE(out({noun, "--help"}).find("--help:\n  odbcadmin " + std::string(noun) + " "), std::string::npos);
    EXPECT_NE(out({"dsn", "add", "--help"}).find("Examples:\n  odbcadmin dsn add "), std::string::npos);
    EXPECT_EQ(out({"--version"}).rfind("odbcadmin ", 0), 0U);
}

TEST_F(Line, QuietSaysNothing) {
    EXPECT_EQ(out({"-q", "dsn", "set", "Sales", "a=b"}), "");
    EXPECT_EQ(run({"-q", "dsn", "add", "X", "--driver", "Plain"}).err, "");
}

TEST_F(Line, AnUnreadableFileIsFileTrouble) {
    chmod(home_.path().c_str(), 0777);
    chmod(home_.file(".odbc.ini").c_str(), 0);
    chmod(home_.file(".odbcinst.ini").c_str(), 0644);
    const InstalledCopy copy;
    const ProgramResult result = runProgram(copy.file("bin/odbcadmin"), {"dsn", "list"}, {}, As::nobody);
    EXPECT_EQ(result.code, 7);
    EXPECT_EQ(result.err, "odbcadmin: Cannot open " + home_.file(".odbc.ini") +
                              ": Permission denied\n  Look at the rights of the file and of its directory: ls -ld.\n");
    EXPECT_EQ(runProgram(copy.file("bin/odbcadmin"), {"dsn", "set", "Sales", "a=b"}, {}, As::nobody).code, 7);
}

TEST_F(Line, ADirectoryThatCannotBeWrittenToIsFileTrouble) {
    chmod(home_.file(".odbc.ini").c_str(), 0644);
    chmod(home_.file(".odbcinst.ini").c_str(), 0644);
    chmod(home_.path().c_str(), 0555);
    const InstalledCopy copy;
    const ProgramResult result =
        runProgram(copy.file("bin/odbcadmin"), {"dsn", "ensure", "Sales", "a=b"}, {}, As::nobody);
    chmod(home_.path().c_str(), 0755);
    EXPECT_EQ(result.code, 7);
    EXPECT_EQ(sources(), kSources);
}

TEST_F(Line, ADirectoryInPlaceOfTheFileIsFileTrouble) {
    unlink(home_.file(".odbc.ini").c_str());
    mkdir(home_.file(".odbc.ini").c_str(), 0700);
    EXPECT_EQ(run({"dsn", "list"}).code, 7);
    EXPECT_EQ(run({"dsn", "add", "X", "--driver", "Plain"}).code, 7);
    EXPECT_EQ(run({"dsn", "default", "--unset"}).code, 7);
    EXPECT_EQ(run({"export"}).code, 7);
}

TEST_F(Line, AFifoInPlaceOfTheFileIsFileTroubleAndNoWait) {
    unlink(home_.file(".odbc.ini").c_str());
    ASSERT_EQ(mkfifo(home_.file(".odbc.ini").c_str(), 0600), 0);
    EXPECT_EQ(run({"dsn", "list"}).code, 7);
    EXPECT_EQ(run({"trace", "on", "/tmp/x"}).code, 7);
}

// This one takes the ten seconds that a change waits for the lock.
#ifdef JX_TEST_LONG_WAITS
TEST_F(Line, AFileThatStaysLockedHasItsOwnCode) {
    const int lock = open(home_.file(".odbc.ini.jxlock").c_str(), O_CREAT | O_RDWR | O_CLOEXEC, 0600);
    ASSERT_GE(lock, 0);
    ASSERT_EQ(flock(lock, LOCK_EX), 0);
    const ProgramResult result = run({"dsn", "ensure", "Sales", "a=b", "--lock-timeout", "0.02"});
    EXPECT_EQ(result.code, 8) << result.err;
    EXPECT_NE(result.err.find("Another program is changing the file"), std::string::npos);
    EXPECT_EQ(run({"dsn", "ensure", "Sales", "a=b", "--check"}).code, 9);
    EXPECT_EQ(sources(), kSources);
    close(lock);
}
#endif

TEST_F(Line, AWaitShowsOnATerminalAndGoesOn) {
    const int lock = open(home_.file(".odbc.ini.jxlock").c_str(), O_CREAT | O_RDWR | O_CLOEXEC, 0600);
    ASSERT_EQ(flock(lock, LOCK_EX), 0);
    const std::string line =
        "script -qec " + shellQuoted(shellQuoted(JX_ODBCADMIN) + " dsn set Sales a=b") + " /dev/null </dev/null";
    std::FILE* const terminal = popen(line.c_str(), "re");
    ASSERT_NE(terminal, nullptr);
    std::string shown;
    for (int letter = std::fgetc(terminal); letter != EOF; letter = std::fgetc(terminal)) {
        shown.push_back(static_cast<char>(letter));
        if (shown.ends_with(".odbc.ini ... 1 s"))
            flock(lock, LOCK_UN);
    }
    EXPECT_EQ(pclose(terminal), 0);
    close(lock);
    EXPECT_NE(shown.find("Waiting for the lock on "), std::string::npos) << shown;
    EXPECT_NE(shown.find("Changed data source Sales"), std::string::npos) << shown;
    EXPECT_NE(sources().find("a=b"), std::string::npos);
}

TEST_F(Line, AResultThatCannotBeWrittenIsAFailure) {
    EXPECT_EQ(runProgram("/bin/sh", {"-c", shellQuoted(JX_ODBCADMIN) + " dsn list >/dev/full"}).code, 1);
}

TEST_F(Line, WhatManyTypeFromHabitIsUnderstood) {
    EXPECT_EQ(out({"dsn", "ls", "-q"}), "Sales\nAccounts\n");
    EXPECT_EQ(out({"help", "dsn", "add"}), out({"dsn", "add", "--help"}));
    EXPECT_EQ(out({"help"}), out({"--help"}));
    EXPECT_EQ(out({"dsn", "rm", "Sales", "-q"}), "");
    EXPECT_EQ(out({"dsn", "ls", "-q"}), "Accounts\n");
    EXPECT_EQ(out({"driver", "remove", "Gone", "--if-exists"}), "unchanged: nothing to do\n");
    EXPECT_EQ(run({"driver", "remove", "Gone"}).code, 3);
    EXPECT_EQ(out({"dsn", "remove", "Gone", "--if-exists"}), "unchanged: nothing to do\n");
    EXPECT_EQ(out({"translator", "rm", "Gone", "--if-exists"}), "unchanged: nothing to do\n");
}

TEST_F(Line, HabitsHoldBehindEveryNounAndOption) {
    EXPECT_EQ(out({"--home", home_.path(), "driver", "-q", "ls"}), "Plain\n");
    EXPECT_EQ(out({"--lock-timeout", "1", "dsn", "--json", "rm", "Gone", "--if-exists"}),
              out({"dsn", "remove", "Gone", "--if-exists", "--json"}));
    EXPECT_EQ(out({"config", "ls", ".odbcinst.ini", "-q"}), "ODBC Drivers\nPlain\n");
    for (const char* noun : {"dsn", "driver", "translator", "trace", "config"}) {
        EXPECT_EQ(out({noun, "help"}), out({noun, "--help"}));
        EXPECT_EQ(out({"help", noun}), out({noun, "--help"}));
    }
    EXPECT_EQ(out({"dsn", "help", "ls"}), out({"dsn", "list", "--help"}));
    EXPECT_EQ(out({"help", "driver", "rm"}), out({"driver", "remove", "--help"}));
    EXPECT_NE(run({"trace", "ls"}).err.find("odbcadmin trace has no command ls"), std::string::npos);
    EXPECT_EQ(run({"dsn", "show", "help"}).code, 3);
}

TEST_F(Line, ALockIsWaitedForAsLongAsAsked) {
    const int lock = open(home_.file(".odbc.ini.jxlock").c_str(), O_CREAT | O_RDWR | O_CLOEXEC, 0600);
    ASSERT_EQ(flock(lock, LOCK_EX), 0);
    const ProgramResult atOnce = run({"--lock-timeout", "0", "dsn", "ensure", "Sales", "a=b"});
    EXPECT_EQ(atOnce.code, 8);
    EXPECT_EQ(atOnce.err, "odbcadmin: Cannot lock " + home_.file(".odbc.ini.jxlock") +
                              ": another writer has it locked\n  Another program is changing the file; try again.\n");
    const ProgramResult soon = run({"dsn", "ensure", "Sales", "a=b", "--lock-timeout=0.02", "--json"});
    EXPECT_EQ(soon.code, 8);
    EXPECT_NE(soon.err.find("another writer kept it locked for 0.02 seconds"), std::string::npos);
    EXPECT_EQ(nlohmann::ordered_json::parse(soon.out)["error"]["code"], 8);
    EXPECT_EQ(run({"--lock-timeout", "0", "config", "set", ".odbc.ini", "a", "b", "c"}).code, 8);
    EXPECT_EQ(run({"--lock-timeout", "0", "trace", "on", "/x"}).code, 8);
    EXPECT_EQ(run({"--lock-timeout", "0", "dsn", "show", "Sales"}).code, 0);
    EXPECT_EQ(sources(), kSources);
    close(lock);
    EXPECT_EQ(run({"--lock-timeout", "0", "dsn", "ensure", "Sales", "a=b"}).code, 0);
}

TEST_F(Line, TheTimeForALockIsANumberOfSeconds) {
    for (const char* wrong : {"", "x", "1x", "nan", "inf", "86401"}) {
        SCOPED_TRACE(wrong);
        const ProgramResult result = run({"dsn", "set", "Sales", "a=b", "--lock-timeout", wrong});
        EXPECT_EQ(result.code, 2);
        EXPECT_NE(result.err.find("--lock-timeout"), std::string::npos);
    }
    EXPECT_EQ(run({"dsn", "set", "Sales", "a=b", "--lock-timeout=-1"}).code, 2);
    EXPECT_EQ(sources(), kSources);
}

TEST_F(Line, AFailureIsAnObjectToo) {
    const ProgramResult result = run({"--json", "dsn", "show", "Nothing"});
    EXPECT_EQ(result.code, 3);
    const auto object = nlohmann::ordered_json::parse(result.out);
    EXPECT_EQ(object["schema"], "odbcadmin/1");
    EXPECT_EQ(object["error"]["code"], 3);
    EXPECT_EQ(object["error"]["fact"], "There is no data source Nothing in " + home_.file(".odbc.ini"));
    EXPECT_EQ(json({"dsn", "set", "Sales", "a=b"})["changed"], true);
    EXPECT_EQ(json({"dsn", "set", "Sales", "a=b"})["changed"], false);
    EXPECT_EQ(json({"dsn", "set", "Sales", "a=c", "-n"})["changed"], false);
}

// A line for each verb, at its end a word that does not fit.
TEST_F(Line, EachVerbGivesItsFailureAsAnObject) {
    const std::vector<const char*> lines[] = {{"dsn", "show", "No"},
                                              {"dsn", "get", "Sales", "No"},
                                              {"dsn", "add", "X", "--driver", "No"},
                                              {"dsn", "ensure", "No"},
                                              {"dsn", "set", "No", "a=b"},
                                              {"dsn", "unset", "No", "a"},
                                              {"dsn", "remove", "No"},
                                              {"dsn", "rename", "No", "X"},
                                              {"dsn", "copy", "No", "X"},
                                              {"dsn", "default", "No"},
                                              {"dsn", "test", "No"},
                                              {"dsn", "connstr", "No"},
                                              {"driver", "show", "No"},
                                              {"driver", "add", "Plain", "--lib=x"},
                                              {"driver", "ensure", "No"},
                                              {"driver", "set", "No", "a=b"},
                                              {"driver", "unset", "No", "a"},
                                              {"driver", "rename", "No", "X"},
                                              {"driver", "remove", "No"},
                                              {"driver", "check", "No"},
                                              {"driver", "scan", "/no"},
                                              {"translator", "add", "Plain", "--lib=x"},
                                              {"translator", "set", "No", "a=b"},
                                              {"translator", "unset", "No", "a"},
                                              {"translator", "rename", "No", "X"},
                                              {"translator", "remove", "No"},
                                              {"trace", "on"},
                                              {"config", "get", "/no", "a", "b"},
                                              {"config", "list", "/no"},
                                              {"config", "set", "/no/x", "a", "b", "c"},
                                              {"config", "unset", "/no/x", "a"},
                                              {"edit", "/"},
                                              {"install", "/no"},
                                              {"export", "No"},
                                              {"apply", "-f", "/no"},
                                              {"explain", "No"},
                                              {"doctor", "No"},
                                              {"lint", "/no"},
                                              {"No"},
                                              {"--lock-timeout", "x", "paths"}};
    for (const std::vector<const char*>& words : lines) {
        std::vector<std::string> line(words.begin(), words.end());
        line.insert(line.begin(), "--json");
        SCOPED_TRACE(testing::PrintToString(line));
        const ProgramResult result = run(line);
        const auto object = nlohmann::ordered_json::parse(result.out, nullptr, /*allow_exceptions=*/false);
        ASSERT_TRUE(object.is_object()) << result.out;
        EXPECT_GT(result.code, 0);
        EXPECT_EQ(object["error"]["code"], result.code);
        EXPECT_EQ(result.err.find("odbcadmin: " + object["error"]["fact"].get<std::string>()), 0U);
    }
    EXPECT_EQ(sources(), kSources);
    EXPECT_EQ(drivers(), kDrivers);
}

TEST_F(Line, AnEmptyHomeIsNotTheCallersOwn) {
    const ProgramResult result = run({"--home", "", "dsn", "remove", "Sales"});
    EXPECT_EQ(result.code, 2);
    EXPECT_NE(result.err.find("--home"), std::string::npos);
    EXPECT_EQ(sources(), kSources);
}

TEST_F(Line, OutputToAFullDiskIsAnErrorThatIsSaid) {
    const ProgramResult result =
        runProgram("/bin/sh", {"-c", "exec " + shellQuoted(JX_ODBCADMIN) + " dsn list >/dev/full"});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.err, "odbcadmin: Cannot write the result: No space left on device\n");
}

}  // namespace
}  // namespace jx::test
