// One change of a file: the order of its calls, its edits, and what it leaves untouched.
#include "jxutl/ini/ini_change.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "child_process.h"
#include "faulty_files.h"
#include "ini_change_fixture.h"
#include "recording_files.h"

namespace jx::ini::test {
namespace {

using Trace = std::vector<std::string>;

// ---- the protocol ----

TEST_F(IniChangeTest, MakesTheDocumentedCallsInTheirOrder) {
    home_.put("x.ini", "[A]\nk=1\n");
    RecordingFiles files;
    const InUse inUse(files);
    ASSERT_TRUE(write(file_, "A", "k", "2"));
    const std::string directory = home_.path().substr(home_.path().rfind('/') + 1);
    const Trace expected = {
        // 1 open the directory, find the target
        "open " + directory, "lookAtName x.ini",
        // 2 lock
        "open .x.ini.jxlock", "lookAtOpen .x.ini.jxlock", "lock .x.ini.jxlock", "lookAtName .x.ini.jxlock",
        "write .x.ini.jxlock",
        // 3 read, 4 edit
        "open x.ini", "lookAtOpen x.ini", "read x.ini", "read x.ini", "close x.ini",
        // 5 write the new file and flush it
        "open .", "open .x.ini.jxnew-N", "lookAtOpen .x.ini.jxnew-N", "write .x.ini.jxnew-N", "flush .x.ini.jxnew-N",
        // 6 put it in place, remove the old one
        "lookAtName x.ini", "exchange .x.ini.jxnew-N x.ini", "lookAtName .x.ini.jxnew-N", "remove .x.ini.jxnew-N",
        "close .x.ini.jxnew-N",
        // 7 unlock
        "lookAtName .x.ini.jxlock", "remove .x.ini.jxlock", "close .x.ini.jxlock",
        // 8 flush the directory
        "flush .", "close .", "close " + directory};
    Trace calls = files.trace();
    // Root also asks whose the directory is, to let that user take up the lock.
    std::erase(calls, "lookAtOpen " + directory);
    EXPECT_EQ(calls, expected);
}

TEST_F(IniChangeTest, KeepsOwnerAndModeBetweenTheDocumentedSteps) {
    putText(file_, "[A]\nk=1\n", 0644);
    const bool isRoot = ::geteuid() == 0;
    ASSERT_TRUE(!isRoot || ::chown(file_.c_str(), kNobody, kNobody) == 0);
    RecordingFiles files;
    const InUse inUse(files);
    ASSERT_TRUE(write(file_, "A", "k", "2"));
    Trace changes;
    for (const std::string& call : files.trace())
        if (call.ends_with(".x.ini.jxnew-N") && !call.starts_with("look"))
            changes.push_back(call);
    Trace expected = {"open .x.ini.jxnew-N",    "setOwner .x.ini.jxnew-N", "write .x.ini.jxnew-N",
                      "setMode .x.ini.jxnew-N", "flush .x.ini.jxnew-N",    "remove .x.ini.jxnew-N",
                      "close .x.ini.jxnew-N"};
    if (!isRoot)
        std::erase(expected, "setOwner .x.ini.jxnew-N");
    EXPECT_EQ(changes, expected);
}

TEST_F(IniChangeTest, ReadsOnlyOnceItHasTheLock) {
    home_.put("x.ini", "[A]\na=1\n");
    // Another writer's change lands while this one waits for the lock.
    class Waiting : public WatchedFiles {
    public:
        explicit Waiting(std::function<void()> other) : other_(std::move(other)) {}
        void pause(std::int64_t milliseconds) override {
            if (!std::exchange(done_, true))
                other_();
            WatchedFiles::pause(milliseconds);
        }

    private:
        const std::function<void()> other_;
        bool done_ = false;
    };
    int fd = ::open(lock_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_EQ(::flock(fd, LOCK_EX), 0);
    Waiting files([&] {
        home_.put("x.ini", "[A]\na=1\nb=2\n");
        ASSERT_EQ(::unlink(lock_.c_str()), 0);
        ::close(fd);
    });
    const InUse inUse(files);
    ASSERT_TRUE(write(file_, "A", "c", "3"));
    EXPECT_EQ(home_.text("x.ini"), "[A]\na=1\nb=2\nc=3\n");
}

TEST_F(IniChangeTest, HoldsTheLockFromBeginToCommit) {
    FaultyFiles clock(1'000'000, Fail::once, EIO);
    const InUse inUse(clock);
    IniChange first;
    ASSERT_TRUE(first.begin({file_}));
    EXPECT_FALSE(write(file_, "B", "k", "2"));
    expectFailure(JxIniStepLock, ETIMEDOUT, lock_);
    EXPECT_EQ(first.apply("A", "k", "1"), Edit::changed);
    EXPECT_TRUE(first.commit());
    EXPECT_TRUE(write(file_, "B", "k", "2"));
    EXPECT_EQ(home_.text("x.ini"), "[A]\nk=1\n\n[B]\nk=2\n");
}

TEST_F(IniChangeTest, SeveralEditsArriveTogetherOrNotAtAll) {
    home_.put("x.ini", "[A]\nk=1\n");
    {
        IniChange given;
        ASSERT_TRUE(given.begin({file_}));
        given.apply("A", "k", "2");
        given.apply("B", "k", "3");
    }
    EXPECT_EQ(home_.text("x.ini"), "[A]\nk=1\n");
    EXPECT_EQ(home_.names(), Names{"x.ini"});
    IniChange kept;
    ASSERT_TRUE(kept.begin({file_}));
    kept.apply("A", "k", "2");
    kept.apply("B", "k", "3");
    EXPECT_EQ(kept.text(), "[A]\nk=2\n\n[B]\nk=3\n");
    EXPECT_EQ(home_.text("x.ini"), "[A]\nk=1\n");
    ASSERT_TRUE(kept.commit());
    EXPECT_EQ(home_.text("x.ini"), "[A]\nk=2\n\n[B]\nk=3\n");
}

TEST_F(IniChangeTest, APreviewDoesNotLockAndCannotBeCommitted) {
    home_.put("x.ini", "[A]\nk=1\n");
    IniChange first;
    ASSERT_TRUE(first.begin({file_}));
    IniChange preview;
    ASSERT_TRUE(preview.preview({file_}));
    EXPECT_EQ(preview.apply("A", "k", "2"), Edit::changed);
    EXPECT_EQ(preview.text(), "[A]\nk=2\n");
    EXPECT_FALSE(preview.commit());
    expectFailure(JxIniStepArgument, EPERM, file_);
    EXPECT_EQ(home_.text("x.ini"), "[A]\nk=1\n");
    EXPECT_EQ(home_.names(), (Names{".x.ini.jxlock", "x.ini"}));
    EXPECT_TRUE(first.discard());
    EXPECT_EQ(home_.names(), Names{"x.ini"});
}

TEST_F(IniChangeTest, APreviewNeedsNoRightToWrite) {
    putText(file_, "[A]\nk=1\n", 0644);
    ASSERT_EQ(::chmod(home_.path().c_str(), 0755), 0);
    EXPECT_TRUE(passesAsNobody([this] {
        IniChange preview;
        EXPECT_TRUE(preview.preview({file_}));
        EXPECT_EQ(preview.text(), "[A]\nk=1\n");
    }));
}

TEST_F(IniChangeTest, ASecondCommitFails) {
    IniChange change;
    ASSERT_TRUE(change.begin({file_}));
    change.apply("A", "k", "1");
    ASSERT_TRUE(change.commit());
    EXPECT_FALSE(change.commit());
    expectFailure(JxIniStepArgument, EPERM, file_);
}

// ---- unchanged files ----

TEST_F(IniChangeTest, AChangeThatChangesNothingLeavesTheFileUntouched) {
    struct Row {
        const char* what;
        const char* section;
        const char* key;
        const char* value;
    };
    constexpr Row kRows[] = {{"the stored value", "A", "k", "1"},   {"in another case", "a", "K", "1"},
                             {"an absent key", "A", "no", nullptr}, {"an absent section", "No", nullptr, nullptr},
                             {"a key of it", "No", "k", nullptr},   {"an empty key", "A", "", "1"}};
    home_.put("x.ini", "[A]\nk=1\n");
    const Identity before(file_);
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.what);
        EXPECT_TRUE(write(file_, row.section, row.key, row.value));
        EXPECT_TRUE(before == Identity(file_));
        EXPECT_EQ(home_.names(), Names{"x.ini"});
    }
}

TEST_F(IniChangeTest, AChangeThatChangesNothingMakesNoFile) {
    EXPECT_TRUE(write(file_, "A", "k", nullptr));
    EXPECT_TRUE(write(file_, "A", nullptr, nullptr));
    EXPECT_EQ(home_.names(), Names{});
}

TEST_F(IniChangeTest, AnUnchangedFileIsNeitherWrittenNorFlushed) {
    home_.put("x.ini", "[A]\nk=1\n");
    RecordingFiles files;
    const InUse inUse(files);
    ASSERT_TRUE(write(file_, "A", "k", "1"));
    for (const std::string& call : files.trace())
        EXPECT_FALSE(call.ends_with("jxnew-N") || call.starts_with("flush")) << call;
    EXPECT_EQ(files.trace().end()[-2], "close .x.ini.jxlock");
}

// ---- names without a directory ----

TEST_F(IniChangeTest, WritesANameInTheCurrentDirectoryAndInTheRoot) {
    EXPECT_TRUE(passesInChild([this] {
        ASSERT_EQ(::chdir(home_.path().c_str()), 0);
        EXPECT_TRUE(write("x.ini", "A", "k", "1"));
    }));
    EXPECT_EQ(home_.text("x.ini"), "[A]\nk=1\n");
    EXPECT_EQ(home_.names(), Names{"x.ini"});
}

}  // namespace
}  // namespace jx::ini::test
