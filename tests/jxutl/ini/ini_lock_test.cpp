// The lock of a file: who gets it, who waits, and what may be at the path of NAME.lock.
#include "jxutl/ini/ini_lock.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <functional>
#include <string>
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

TEST_F(IniLockTest, MakesAnEmptyLockFileForTheOwnerOnly) {
    const Umask open(0);
    IniLock lock;
    ASSERT_TRUE(lock.take(target_));
    EXPECT_EQ(home_.names(), std::vector<std::string>{"x.ini.lock"});
    EXPECT_EQ(modeOf(lock_), 0600U);
    EXPECT_EQ(home_.text("x.ini.lock"), "");
    EXPECT_EQ(lock.path(), lock_);
    EXPECT_TRUE(lock.withdraw());
    EXPECT_EQ(home_.names(), std::vector<std::string>{});
}

TEST_F(IniLockTest, MakesThatModeUnderAnyUmask) {
    for (const mode_t mask : {0000U, 0022U, 0077U, 0277U, 0777U}) {
        SCOPED_TRACE(mask);
        const Umask set(mask);
        IniLock lock;
        ASSERT_TRUE(lock.take(target_));
        EXPECT_EQ(modeOf(lock_), 0600U);
    }
    EXPECT_TRUE(passesAsNobody([] {}));
}

TEST_F(IniLockTest, LeavingScopeRemovesTheLockFile) {
    {
        IniLock lock;
        ASSERT_TRUE(lock.take(target_));
    }
    EXPECT_EQ(home_.names(), std::vector<std::string>{});
}

TEST_F(IniLockTest, MovesTheLockFileOverTheTarget) {
    home_.put("x.ini", "old");
    IniLock lock;
    ASSERT_TRUE(lock.take(target_));
    ASSERT_EQ(::write(lock.file(), "new", 3), 3);
    ASSERT_TRUE(lock.moveOver(target_));
    EXPECT_EQ(home_.names(), std::vector<std::string>{"x.ini"});
    EXPECT_EQ(home_.text("x.ini"), "new");
}

TEST_F(IniLockTest, ReusesTheFileAKilledWriterLeft) {
    putText(lock_, "half of a te");
    const ino_t left = stateOf(lock_).st_ino;
    IniLock lock;
    ASSERT_TRUE(lock.take(target_));
    EXPECT_EQ(stateOf(lock_).st_ino, left);
    EXPECT_EQ(home_.text("x.ini.lock"), "");
}

// Another user may still have such a file open, and could read the next text or change it.
void replaceLeftFiles(const std::string& target) {
    const std::string path = target + ".lock";
    for (const mode_t mode : {0644U, 0666U, 0660U, 0400U, 0444U, 0700U}) {
        SCOPED_TRACE(mode);
        putText(path, "left", mode);
        const int reader = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        IniLock lock;
        ASSERT_TRUE(lock.take(target));
        struct stat opened;
        ASSERT_EQ(::fstat(reader, &opened), 0);
        EXPECT_NE(stateOf(path).st_ino, opened.st_ino);
        EXPECT_EQ(modeOf(path), 0600U);
        ::close(reader);
    }
}

TEST_F(IniLockTest, ReplacesALeftFileThatOthersCouldOpen) {
    replaceLeftFiles(target_);
}

// Root may open a file of any mode; its owner may not.
TEST_F(IniLockTest, AnOrdinaryUserReplacesALeftFileThatOthersCouldOpen) {
    ASSERT_EQ(::chmod(home_.path().c_str(), 0777), 0);
    EXPECT_TRUE(passesAsNobody([this] { replaceLeftFiles(target_); }));
}

TEST_F(IniLockTest, ReplacesALeftFileWithAHardLinkAndLeavesTheLinkAlone) {
    home_.put("precious", "do not empty me");
    ASSERT_EQ(::link(home_.file("precious").c_str(), lock_.c_str()), 0);
    {
        IniLock lock;
        ASSERT_TRUE(lock.take(target_));
        EXPECT_NE(stateOf(lock_).st_ino, stateOf(home_.file("precious")).st_ino);
    }
    EXPECT_EQ(home_.text("precious"), "do not empty me");
    EXPECT_EQ(home_.names(), std::vector<std::string>{"precious"});
}

TEST_F(IniLockTest, RootReplacesAFileOfAnotherUser) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a file of another user";
    putText(lock_, "theirs");
    const ino_t theirs = stateOf(lock_).st_ino;
    ASSERT_EQ(::chown(lock_.c_str(), kNobody, kNobody), 0);
    const int keptOpen = ::open(lock_.c_str(), O_RDONLY | O_CLOEXEC);  // so that the inode number is not used again
    IniLock lock;
    ASSERT_TRUE(lock.take(target_));
    EXPECT_NE(stateOf(lock_).st_ino, theirs);
    EXPECT_EQ(stateOf(lock_).st_uid, 0U);
    ::close(keptOpen);
}

