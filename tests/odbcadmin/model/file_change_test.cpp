// Changes of one file: composed, read back, written or shown.
#include "odbcadmin/model/file_change.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "model_fixture.h"

namespace jx::model::test {
namespace {

class FileChangeTest : public ModelTest {
protected:
    // Composes a change of the user's data sources and carries it out.
    ChangeResult write(const std::function<void(FileChange&)>& compose, const ChangeWay& way = {}) {
        FileChange change(".odbc.ini", way);
        compose(change);
        return change.finish();
    }
};

TEST_F(FileChangeTest, SetsAndErasesInOneChange) {
    const ChangeResult result = write([](FileChange& change) {
        EXPECT_EQ(change.before().value("Sales", "Server"), "db1");
        change.set("Sales", {{"Server", "db2"}, {"New", "a=b;c # d"}});
        change.erase("Sales", "PWD");
        change.eraseSection("ODBC");
    });
    EXPECT_EQ(told(result.reason), "");
    ASSERT_EQ(result.files.size(), 1U);
    EXPECT_EQ(result.files[0].path, home_.file(".odbc.ini"));
    EXPECT_EQ(result.files[0].difference, "");
    EXPECT_EQ(sources(), with(with(kSources, "Server = db1\nPWD=geheim\n", "Server = db2\nNew=a=b;c # d\n"),
                              "[ODBC]\nTrace=0\n", ""));
}

TEST_F(FileChangeTest, APreviewShowsTheDifferenceWithSecretsMasked) {
    ChangeWay way;
    way.writing = ChangeWay::Writing::never;
    const auto compose = [](FileChange& change) { change.set("Accounts", "PWD", "neu"); };
    const std::string head =
        "--- ~/.odbc.ini\n+++ ~/.odbc.ini\n@@ -11,6 +11,7 @@\n \n [Accounts]\n "
        "Driver=/opt/libplain.so\n+PWD=";
    const std::string rest = "\n \n [ODBC]\n Trace=0\n";
    EXPECT_EQ(replaced(write(compose, way).files.at(0).difference, home_.path(), "~"), head + "********" + rest);
    way.secrets = ChangeWay::Secrets::shown;
    EXPECT_EQ(replaced(write(compose, way).files.at(0).difference, home_.path(), "~"), head + "neu" + rest);
    EXPECT_EQ(sources(), kSources);
}

TEST_F(FileChangeTest, TheFirstThingThatGoesWrongIsTheReasonAndNothingIsWritten) {
    const std::string advice = " | ~/.odbc.ini could not give it back as it is; use another one.";
    const struct {
        std::string section, key, value, told;
    } rows[] = {
        {"", "k", "v", "The name \"\" cannot be stored: it is empty"},
        {"a ;b", "k", "v", "The name \"a ;b\" cannot be stored: a blank and ; begin a comment in it"},
        {"a #b", "k", "v", "The name \"a #b\" cannot be stored: a blank and # begin a comment in it"},
        {" a", "k", "v", "The name \" a\" cannot be stored: it begins or ends with a blank"},
        {"a\rb", "k", "v", "The name \"a\rb\" cannot be stored: it holds a line break"},
        {"a", "", "v", "The key \"\" cannot be stored: it is empty"},
        {"a", "k=l", "v", "The key \"k=l\" cannot be stored: it holds ="},
        {"a", "[k", "v", "The key \"[k\" cannot be stored: it begins with ["},
        {"a", ";k", "v", "The key \";k\" cannot be stored: it begins with ;"},
        {"a", "#k", "v", "The key \"#k\" cannot be stored: it begins with #"},
        {"a", "k ", "v", "The key \"k \" cannot be stored: it begins or ends with a blank"},
        {"a", "k", "v\n", "This value of k cannot be stored: it holds a line break"},
        {"a", "k", "\tv", "This value of k cannot be stored: it begins or ends with a blank"},
        {"a", "k", std::string("v\0w", 3), "This value of k cannot be stored: it holds a NUL"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.told);
        const ChangeResult result = write([&](FileChange& change) {
            change.set("Sales", "Server", "db2");
            change.set(row.section, row.key, row.value);
            change.set("also = wrong", "k\n", "v");
            EXPECT_TRUE(change.reason());
        });
        EXPECT_EQ(told(result.reason), "refused: " + row.told + advice);
        EXPECT_TRUE(result.files.empty());
        EXPECT_EQ(sources(), kSources);
    }
}

TEST_F(FileChangeTest, SizesAtTheStoresEdgesComeBack) {
    for (const std::size_t size : {0U, 1U, 1023U, 1024U, 32767U, 32768U, 65535U, 70000U}) {
        SCOPED_TRACE(size);
        const std::string value(size, 'v');
        EXPECT_EQ(told(write([&](FileChange& change) { change.set("Big", "Key", value); }).reason), "");
        EXPECT_EQ(IniView::read(".odbc.ini")->value("Big", "Key"), value);
    }
}

TEST_F(FileChangeTest, OfSeveralValuesForAKeyTheLastCounts) {
    EXPECT_EQ(told(write([](FileChange& change) {
                       change.set("New", "Key", "1");
                       change.set("Gone", "Key", "1");
                       change.set("NEW", "KEY", "2");
                       change.eraseSection("gone");
                   }).reason),
              "");
    EXPECT_EQ(sources(), std::string(kSources) + "\n[New]\nKey=2\n\n");
}

TEST_F(FileChangeTest, EraseNeverTrimsANameToAnotherOne) {
    EXPECT_EQ(told(write([](FileChange& change) { change.eraseSection(" Sales"); }).reason),
              "refused: The name \" Sales\" cannot be stored: it begins or ends with a blank | ~/.odbc.ini could not "
              "give it back as it is; use another one.");
    EXPECT_EQ(sources(), kSources);
}

TEST_F(FileChangeTest, WhatChangesNothingLeavesTheFileAlone) {
    struct stat before {};
    stat(home_.file(".odbc.ini").c_str(), &before);
    const ChangeResult result = write([](FileChange& change) {
        change.set("sales", "SERVER", "db1");
        change.erase("Sales", "Nothing");
        change.eraseSection("Nothing");
    });
    EXPECT_EQ(told(result.reason), "");
    EXPECT_TRUE(result.files.empty());
    struct stat after {};
    stat(home_.file(".odbc.ini").c_str(), &after);
    EXPECT_EQ(after.st_ino, before.st_ino);
}

TEST_F(FileChangeTest, WithoutFinishNothingIsWritten) {
    {
        FileChange change(".odbc.ini", ChangeWay());
        change.set("Sales", "Server", "db2");
    }
    EXPECT_EQ(sources(), kSources);
    EXPECT_EQ(home_.names(), (std::vector<std::string>{".odbc.ini", ".odbcinst.ini"}));
}

TEST_F(FileChangeTest, AClientGivesUpWithAReasonOfItsOwn) {
    const Reason own{Reason::Kind::exists, "it is there", "look"};
    const ChangeResult result = write([&](FileChange& change) {
        change.fail(Reason());
        change.set("Sales", "Server", "db2");
        change.fail(own);
        change.fail({Reason::Kind::failed, "later", ""});
    });
    EXPECT_EQ(result.reason, own);
    EXPECT_EQ(sources(), kSources);
}

TEST_F(FileChangeTest, AFileThatCannotBeHadGivesItsReason) {
    const ChangeWay way;
    FileChange change(home_.file("none/x.ini"), way);
    EXPECT_TRUE(change.before().sections().empty());
    change.set("a", "b", "c");
    const std::string reason = told(change.finish().reason);
    EXPECT_TRUE(reason.starts_with("file trouble: Cannot ")) << reason;
    EXPECT_TRUE(reason.ends_with("~/none/.x.ini.jxlock: No such file or directory | Make the directory first."))
        << reason;
}

TEST_F(FileChangeTest, TheClientIsAskedToWaitForTheLock) {
    std::vector<std::string> waitedFor;
    ChangeWay way;
    way.aroundWait = [&](const std::string& path, const std::function<void()>& wait) {
        waitedFor.push_back(path);
        wait();
    };
    write([](FileChange& change) { change.set("Sales", "Server", "db2"); }, way);
    EXPECT_EQ(waitedFor, (std::vector<std::string>{home_.file(".odbc.ini")}));
    way.writing = ChangeWay::Writing::never;
    write([](FileChange& change) { change.set("Sales", "Server", "db3"); }, way);
    EXPECT_EQ(waitedFor.size(), 1U);
}

// Each adds its keys one by one, in changes of their own: none is lost.
TEST_F(FileChangeTest, TwoProcessesLoseNothingOfEachOther) {
    constexpr int kKeys = 40;
    const auto writeKeys = [&](const std::string& who) {
        for (int i = 0; i < kKeys; ++i)
            write([&](FileChange& change) { change.set("Shared", who + std::to_string(i), who); });
    };
    const pid_t child = fork();
    if (child == 0) {
        writeKeys("child");
        _exit(0);
    }
    writeKeys("parent");
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(IniView::read(".odbc.ini")->section("Shared")->entries.size(), 2U * kKeys);
}

TEST_F(FileChangeTest, ResultsAddUp) {
    ChangeResult whole{{}, {{"/a", ""}}};
    EXPECT_TRUE(whole.add({{}, {{"/b", "diff"}}}).isDone());
    EXPECT_EQ(pathsOf(whole), (std::vector<std::string>{"/a", "/b"}));
    EXPECT_FALSE(whole.add({{Reason::Kind::failed, "no", ""}}).isDone());
    EXPECT_EQ(pathsOf(whole), (std::vector<std::string>{"/a", "/b"}));
}

}  // namespace
}  // namespace jx::model::test
