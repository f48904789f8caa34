// edit: the copy, the editor, what is looked over, and what stays when something goes wrong.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "admin_test.h"

namespace jx::test {
namespace {

namespace fs = std::filesystem;

class Edit : public AdminTest {
protected:
    Edit() { fs::create_directory(home_.file("tmp")); }

    // What odbcadmin gives with these words behind it, where the editor is a script that has the copy's path in $1.
    ProgramResult edit(const std::string& script, const std::string& words = {}) {
        home_.put("editor.sh", script);
        return shell("exec " + shellQuoted(JX_ODBCADMIN) + " edit " + words + " </dev/null");
    }

    // A line of sh, with the script as editor.
    ProgramResult shell(const std::string& line) {
        return runProgram("/bin/sh",
                          {"-c", "cd " + shellQuoted(home_.path()) + "; unset VISUAL XDG_RUNTIME_DIR; export TMPDIR=" +
                                     shellQuoted(home_.file("tmp")) + " EDITOR='sh editor.sh'; " + line});
    }

    // The same where standard input and error are a terminal, on which answers are typed.
    std::string onTerminal(const std::string& script, const std::string& answers) {
        home_.put("editor.sh", script);
        return shell("printf " + shellQuoted(answers) + " | script -qec " +
                     shellQuoted(shellQuoted(JX_ODBCADMIN) + " edit") + " /dev/null")
            .out;
    }

