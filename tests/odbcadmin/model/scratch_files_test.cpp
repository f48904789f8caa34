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
    static ChangeWay never() {
        ChangeWay way;
        way.writing = ChangeWay::Writing::never;
        return way;
    }

    // Stands for a library that writes on its own account.
    static void write() { SQLWriteDSNToIni("New", "Plain"); }
};

TEST_F(ScratchFilesTest, APreviewLeavesTheFilesAloneAndShowsWhatWouldBe) {
    std::string place;
    {
        const ChangeWay way = never();
        const ScratchFiles files(way);
        EXPECT_EQ(told(files.trouble()), "");
        place = std::filesystem::path(getenv("ODBCINI")).parent_path();
        EXPECT_EQ(place, std::filesystem::path(getenv("ODBCINSTINI")).parent_path());
        EXPECT_TRUE(files.changes().files.empty());
        write();
        const ChangeResult changes = files.changes();
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
    }
    EXPECT_EQ(sources(), kSources);
    EXPECT_EQ(getenv("ODBCINI"), nullptr);
    EXPECT_FALSE(std::filesystem::exists(place));
}

TEST_F(ScratchFilesTest, WrittenForGoodTheFilesThatChangedAreNamed) {
    const ChangeWay way;
    const ScratchFiles files(way);
    EXPECT_EQ(getenv("ODBCINI"), nullptr);
    write();
    EXPECT_EQ(pathsOf(files.changes()), (std::vector<std::string>{home_.file(".odbc.ini")}));
    EXPECT_NE(sources(), kSources);
}

TEST_F(ScratchFilesTest, AbsentFilesStayAbsentAndVariablesComeBack) {
    unlink(home_.file(".odbc.ini").c_str());
    setenv("ODBCINSTINI", home_.file(".odbcinst.ini").c_str(), 1);
    {
        const ChangeWay way = never();
        const ScratchFiles files(way);
        EXPECT_FALSE(std::filesystem::exists(getenv("ODBCINI")));
        EXPECT_TRUE(std::filesystem::exists(getenv("ODBCINSTINI")));
        write();
        EXPECT_EQ(files.changes().files.size(), 1U);
    }
    EXPECT_EQ(sources(), "(absent)");
    EXPECT_STREQ(getenv("ODBCINSTINI"), home_.file(".odbcinst.ini").c_str());
}

TEST_F(ScratchFilesTest, AProcessThatIsEndedLeavesNoCopyAndOthersCannotReadIt) {
    for (const int number : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) {
        SCOPED_TRACE(number);
        std::filesystem::create_directory(home_.file("tmp"));
        const pid_t child = fork();
        if (child == 0) {
            setenv("TMPDIR", home_.file("tmp").c_str(), 1);
            const ChangeWay way = never();
            const ScratchFiles files(way);
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
        const ChangeWay way = never();
        const ScratchFiles files(way);
        EXPECT_EQ(told(files.trouble()),
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