TEST_F(IniLockTest, RootInASharedDirectoryReplacesAPlantedFile) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a file of another user";
    ASSERT_EQ(::chmod(home_.path().c_str(), 01777), 0);
    putText(lock_, "planted", 0666);
    ASSERT_EQ(::chown(lock_.c_str(), kNobody, kNobody), 0);
    IniLock lock;
    ASSERT_TRUE(lock.take(target_));
    EXPECT_EQ(stateOf(lock_).st_uid, 0U);
    EXPECT_EQ(modeOf(lock_), 0600U);
}

TEST_F(IniLockTest, RefusesWhatIsNotARegularFileAndLeavesItAlone) {
    struct Row {
        const char* what;
        std::function<int()> make;
        int error;
    };
    const Row rows[] = {
        {"directory", [this] { return ::mkdir(lock_.c_str(), 0700); }, EISDIR},
        {"FIFO", [this] { return ::mkfifo(lock_.c_str(), 0600); }, ENOTSUP},
        {"symbolic link", [this] { return ::symlink("elsewhere", lock_.c_str()); }, ELOOP},
        {"symbolic link to a file", [this] { return ::symlink("x.ini", lock_.c_str()); }, ELOOP},
    };
    home_.put("x.ini", "text");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        ASSERT_EQ(row.make(), 0);
        const Identity before(lock_);
        {
            IniLock lock;
            EXPECT_FALSE(lock.take(target_));
        }
        EXPECT_EQ(lastFailure().step, JxIniStepLock);
        EXPECT_EQ(lastFailure().error, row.error);
        EXPECT_EQ(lastFailure().path, lock_);
        EXPECT_TRUE(before == Identity(lock_));
        EXPECT_EQ(home_.text("x.ini"), "text");
        std::filesystem::remove(lock_);
    }
}

// This user may open it for reading only, which would wait for a writer without O_NONBLOCK.
TEST_F(IniLockTest, NeverWaitsForAFifo) {
    ASSERT_EQ(::chmod(home_.path().c_str(), 0777), 0);
    EXPECT_TRUE(passesAsNobody([this] {
        ::alarm(60);
        ASSERT_EQ(::mkfifo(lock_.c_str(), 0400), 0);
        IniLock lock;
        EXPECT_FALSE(lock.take(target_));
        EXPECT_EQ(lastFailure().error, ENOTSUP);
    }));
    EXPECT_TRUE(S_ISFIFO(stateOf(lock_).st_mode));
}

TEST_F(IniLockTest, ReportsADirectoryThatIsMissingOrMayNotBeWritten) {
    IniLock absent;
    EXPECT_FALSE(absent.take(home_.file("no/x.ini")));
    EXPECT_EQ(lastFailure().error, ENOENT);
    EXPECT_EQ(describeLast(), "Cannot lock " + home_.file("no/x.ini.lock") + ": No such file or directory");
    ASSERT_EQ(::chmod(home_.path().c_str(), 0755), 0);
    EXPECT_TRUE(::geteuid() != 0 || passesAsNobody([this] {
                    IniLock readOnly;
                    EXPECT_FALSE(readOnly.take(target_));
                    EXPECT_EQ(lastFailure().step, JxIniStepLock);
                    EXPECT_EQ(lastFailure().error, EACCES);
                }));
}

TEST_F(IniLockTest, ReportsANameThatLeavesNoRoomForTheLockFile) {
    IniLock fits;
    EXPECT_TRUE(fits.take(home_.file(std::string(250, 'n'))));
    IniLock tooLong;
    EXPECT_FALSE(tooLong.take(home_.file(std::string(251, 'n'))));
    EXPECT_EQ(lastFailure().error, ENAMETOOLONG);
}