    // The copies that are left.
    std::vector<std::string> left() {
        std::vector<std::string> paths;
        for (const auto& each : fs::recursive_directory_iterator(home_.file("tmp")))
            if (each.is_regular_file())
                paths.push_back(each.path().string());
        return paths;
    }
};

TEST_F(Edit, WritesWhatTheEditorLeaves) {
    const ProgramResult result = edit("sed -i s/db1/db2/ \"$1\"");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(result.out, "Changed " + home_.file(".odbc.ini") + "\n");
    EXPECT_EQ(sources(), with(kSources, "db1", "db2"));
    EXPECT_EQ(edit("true").out, "unchanged: nothing to do\n");
    EXPECT_EQ(edit("sed -i s/plain.so/p.so/ \"$1\"", "--drivers -q").code, 0);
    EXPECT_EQ(drivers(), with(kDrivers, "plain.so", "p.so"));
    EXPECT_TRUE(fs::is_empty(home_.file("tmp")));
}

TEST_F(Edit, TheCopyIsPrivateAndCalledLikeTheFile) {
    EXPECT_EQ(edit("stat -c '%a %n' \"$1\" \"$(dirname \"$1\")\" > seen; : > \"$1.swp\"").code, 0);
    const std::string seen = home_.text("seen");
    EXPECT_EQ(seen.substr(0, 4), "600 ");
    EXPECT_NE(seen.find("/odbc.ini\n700 " + home_.file("tmp") + "/odbcadmin-"), std::string::npos) << seen;
    EXPECT_TRUE(fs::is_empty(home_.file("tmp")));
}

TEST_F(Edit, TheRuntimeDirectoryIsPreferred) {
    fs::create_directory(home_.file("run"));
    home_.put("editor.sh", "echo \"$1\" > seen");
    EXPECT_EQ(shell("XDG_RUNTIME_DIR=\"$PWD/run\" " + shellQuoted(JX_ODBCADMIN) + " edit").code, 0);
    EXPECT_EQ(home_.text("seen").find(home_.file("run/odbcadmin-")), 0U);
    EXPECT_TRUE(fs::is_empty(home_.file("run")));
}

TEST_F(Edit, TheEditorMayHaveArgumentsAndAnyFileIsEdited) {
    home_.put("my servers.ini", "[A]\nx=1\n");
    EXPECT_EQ(shell("VISUAL='sed -i -e \"s/x=1/x= 2/\"' " + shellQuoted(JX_ODBCADMIN) + " edit 'my servers.ini'").code,
              0);
    EXPECT_EQ(home_.text("my servers.ini"), "[A]\nx= 2\n");
    EXPECT_EQ(edit("printf '[B]\\n' > \"$1\"", "new.ini").code, 0);
    EXPECT_EQ(home_.text("new.ini"), "[B]\n");
    EXPECT_EQ(edit("true", "x.ini --drivers").code, 2);
}

TEST_F(Edit, ErrorsWithoutATerminalLeaveTheFileAndKeepTheCopy) {
    const ProgramResult result = edit("sed -i 's/^.Sales./[Sales/' \"$1\"");
    EXPECT_EQ(result.code, 10);
    EXPECT_EQ(sources(), kSources);
    ASSERT_EQ(left().size(), 1U);
    EXPECT_NE(result.err.find("error syntax.unclosed-bracket " + home_.file(".odbc.ini") + ":"), std::string::npos);
    EXPECT_NE(result.err.find(home_.file(".odbc.ini") + " is as it was\n  What you wrote is in " + left()[0] + ".\n"),
              std::string::npos)
        << result.err;
    EXPECT_EQ(fs::file_size(left()[0]), sources().size() - 1);
}

TEST_F(Edit, OnlyErrorsOfThisFileAreAsked) {
    home_.put(".odbcinst.ini", "[open\n");
    EXPECT_EQ(edit("echo '; more' >> \"$1\"", "other.ini").code, 0);
    home_.put(".odbc.ini", "[ODBC]\nTrace=0\n");
    EXPECT_EQ(edit("echo '; more' >> \"$1\"").code, 0);
    EXPECT_EQ(sources(), "[ODBC]\nTrace=0\n; more\n");
}

TEST_F(Edit, OnATerminalItAsks) {
    const std::string spoil = "grep -q open \"$1\" && : > \"$1\" || echo '[open' >> \"$1\"";
    EXPECT_NE(onTerminal(spoil, "d\n").find("Discarded"), std::string::npos);
    EXPECT_EQ(sources(), kSources);
    EXPECT_NE(onTerminal(spoil, "x\ns\n").find("Changed"), std::string::npos);
    EXPECT_EQ(sources(), std::string(kSources) + "[open\n");
    home_.put(".odbc.ini", kSources);
    EXPECT_NE(onTerminal(spoil, "e\n").find("Changed"), std::string::npos);
    EXPECT_EQ(sources(), "");
    EXPECT_EQ(left(), std::vector<std::string>());
}

TEST_F(Edit, AFileThatChangedMeanwhileStaysAndSoDoesTheText) {
    const ProgramResult result = edit("echo '; theirs' >> .odbc.ini; echo '; mine' >> \"$1\"");
    EXPECT_EQ(result.code, 7);
    EXPECT_EQ(sources(), std::string(kSources) + "; theirs\n");
    ASSERT_EQ(left().size(), 1U);
    EXPECT_EQ(result.err, "odbcadmin: " + home_.file(".odbc.ini") +
                              " was changed while you edited it\n  It stays as it is now: compare it with your text, "
                              "and edit it again. What you wrote is in " +
                              left()[0] + ".\n");
}

TEST_F(Edit, ALockedFileStaysAndSoDoesTheText) {
    const int lock = open(home_.file(".odbc.ini.jxlock").c_str(), O_CREAT | O_RDWR | O_CLOEXEC, 0600);
    ASSERT_EQ(flock(lock, LOCK_EX), 0);
    EXPECT_EQ(edit("echo '; mine' >> \"$1\"", "--lock-timeout 0").code, 8);
    close(lock);
    EXPECT_EQ(sources(), kSources);
    EXPECT_EQ(left().size(), 1U);
}

TEST_F(Edit, WhatIsNoEditingChangesNothing) {
    for (const char* script : {"echo >> \"$1\"; exit 3", "rm \"$1\"", "rm \"$1\"; mkfifo \"$1\"", "kill -KILL $$"}) {
        SCOPED_TRACE(script);
        EXPECT_EQ(edit(script).code, 1);
        EXPECT_EQ(sources(), kSources);
        EXPECT_TRUE(fs::is_empty(home_.file("tmp")));
    }
    EXPECT_EQ(shell("unset EDITOR; " + shellQuoted(JX_ODBCADMIN) + " edit </dev/null").code, 2);
    EXPECT_EQ(shell("TMPDIR=/proc " + shellQuoted(JX_ODBCADMIN) + " edit").code, 7);
    unlink(home_.file(".odbc.ini").c_str());
    ASSERT_EQ(mkfifo(home_.file(".odbc.ini").c_str(), 0600), 0);
    EXPECT_EQ(edit("true").code, 7);
}

TEST_F(Edit, APreviewWritesNothing) {
    const ProgramResult result = edit("sed -i -e s/geheim/neu/ -e s/db1/db2/ \"$1\"", "--dry-run");
    EXPECT_EQ(result.code, 0);
    EXPECT_NE(result.out.find("+Server = db2\n"), std::string::npos);
    EXPECT_EQ(result.out.find("neu"), std::string::npos);
    EXPECT_EQ(edit("echo >> \"$1\"", "--check").code, 9);
    EXPECT_EQ(sources(), kSources);
    EXPECT_TRUE(fs::is_empty(home_.file("tmp")));
}

// The program's own number, from within the editor.
constexpr const char* kSignalTheProgram =
    "p=$PPID\n"
    "grep -q odbcadmin /proc/$p/comm || p=$(cut -d' ' -f4 /proc/$p/stat)\n"
    "echo '; mine' >> \"$1\"\n";

TEST_F(Edit, ASignalTakesTheCopyAlong) {
    for (const std::string name : {"TERM", "HUP"}) {
        SCOPED_TRACE(name);
        const ProgramResult result = edit(kSignalTheProgram + ("kill -" + name) + " $p\nexec sleep 60\n");
        EXPECT_EQ(result.code, -1);
        EXPECT_EQ(sources(), kSources);
        EXPECT_TRUE(fs::is_empty(home_.file("tmp")));
    }
}

TEST_F(Edit, WhatIsTypedInTheEditorIsTheEditorsBusiness) {
    EXPECT_EQ(edit(std::string(kSignalTheProgram) + "kill -INT $p\nkill -QUIT $p\n").code, 0);
    EXPECT_EQ(sources(), std::string(kSources) + "; mine\n");
}

}  // namespace
}  // namespace jx::test
