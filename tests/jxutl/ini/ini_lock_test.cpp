// The lock of a file: who gets it, who waits, and what may be at its name.
#include "jxutl/ini/ini_lock.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <climits>
#include <filesystem>
#include <functional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "child_process.h"
#include "disk_check.h"
#include "faulty_files.h"
#include "ini_lock_fixture.h"
#include "jxutl/thread/failure.h"

namespace jx::ini::test {
namespace {

std::string describeLast() {
    return describe(lastFailure());
}

TEST_F(IniLockTest, MakesALockFileForTheOwnerOnly) {
    const Umask open(0);
    TestLock lock;
    ASSERT_TRUE(lock.take(target_));
    EXPECT_EQ(home_.names(), std::vector<std::string>{".x.ini.jxlock"});
    EXPECT_EQ(modeOf(lock_), 0600U);
    EXPECT_EQ(textOf(lock_), kLockText);
    EXPECT_TRUE(lock.withdraw());
    EXPECT_EQ(home_.names(), std::vector<std::string>{});
}

TEST_F(IniLockTest, AddsNoDotToANameThatBeginsWithOne) {
    TestLock lock;
    ASSERT_TRUE(lock.take(home_.file(".odbc.ini")));
    EXPECT_EQ(home_.names(), std::vector<std::string>{".odbc.ini.jxlock"});
}

TEST_F(IniLockTest, MakesThatModeUnderAnyUmask) {
    for (const mode_t mask : {0000U, 0022U, 0077U, 0277U, 0777U}) {
        SCOPED_TRACE(mask);
        const Umask set(mask);
        TestLock lock;
        ASSERT_TRUE(lock.take(target_));
        EXPECT_EQ(modeOf(lock_), 0600U);
    }
    EXPECT_TRUE(passesAsNobody([] {}));
}

TEST_F(IniLockTest, LeavingScopeRemovesTheLockFile) {
    {
        TestLock lock;
        ASSERT_TRUE(lock.take(target_));
    }
    EXPECT_EQ(home_.names(), std::vector<std::string>{});
}

TEST_F(IniLockTest, TakesUpTheFileAKilledWriterLeft) {
    for (const char* text : {"", "jxodbc", kLockText, "jxodbc lock\nof another version"}) {
        SCOPED_TRACE(text);
        putText(lock_, text);
        const ino_t left = stateOf(lock_).st_ino;
        TestLock lock;
        ASSERT_TRUE(lock.take(target_));
        EXPECT_EQ(stateOf(lock_).st_ino, left);
        EXPECT_TRUE(lock.withdraw());
        EXPECT_EQ(home_.names(), std::vector<std::string>{});
    }
}

// Zeros are what a power cut may leave of a line that was not flushed.
TEST_F(IniLockTest, TakesUpAFileThatAPowerCutLeft) {
    putText(lock_, std::string(std::string_view(kLockText).size(), '\0'));
    TestLock lock;
    EXPECT_TRUE(lock.take(target_));
}

TEST_F(IniLockTest, RemovesTheNewFileAKilledWriterLeft) {
    std::string newFile;
    {
        TestLock killed;
        ASSERT_TRUE(killed.take(target_));
        newFile = killed.newFile();
        ASSERT_EQ(::link(lock_.c_str(), home_.file("kept").c_str()), 0);
    }
    ASSERT_EQ(::rename(home_.file("kept").c_str(), lock_.c_str()), 0);
    putText(newFile, "half of a te");
    TestLock lock;
    ASSERT_TRUE(lock.take(target_));
    EXPECT_EQ(lock.newFile(), newFile);
    EXPECT_EQ(home_.names(), std::vector<std::string>{".x.ini.jxlock"});
}

TEST_F(IniLockTest, ALockFileMadeAnewHasAnotherNewFile) {
    TestLock robbed;
    ASSERT_TRUE(robbed.take(target_));
    ASSERT_EQ(::unlink(lock_.c_str()), 0);
    TestLock second;
    ASSERT_TRUE(second.take(target_));
    EXPECT_NE(robbed.newFile(), second.newFile());
}

// A look by name can meet a lock file that its holder removes in that moment: it has no name left.
class VanishingLock : public WatchedFiles {
public:
    explicit VanishingLock(std::string lock) : lock_(std::move(lock)) {}

