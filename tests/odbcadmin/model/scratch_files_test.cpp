// Calls that write the files by themselves, on copies of them.
#include "odbcadmin/model/scratch_files.h"

#include <odbcinst.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>

#include "model_fixture.h"

namespace jx::model::test {
namespace {

class ScratchFilesTest : public ModelTest {
protected:
    static ChangeWay way(ChangeWay::Writing writing, Scope scope = Scope::user) {
        ChangeWay way;
        way.writing = writing;
        way.scope = scope;
        return way;
    }

    // Stands for a library that writes on its own account.
    static void write() { SQLWriteDSNToIni("New", "Plain"); }

    // The two files as the object gets them.
    std::vector<ScratchFiles::Original> originals() const {
        return {{FileKind::drivers, home_.file(".odbcinst.ini"), kDrivers},
                {FileKind::dataSources, home_.file(".odbc.ini"), kSources}};
    }
};

TEST_F(ScratchFilesTest, APreviewLeavesTheFilesAloneAndShowsWhatWouldBe) {
    std::string place;
    const ChangeResult changes = changeByCopies(way(ChangeWay::Writing::never), [&](const ScratchFiles&) {
        place = std::filesystem::path(getenv("ODBCINI")).parent_path();
        EXPECT_EQ(place, std::filesystem::path(getenv("ODBCINSTINI")).parent_path());
        write();
    });
    EXPECT_EQ(told(changes.reason), "");
    ASSERT_EQ(pathsOf(changes), (std::vector<std::string>{home_.file(".odbc.ini")}));
    EXPECT_EQ(replaced(changes.files[0].difference, home_.path(), "~"), R"(--- ~/.odbc.ini
+++ ~/.odbc.ini
@@ -2,6 +2,7 @@
 [ODBC Data Sources]
 Sales=Plain
 Accounts=Plain
+New=Plain
 
 ; the shop
 [Sales]
@@ -14,3 +15,6 @@
 
 [ODBC]
 Trace=0
+
+[New]
+Driver=/opt/libplain.so
)");
    EXPECT_EQ(sources(), kSources);
    EXPECT_EQ(getenv("ODBCINI"), nullptr);
    EXPECT_FALSE(std::filesystem::exists(place));
}

TEST_F(ScratchFilesTest, WrittenForGoodTheFilesThatChangedAreNamed) {
    const ChangeResult changes = changeByCopies(way(ChangeWay::Writing::now), [](const ScratchFiles&) { write(); });
    EXPECT_EQ(told(changes.reason), "");
    EXPECT_EQ(pathsOf(changes), (std::vector<std::string>{home_.file(".odbc.ini")}));
    EXPECT_EQ(sources(),
              with(kSources, "Accounts=Plain\n", "Accounts=Plain\nNew=Plain\n") + "\n[New]\nDriver=/opt/libplain.so\n");
    EXPECT_EQ(getenv("ODBCINI"), nullptr);
}

TEST_F(ScratchFilesTest, TheSystemsFilesAreChangedAndNewOnesCanBeReadByAll) {
    const mode_t mask = umask(S_IWGRP | S_IWOTH);
    home_.putSystem("odbcinst.ini", kDrivers);
    const ChangeResult changes =
        changeByCopies(way(ChangeWay::Writing::now, Scope::system), [](const ScratchFiles&) { write(); });
    umask(mask);
    EXPECT_EQ(told(changes.reason), "");
    EXPECT_EQ(pathsOf(changes), (std::vector<std::string>{home_.systemFile("odbc.ini")}));
    EXPECT_EQ(home_.systemText("odbc.ini"), "[ODBC Data Sources]\nNew=Plain\n\n[New]\nDriver=/opt/libplain.so\n");
    struct stat state {};
    EXPECT_EQ(stat(home_.systemFile("odbc.ini").c_str(), &state), 0);
    EXPECT_EQ(state.st_mode & 0777U, 0644U);
    EXPECT_EQ(sources(), kSources);
}

TEST_F(ScratchFilesTest, OtherWritersWaitAndWhatTheyWroteStays) {
    const long before = jxIniSetLockWait(0);
    const ChangeResult changes = changeByCopies(way(ChangeWay::Writing::now), [&](const ScratchFiles&) {
        const ChangeWay other;
        EXPECT_EQ(told(FileChange(home_.file(".odbcinst.ini"), other).reason()).substr(0, 6), "locked");
        EXPECT_EQ(told(FileChange(home_.file(".odbc.ini"), other).reason()).substr(0, 6), "locked");
    });
    jxIniSetLockWait(before);
    EXPECT_TRUE(changes.isDone() && changes.files.empty());
}

TEST_F(ScratchFilesTest, AFileThatCannotBeLockedIsTheReasonAndNothingIsCalled) {
    for (const char* file : {".odbc.ini", ".odbcinst.ini"}) {
        SCOPED_TRACE(file);
        std::filesystem::create_directory(home_.file(std::string(file) + ".jxlock"));
        const ChangeResult changes =
            changeByCopies(way(ChangeWay::Writing::now), [](const ScratchFiles&) { ADD_FAILURE(); });
        EXPECT_NE(told(changes.reason).find(std::string("~/") + file), std::string::npos) << told(changes.reason);
        std::filesystem::remove(home_.file(std::string(file) + ".jxlock"));
    }
}

TEST_F(ScratchFilesTest, OneFileForBothIsRefused) {
    setenv("ODBCINI", home_.file(".odbcinst.ini").c_str(), 1);
    const ChangeResult changes =
        changeByCopies(way(ChangeWay::Writing::now), [](const ScratchFiles&) { ADD_FAILURE(); });
    unsetenv("ODBCINI");
    EXPECT_EQ(told(changes.reason),
              "refused: Drivers and data sources have the same file here: ~/.odbcinst.ini | "
              "odbcadmin paths shows which variable makes it so.");
}

TEST_F(ScratchFilesTest, ACopyThatCannotBeReadChangesNothing) {
    const ChangeResult changes = changeByCopies(way(ChangeWay::Writing::now), [](const ScratchFiles&) {
        std::filesystem::remove(getenv("ODBCINI"));
        std::filesystem::create_directory(getenv("ODBCINI"));
    });
    EXPECT_FALSE(changes.isDone());
    EXPECT_EQ(sources(), kSources);
    EXPECT_EQ(drivers(), kDrivers);
}

TEST_F(ScratchFilesTest, AbsentFilesStayAbsentAndVariablesComeBack) {
    unlink(home_.file(".odbc.ini").c_str());
    setenv("ODBCINSTINI", home_.file(".odbcinst.ini").c_str(), 1);
    const ChangeResult changes = changeByCopies(way(ChangeWay::Writing::never), [](const ScratchFiles&) {
        EXPECT_FALSE(std::filesystem::exists(getenv("ODBCINI")));
        EXPECT_TRUE(std::filesystem::exists(getenv("ODBCINSTINI")));
        write();
    });
    EXPECT_EQ(changes.files.size(), 1U);
    EXPECT_TRUE(changeByCopies(way(ChangeWay::Writing::now), [](const ScratchFiles&) {}).files.empty());
    EXPECT_EQ(sources(), "(absent)");
    EXPECT_STREQ(getenv("ODBCINSTINI"), home_.file(".odbcinst.ini").c_str());
    unsetenv("ODBCINSTINI");
}

TEST_F(ScratchFilesTest, ASentenceAboutACopyNamesTheFile) {
    const ScratchFiles copies(originals());
    EXPECT_EQ(copies.inWordsOfOriginals(std::string(getenv("ODBCINI")) + ": no, not " + getenv("ODBCINSTINI")),
              home_.file(".odbc.ini") + ": no, not " + home_.file(".odbcinst.ini"));
}

TEST_F(ScratchFilesTest, AProcessThatIsEndedLeavesNoCopyAndOthersCannotReadIt) {
    for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) {
        SCOPED_TRACE(number);
        std::filesystem::create_directory(home_.file("tmp"));
        const pid_t child = fork();
        if (child == 0) {
            setenv("TMPDIR", home_.file("tmp").c_str(), 1);
            const ScratchFiles copies(originals());
            struct stat state {};
            if (stat(getenv("ODBCINI"), &state) != 0 || (state.st_mode & 0777U) != 0600)
                _exit(1);
            raise(number);
            _exit(2);
        }
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == number) << status;
        EXPECT_TRUE(std::filesystem::is_empty(home_.file("tmp")));
    }
}

TEST_F(ScratchFilesTest, WithoutRoomForCopiesThereIsAReason) {
    const char* old = getenv("TMPDIR");
    const std::string kept = old == nullptr ? "" : old;
    setenv("TMPDIR", home_.file("none").c_str(), 1);
    {
        const ScratchFiles copies(originals());
        EXPECT_EQ(told(copies.trouble()),
                  "file trouble: Cannot make a directory for temporary files: No such file or directory | Name a "
                  "directory for "
                  "them in TMPDIR.");
    }
    if (old == nullptr)
        unsetenv("TMPDIR");
    else
        setenv("TMPDIR", kept.c_str(), 1);
}

}  // namespace
}  // namespace jx::model::test
