// run: programs with this product's libodbcinst.so.2 in front.
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "admin_test.h"

namespace jx::test {
namespace {

// As a word of a shell: the build may lie in a folder with a blank in its name.
const std::string kAsker = shellQuoted(JX_RUN_ASKER);

class RunCommand : public AdminTest {
protected:
    RunCommand() {
        home_.put(".odbc.ini", "[Sales]\nServer=db1\nPWD=geheim\n");
        ::unsetenv("LD_LIBRARY_PATH");
        ::unsetenv("JXODBC_LOG");
    }

    ProgramResult shell(const std::string& script) {
        return runProgram("/bin/sh", {"-c", "odbcadmin() { " + shellQuoted(JX_ODBCADMIN) + " \"$@\"; }\ncd " +
                                                shellQuoted(home_.path()) + "\n" + script});
    }

    // A file that may be run.
    std::string putProgram(const char* name, const std::string& text) {
        home_.put(name, text);
        ::chmod(home_.file(name).c_str(), 0755);
        return home_.file(name);
    }

    void refuses(const std::string& program, int code, const std::string& sentence) {
        const ProgramResult result = run({"run", "--", program});
        EXPECT_EQ(result.code, code);
        EXPECT_NE(result.err.find(sentence), std::string::npos) << result.err;
    }
};

TEST_F(RunCommand, GivesAProgramThisProductsLibrary) {
    const ProgramResult result = run({"run", "--", JX_RUN_ASKER, "Server"});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(result.out, "Server=db1\n");
}

TEST_F(RunCommand, GoesBeforeOtherFoldersAndKeepsThem) {
    ::setenv("LD_LIBRARY_PATH", "/one:/two", 1);
    const std::string path = out({"run", "--", "sh", "-c", "printf %s \"$LD_LIBRARY_PATH\""});
    ::unsetenv("LD_LIBRARY_PATH");
    EXPECT_TRUE(path.ends_with("/jxodbc:/one:/two")) << path;
}

TEST_F(RunCommand, HandsOnArgumentsAsTheyAre) {
    EXPECT_EQ(
        out({"run", "--", "sh", "-c", "printf '<%s>' \"$@\"", "x", "--", "-v", "[a,b]", "{}", "", "doctor", "--json"}),
        "<--><-v><[a,b]><{}><><doctor><--json>");
    EXPECT_EQ(out({"run", "--", "sh", "-c", "echo $0"}), "sh\n");
    EXPECT_EQ(out({"run", "--", "sh", "-c", "cat"}, "input"), "input");
}

TEST_F(RunCommand, TheHomeThatIsGivenIsThePrograms) {
    std::filesystem::create_directory(home_.file("other"));
    home_.put("other/.odbc.ini", "[Sales]\nServer=db2\n");
    EXPECT_EQ(out({"--home", home_.file("other"), "run", "--", JX_RUN_ASKER, "Server"}), "Server=db2\n");
}

TEST_F(RunCommand, EndsAsTheProgramEnds) {
    EXPECT_EQ(run({"run", "--", JX_RUN_ASKER, "exit=42"}).code, 42);
    EXPECT_EQ(shell("odbcadmin run -- " + kAsker + " signal=15; echo $?").out, "143\n");
    EXPECT_EQ(run({"run", "--log", "--json", "--", JX_RUN_ASKER, "exit=42"}).code, 42);
    EXPECT_EQ(shell("odbcadmin run --log --json -- " + kAsker + " signal=15; echo $?").out, "143\n");
}

TEST_F(RunCommand, SaysWhyAProgramCannotBeRunSo) {
    const std::string text = "plain text";
    home_.put("closed", text);
    refuses("nonesuch-program", 127, "There is no program nonesuch-program");
    refuses(home_.file("none"), 127, "There is no program " + home_.file("none"));
    refuses("", 127, "There is no program ");
    refuses(home_.file("closed"), 126, "closed is not a file that this user may run");
    refuses(home_.path(), 126, " is not a file that this user may run");
    refuses(putProgram("garbage", "\x01\x02\x03\x7f"), 126, "garbage is not a program");
    refuses(putProgram("orphan", "#!/no/such/shell\n"), 126,
            "is a script whose interpreter /no/such/shell cannot be run");
    refuses(JX_RUN_STATIC, 126, "is linked statically");
    refuses(JX_RUN_FOREIGN, 126, "is for 32-bit");
}

TEST_F(RunCommand, RefusesAProgramThatGetsOtherRights) {
    ::chmod(home_.path().c_str(), 0755);
    const std::string program = geteuid() == 0 ? home_.file("raised") : "/usr/bin/su";
    if (geteuid() == 0) {
        std::filesystem::copy_file("/bin/sh", program);
        ASSERT_EQ(::chown(program.c_str(), 65534, 65534), 0);
        ASSERT_EQ(::chmod(program.c_str(), 04755), 0);
    }
    refuses(program, 126, "gets other rights than yours");
    // For its owner it is a program like any other.
    if (geteuid() == 0) {
        ASSERT_EQ(::chown(program.c_str(), 0, 0), 0);
        ASSERT_EQ(::chmod(program.c_str(), 04755), 0);
        EXPECT_EQ(run({"run", "--", program, "-c", "exit 3"}).code, 3);
    }
}

TEST_F(RunCommand, RunsScriptsAndFollowsTheirInterpreters) {
    const std::string script = putProgram("script", "#!/usr/bin/env -S sh -e\n" + kAsker + " Server\n");
    EXPECT_EQ(out({"run", "--", script}), "Server=db1\n");
    const auto shown = nlohmann::ordered_json::parse(run({"run", "--check", "--json", "--", script}).out);
    ASSERT_EQ(shown["interpreters"].size(), 1U);
    EXPECT_TRUE(shown["interpreters"][0].get<std::string>().ends_with("/sh"));
    // As shells do with a text that names no interpreter.
    EXPECT_EQ(out({"run", "--", putProgram("text", "echo plain\n")}), "plain\n");
}

TEST_F(RunCommand, CheckTellsWhatWouldChangeAndStartsNothing) {
    const ProgramResult result = run({"run", "--check", "--", JX_RUN_ASKER, "Server"});
    EXPECT_EQ(result.code, 9);
    EXPECT_EQ(result.out.find("db1"), std::string::npos);
    EXPECT_NE(result.out.find("Program    " JX_RUN_ASKER "\n"), std::string::npos) << result.out;
    EXPECT_NE(result.out.find("/jxodbc/libodbcinst.so.2"), std::string::npos) << result.out;
    EXPECT_NE(result.out.find("Needed by  " JX_RUN_ASKER "\n"), std::string::npos) << result.out;
    EXPECT_EQ(run({"run", "--dry-run", "--", JX_RUN_ASKER}).code, 0);
    const auto shown = nlohmann::ordered_json::parse(run({"run", "--check", "--json", "--", JX_RUN_ASKER}).out);
    EXPECT_EQ(shown["changes"], true);
    EXPECT_EQ(shown["neededBy"][0], JX_RUN_ASKER);
}

TEST_F(RunCommand, CheckNamesTheLibraryThatAnswersToday) {
    const std::string other = home_.file("libodbcinst.so.2");
    std::filesystem::copy_file(JX_RUN_LIBRARY, other);
    ::setenv("LD_LIBRARY_PATH", home_.path().c_str(), 1);
    const std::string told = run({"run", "--check", "--", JX_RUN_ASKER}).out;
    EXPECT_NE(told.find("Without    " + other + "\n"), std::string::npos) << told;
    ::setenv("LD_LIBRARY_PATH", std::filesystem::path(JX_RUN_LIBRARY).parent_path().c_str(), 1);
    const ProgramResult same = run({"run", "--check", "--", JX_RUN_ASKER});
    EXPECT_EQ(same.code, 0) << "nothing changes where this product's library answers already";
    ::unsetenv("LD_LIBRARY_PATH");
}

TEST_F(RunCommand, CheckTellsOfASearchPathThatPrevails) {
    std::filesystem::copy_file(JX_RUN_ASKER_BY_RPATH, home_.file("asker"));
    std::filesystem::copy_file(JX_RUN_LIBRARY, home_.file("libodbcinst.so.2"));
    const ProgramResult result = run({"run", "--check", "--", home_.file("asker")});
    EXPECT_NE(result.out.find("With       " + home_.file("libodbcinst.so.2")), std::string::npos) << result.out;
    EXPECT_NE(result.err.find("a search path that is built into the program prevails"), std::string::npos)
        << result.err;
}

TEST_F(RunCommand, CheckNamesPackagesAndDriversThatNeedTheLibrary) {
    std::filesystem::create_directory(home_.file("bin"));
    putProgram("bin/dpkg-query",
               "#!/bin/sh\ncase $2 in */libodbcinst.so.2) echo \"acme-odbc:amd64: $2\";; *) exit 1;; esac\n");
    std::filesystem::copy_file(JX_RUN_LIBRARY, home_.file("libodbcinst.so.2"));
    home_.put(".odbcinst.ini", "[ODBC Drivers]\nNeedy=Installed\n[Needy]\nDriver=" JX_RUN_ASKER "\n");
    const std::string told = shell(
                                 "PATH=$HOME/bin:$PATH; export PATH; LD_LIBRARY_PATH=$HOME; export LD_LIBRARY_PATH\n"
                                 "odbcadmin run --check -- sh")
                                 .out;
    EXPECT_NE(told.find("Without    " + home_.file("libodbcinst.so.2") + " (package acme-odbc:amd64)\n"),
              std::string::npos)
        << told;
    putProgram("bin/dpkg-query", "#!/bin/sh\nexit 1\n");
    putProgram("bin/rpm", "#!/bin/sh\necho acme-odbc\n");
    EXPECT_NE(shell("PATH=$HOME/bin:$PATH; export PATH; LD_LIBRARY_PATH=$HOME; export LD_LIBRARY_PATH\n"
                    "odbcadmin run --check -- sh")
                  .out.find(" (package acme-odbc)\n"),
              std::string::npos);
    EXPECT_NE(told.find("Needed by  driver Needy: " JX_RUN_ASKER "\n"), std::string::npos) << told;
}

TEST_F(RunCommand, LogShowsTheLookUpsOnStandardError) {
    const ProgramResult result = run({"run", "--log", "--", JX_RUN_ASKER, "Server", "PWD", "Port"});
    EXPECT_EQ(result.out, "Server=db1\nPWD=geheim\nPort=(none)\n");
    EXPECT_NE(result.err.find("\todbc.ini\tSales\tServer\t" + home_.file(".odbc.ini") + ":2\tdb1\n"), std::string::npos)
        << result.err;
    EXPECT_NE(result.err.find("\tPWD\t" + home_.file(".odbc.ini") + ":3\t********\n"), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("\tPort\tno-key\t(none)\n"), std::string::npos) << result.err;
    EXPECT_EQ(result.err.find("geheim"), std::string::npos);
}

TEST_F(RunCommand, LogIsShownOfAProgramThatClosesItsStandardError) {
    EXPECT_NE(run({"run", "--log", "--", JX_RUN_ASKER, "close", "Server"}).err.find("\tServer\t"), std::string::npos);
}

TEST_F(RunCommand, LogAsJsonIsAnObjectALine) {
    const ProgramResult result = run({"run", "--log", "--json", "--", JX_RUN_ASKER, "Server", "Port"});
    EXPECT_EQ(result.out, "Server=db1\nPort=(none)\n");
    const std::size_t end = result.err.find('\n');
    const auto first = nlohmann::ordered_json::parse(result.err.substr(0, end));
    EXPECT_EQ(first["asked"], "odbc.ini");
    EXPECT_EQ(first["section"], "Sales");
    EXPECT_EQ(first["key"], "Server");
    EXPECT_EQ(first["answer"], home_.file(".odbc.ini") + ":2");
    EXPECT_EQ(first["value"], "db1");
    EXPECT_EQ(nlohmann::ordered_json::parse(result.err.substr(end + 1))["answer"], "no-key");
}

TEST_F(RunCommand, AReaderOfTheLogThatGoesAwayDoesNotEndTheProgram) {
    const ProgramResult result = shell(
        "mkfifo log go\n"
        "(odbcadmin run --log --json -- " +
        kAsker +
        " read Server exit=7 <go 2>log; echo $?) &\n"
        "exec 3>go 4<log\nexec 4<&-\necho >&3\nwait");
    EXPECT_EQ(result.out, "Server=db1\n7\n");
}

TEST_F(RunCommand, WhatElseIsWrittenIntoTheLogDoesNotStopIt) {
    const ProgramResult result = run(
        {"run", "--log", "--json", "--", "sh", "-c",
         "head -c 300000 /dev/zero >/dev/fd/$JXODBC_LOG; echo >/dev/fd/$JXODBC_LOG; echo odd >/dev/fd/$JXODBC_LOG"});
    EXPECT_EQ(result.code, 0);
    EXPECT_NE(result.err.find("{\"text\":\"odd\"}\n"), std::string::npos);
}

TEST_F(RunCommand, SignalsReachTheProgramThroughItsParent) {
    const ProgramResult result = shell("mkfifo ready\n" + shellQuoted(JX_ODBCADMIN) + " run --log --json -- " + kAsker +
                                       " Server wait >ready & program=$!\n"
                                       "read -r line <ready\nkill -TERM $program\nwait $program\necho \"$line $?\"");
    EXPECT_EQ(result.out, "Server=db1 143\n");
}

}  // namespace
}  // namespace jx::test