    int lookAtName(int directory, const char* name, struct stat* state) override {
        const int result = WatchedFiles::lookAtName(directory, name, state);
        if (lock_.ends_with(name) && std::exchange(isThere_, false) && result == 0) {
            state->st_nlink = 0;
            EXPECT_EQ(::unlink(lock_.c_str()), 0);
        }
        return result;
    }

private:
    std::string lock_;
    bool isThere_ = true;
};

TEST_F(IniLockTest, ALockFileThatVanishesWhileItIsLookedAtIsMadeAnew) {
    putText(lock_, "jxodbc lock\n");
    ASSERT_EQ(::chmod(lock_.c_str(), 0600), 0);
    VanishingLock files(lock_);
    const InUse use(files);
    TestLock lock;
    EXPECT_TRUE(lock.take(target_));
}

// ---- other files at its name ----

void expectRefused(const std::string& target, const std::string& path) {
    const Identity before(path);
    {
        TestLock lock;
        EXPECT_FALSE(lock.take(target));
    }
    EXPECT_EQ(lastFailure().step, JxIniStepLock);
    EXPECT_EQ(lastFailure().error, EEXIST);
    EXPECT_EQ(lastFailure().path, path);
    EXPECT_EQ(describeLast(),
              "Cannot lock " + path + ": it is not a lock of this library, and is left alone; move it away");
    EXPECT_TRUE(before == Identity(path));
}

TEST_F(IniLockTest, RefusesAFileOfAnotherTextAndLeavesItAlone) {
    for (const std::string& text : {std::string("my notes"), std::string("jxodbc lockx"), std::string("\n"),
                                    std::string(13, '\0'), std::string(100'000, 'x')}) {
        SCOPED_TRACE(text.substr(0, 20));
        putText(lock_, text);
        expectRefused(target_, lock_);
        EXPECT_EQ(textOf(lock_), text);
    }
}

void refuseOtherModes(const std::string& target, const std::string& path) {
    for (const mode_t mode : {0644U, 0666U, 0660U, 0400U, 0444U, 0700U, 04600U}) {
        SCOPED_TRACE(mode);
        putText(path, kLockText, mode);
        expectRefused(target, path);
        EXPECT_EQ(modeOf(path), mode);
        ASSERT_EQ(::unlink(path.c_str()), 0);
    }
}

TEST_F(IniLockTest, RefusesAFileOfAnotherModeAndLeavesItAlone) {
    refuseOtherModes(target_, lock_);
}

// Root may open a file of any mode; its owner may not.
TEST_F(IniLockTest, AnOrdinaryUserRefusesAFileOfAnotherModeAndLeavesItAlone) {
    ASSERT_EQ(::chmod(home_.path().c_str(), 0777), 0);
    EXPECT_TRUE(passesAsNobody([this] { refuseOtherModes(target_, lock_); }));
}

TEST_F(IniLockTest, RefusesAFileWithAHardLinkAndLeavesBothAlone) {
    home_.put("precious", kLockText);
    ASSERT_EQ(::link(home_.file("precious").c_str(), lock_.c_str()), 0);
    expectRefused(target_, lock_);
    EXPECT_EQ(home_.text("precious"), kLockText);
    EXPECT_EQ(home_.names(), (std::vector<std::string>{".x.ini.jxlock", "precious"}));
}

TEST_F(IniLockTest, RefusesWhatIsNotARegularFileAndLeavesItAlone) {
    struct Row {
        const char* what;
        std::function<int()> make;
    };
    const Row rows[] = {
        {"directory", [this] { return ::mkdir(lock_.c_str(), 0600); }},
        {"FIFO", [this] { return ::mkfifo(lock_.c_str(), 0600); }},
        {"symbolic link", [this] { return ::symlink("elsewhere", lock_.c_str()); }},
        {"symbolic link to a file", [this] { return ::symlink("x.ini", lock_.c_str()); }},
    };
    home_.put("x.ini", "text");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        ASSERT_EQ(row.make(), 0);
        expectRefused(target_, lock_);
        EXPECT_EQ(home_.text("x.ini"), "text");
        std::filesystem::remove(lock_);
    }
}

TEST_F(IniLockTest, AFileNamedNameDotLockIsNoneOfItsBusiness) {
    home_.put("x.ini.lock", "my notes");
    const Identity before(home_.file("x.ini.lock"));
    {
        TestLock lock;
        ASSERT_TRUE(lock.take(target_));
    }
    EXPECT_TRUE(before == Identity(home_.file("x.ini.lock")));
}

// A umask took all bits of the mode, and its maker was killed before it set the mode.
TEST_F(IniLockTest, TakesUpAnEmptyFileWithoutItsMode) {
    ASSERT_EQ(::chmod(home_.path().c_str(), 0777), 0);
    putText(lock_, "", 0400);
    TestLock lock;
    EXPECT_EQ(lock.take(target_), ::geteuid() == 0);
}

// This user may open it for reading only, which would wait for a writer without O_NONBLOCK.
TEST_F(IniLockTest, NeverWaitsForAFifo) {
    ASSERT_EQ(::chmod(home_.path().c_str(), 0777), 0);
    EXPECT_TRUE(passesAsNobody([this] {
        ::alarm(60);
        ASSERT_EQ(::mkfifo(lock_.c_str(), 0400), 0);
        TestLock lock;
        EXPECT_FALSE(lock.take(target_));
        EXPECT_EQ(lastFailure().error, EEXIST);
    }));
    EXPECT_TRUE(S_ISFIFO(stateOf(lock_).st_mode));
}

TEST_F(IniLockTest, ReportsADirectoryThatIsMissingOrMayNotBeWritten) {
    TestLock absent;
    EXPECT_FALSE(absent.take(home_.file("no/x.ini")));
    EXPECT_EQ(lastFailure().error, ENOENT);
    EXPECT_EQ(describeLast(), "Cannot lock " + home_.file("no/.x.ini.jxlock") + ": No such file or directory");
    ASSERT_EQ(::chmod(home_.path().c_str(), 0755), 0);
    EXPECT_TRUE(::geteuid() != 0 || passesAsNobody([this] {
                    TestLock readOnly;
                    EXPECT_FALSE(readOnly.take(target_));
                    EXPECT_EQ(lastFailure().step, JxIniStepLock);
                    EXPECT_EQ(lastFailure().error, EACCES);
                }));
}

TEST_F(IniLockTest, ReportsANameThatLeavesNoRoomForTheNewFile) {
    const std::string_view digits = sizeof(ino_t) == 4 ? "-ffffffff" : "-ffffffffffffffff";
    const std::size_t most = NAME_MAX - std::string_view("..jxnew").size() - digits.size();
    TestLock fits;
    EXPECT_TRUE(fits.take(home_.file(std::string(most, 'n'))));
    TestLock tooLong;
    EXPECT_FALSE(tooLong.take(home_.file(std::string(most + 1, 'n'))));
    EXPECT_EQ(lastFailure().step, JxIniStepLock);
    EXPECT_EQ(lastFailure().error, ENAMETOOLONG);
}

TEST_F(IniLockTest, GivesUpAfterTenSeconds) {
    const Holder holder(lock_);
    ActingFiles waiting(0, [] {});
    const InUse inUse(waiting);
    TestLock lock;
    const std::int64_t begin = waiting.waitingClockInMilliseconds();
    EXPECT_FALSE(lock.take(target_));
    const std::int64_t took = waiting.waitingClockInMilliseconds() - begin;
    EXPECT_GE(took, 10'000);
    EXPECT_LE(took, 10'010);
    EXPECT_EQ(lastFailure().step, JxIniStepLock);
    EXPECT_EQ(lastFailure().error, ETIMEDOUT);
    EXPECT_EQ(home_.names(), std::vector<std::string>{".x.ini.jxlock"});
}

TEST_F(IniLockTest, TwoObjectsOfOneThreadExcludeEachOther) {
    ActingFiles waiting(0, [] {});
    const InUse inUse(waiting);
    TestLock first;
    ASSERT_TRUE(first.take(target_));
    TestLock second;
    EXPECT_FALSE(second.take(target_));
    EXPECT_TRUE(first.withdraw());
    EXPECT_TRUE(second.take(target_));
}

TEST_F(IniLockTest, TwoFilesHaveTheirOwnLocks) {
    TestLock one;
    TestLock other;
    EXPECT_TRUE(one.take(target_));
    EXPECT_TRUE(other.take(home_.file("y.ini")));
}

TEST_F(IniLockTest, GetsTheLockOfAKilledWriterWhileItWaits) {
    expectTakenFromAHolder();
}

TEST_F(IniLockTest, GetsTheLockWhenTheOtherWriterHasRemovedItsFile) {
    Holder holder(lock_);
    ActingFiles waiting(5, [&] {
        ASSERT_EQ(::unlink(lock_.c_str()), 0);
        holder.letGo();
    });
    const InUse inUse(waiting);
    TestLock lock;
    EXPECT_TRUE(lock.take(target_));
    EXPECT_EQ(waiting.waited(), 5 * kAskAgainInMilliseconds);
}

// The other writer finishes between our opening of its file and our lock on it: that lock is then on a removed file.
class FinishingFiles : public WatchedFiles {
public:
    explicit FinishingFiles(std::function<void()> finish) : finish_(std::move(finish)) {}

protected:
    int before(Call call, std::string_view) override {
        if (call == Call::lock && !std::exchange(finished_, true))
            finish_();
        return 0;
    }

private:
    const std::function<void()> finish_;
    bool finished_ = false;
};

TEST_F(IniLockTest, SeesThatTheLockedFileWasRemovedOrReplaced) {
    for (const bool replaced : {false, true}) {
        SCOPED_TRACE(replaced);
        putText(lock_, kLockText);
        FinishingFiles files([&] {
            ASSERT_EQ(::unlink(lock_.c_str()), 0);
            if (replaced)
                putText(lock_, kLockText);
        });
        const InUse inUse(files);
        TestLock lock;
        ASSERT_TRUE(lock.take(target_));
        std::ostringstream number;
        number << std::hex << stateOf(lock_).st_ino;
        EXPECT_EQ(lock.newFile(), home_.file(".x.ini.jxnew-" + number.str())) << "it holds the file at that name";
    }
}

// Removing the file by hand lets a second writer in. The first must not remove the second's file.
TEST_F(IniLockTest, NeverRemovesAnotherWritersFile) {
    TestLock robbed;
    ASSERT_TRUE(robbed.take(target_));
    ASSERT_EQ(::unlink(lock_.c_str()), 0);
    TestLock second;
    ASSERT_TRUE(second.take(target_));
    EXPECT_TRUE(robbed.withdraw());
    EXPECT_EQ(home_.names(), std::vector<std::string>{".x.ini.jxlock"});
}

TEST_F(IniLockTest, ALockEndsWithItsProcess) {
    int ready[2];
    ASSERT_EQ(::pipe2(ready, O_CLOEXEC), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        TestLock lock;
        const char taken = lock.take(target_) ? '1' : '0';
        ::close(ready[0]);
        [[maybe_unused]] const ssize_t written = ::write(ready[1], &taken, 1);
        ::pause();
        ::_exit(0);
    }
    char taken = '0';
    ASSERT_EQ(::read(ready[0], &taken, 1), 1);
    ASSERT_EQ(taken, '1');
    ActingFiles waiting(7, [child] {
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
    });
    {
        const InUse inUse(waiting);
        TestLock lock;
        EXPECT_TRUE(lock.take(target_));
        EXPECT_EQ(waiting.waited(), 7 * kAskAgainInMilliseconds);
    }
    ::close(ready[0]);
    ::close(ready[1]);
    EXPECT_EQ(home_.names(), std::vector<std::string>{});
}

}  // namespace
}  // namespace jx::ini::test