TEST_F(IniLockTest, GivesUpAfterTenSeconds) {
    const Holder holder(lock_);
    ActingFiles waiting(0, [] {});
    const InUse inUse(waiting);
    IniLock lock;
    const std::int64_t begin = waiting.waitingClockInMilliseconds();
    EXPECT_FALSE(lock.take(target_));
    const std::int64_t took = waiting.waitingClockInMilliseconds() - begin;
    EXPECT_GE(took, 10'000);
    EXPECT_LE(took, 10'010);
    EXPECT_EQ(lastFailure().step, JxIniStepLock);
    EXPECT_EQ(lastFailure().error, ETIMEDOUT);
    EXPECT_EQ(home_.names(), std::vector<std::string>{"x.ini.lock"});
}

TEST_F(IniLockTest, TwoObjectsOfOneThreadExcludeEachOther) {
    ActingFiles waiting(0, [] {});
    const InUse inUse(waiting);
    IniLock first;
    ASSERT_TRUE(first.take(target_));
    IniLock second;
    EXPECT_FALSE(second.take(target_));
    EXPECT_TRUE(first.withdraw());
    EXPECT_TRUE(second.take(target_));
}

TEST_F(IniLockTest, TwoFilesHaveTheirOwnLocks) {
    IniLock one;
    IniLock other;
    EXPECT_TRUE(one.take(target_));
    EXPECT_TRUE(other.take(home_.file("y.ini")));
}

TEST_F(IniLockTest, GetsTheLockOfAKilledWriterWhileItWaits) {
    Holder holder(lock_);
    ActingFiles waiting(5, [&holder] { holder.letGo(); });
    const InUse inUse(waiting);
    IniLock lock;
    EXPECT_TRUE(lock.take(target_));
    EXPECT_EQ(waiting.waited(), 5 * kAskAgainInMilliseconds);
}

TEST_F(IniLockTest, GetsTheLockWhenTheOtherWriterHasRenamedItsFile) {
    Holder holder(lock_);
    ActingFiles waiting(5, [&] {
        ASSERT_EQ(::rename(lock_.c_str(), target_.c_str()), 0);
        holder.letGo();
    });
    const InUse inUse(waiting);
    IniLock lock;
    EXPECT_TRUE(lock.take(target_));
    EXPECT_NE(stateOf(lock_).st_ino, stateOf(target_).st_ino);
}

// The other writer finishes between our opening of its file and our lock on it: that lock is then on the target.
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

TEST_F(IniLockTest, SeesThatTheLockedFileHasBecomeTheTarget) {
    putText(lock_, "the other's new text");
    FinishingFiles files([this] { ASSERT_EQ(::rename(lock_.c_str(), target_.c_str()), 0); });
    const InUse inUse(files);
    IniLock lock;
    ASSERT_TRUE(lock.take(target_));
    EXPECT_EQ(home_.text("x.ini"), "the other's new text");
    EXPECT_EQ(home_.text("x.ini.lock"), "");
}

TEST_F(IniLockTest, SeesThatTheLockedFileWasRemovedOrReplaced) {
    for (const bool replaced : {false, true}) {
        SCOPED_TRACE(replaced);
        putText(lock_, "left");
        FinishingFiles files([&] {
            ASSERT_EQ(::unlink(lock_.c_str()), 0);
            if (replaced)
                putText(lock_, "another");
        });
        const InUse inUse(files);
        IniLock lock;
        ASSERT_TRUE(lock.take(target_));
        EXPECT_EQ(home_.text("x.ini.lock"), "");
        struct stat held;
        ASSERT_EQ(::fstat(lock.file(), &held), 0);
        EXPECT_EQ(held.st_ino, stateOf(lock_).st_ino);
    }
}

// Removing the file by hand lets a second writer in. The first must not rename the second's file.
TEST_F(IniLockTest, NeverMovesOrRemovesAnotherWritersFile) {
    home_.put("x.ini", "old");
    IniLock robbed;
    ASSERT_TRUE(robbed.take(target_));
    ASSERT_EQ(::unlink(lock_.c_str()), 0);
    IniLock second;
    ASSERT_TRUE(second.take(target_));
    EXPECT_FALSE(robbed.moveOver(target_));
    EXPECT_EQ(lastFailure().step, JxIniStepRename);
    EXPECT_EQ(lastFailure().error, ESTALE);
    EXPECT_EQ(home_.text("x.ini"), "old");
    EXPECT_EQ(home_.names(), (std::vector<std::string>{"x.ini", "x.ini.lock"}));

    IniLock third;
    ASSERT_TRUE(second.withdraw());
    ASSERT_TRUE(second.take(target_));
    ASSERT_EQ(::unlink(lock_.c_str()), 0);
    ASSERT_TRUE(third.take(target_));
    EXPECT_TRUE(second.withdraw());
    EXPECT_EQ(home_.names(), (std::vector<std::string>{"x.ini", "x.ini.lock"}));
}

TEST_F(IniLockTest, ALockEndsWithItsProcess) {
    int ready[2];
    ASSERT_EQ(::pipe2(ready, O_CLOEXEC), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        IniLock lock;
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
        IniLock lock;
        EXPECT_TRUE(lock.take(target_));
        EXPECT_EQ(waiting.waited(), 7 * kAskAgainInMilliseconds);
    }
    ::close(ready[0]);
    ::close(ready[1]);
    EXPECT_EQ(home_.names(), std::vector<std::string>{});
}

}  // namespace
}  // namespace jx::ini::test
