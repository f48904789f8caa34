// The turn: who gets it, who waits, what may stand in the place of NAME.lock.
#include "jxutl/ini/ini_turn.h"

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
#include "ini_turn_fixture.h"
#include "jxutl/thread/failure.h"

namespace jx::ini::test {
namespace {

std::string describeLast() {
    return describe(lastFailure());
}

TEST_F(IniTurnTest, MakesAnEmptyLockFileForTheOwnerOnly) {
    const Umask open(0);
    IniTurn turn;
    ASSERT_TRUE(turn.take(target_));
    EXPECT_EQ(home_.names(), std::vector<std::string>{"x.ini.lock"});
    EXPECT_EQ(modeOf(lock_), 0600U);
    EXPECT_EQ(home_.text("x.ini.lock"), "");
    EXPECT_EQ(turn.path(), lock_);
    EXPECT_TRUE(turn.withdraw());
    EXPECT_EQ(home_.names(), std::vector<std::string>{});
}

TEST_F(IniTurnTest, MakesThatModeUnderAnyUmask) {
    for (const mode_t mask : {0000U, 0022U, 0077U, 0277U, 0777U}) {
        SCOPED_TRACE(mask);
        const Umask set(mask);
        IniTurn turn;
        ASSERT_TRUE(turn.take(target_));
        EXPECT_EQ(modeOf(lock_), 0600U);
    }
    EXPECT_TRUE(passesAsNobody([] {}));
}

TEST_F(IniTurnTest, LeavingScopeRemovesTheLockFile) {
    {
        IniTurn turn;
        ASSERT_TRUE(turn.take(target_));
    }
    EXPECT_EQ(home_.names(), std::vector<std::string>{});
}

TEST_F(IniTurnTest, MovesTheLockFileOverTheTarget) {
    home_.put("x.ini", "old");
    IniTurn turn;
    ASSERT_TRUE(turn.take(target_));
    ASSERT_EQ(::write(turn.file(), "new", 3), 3);
    ASSERT_TRUE(turn.moveOver(target_));
    EXPECT_EQ(home_.names(), std::vector<std::string>{"x.ini"});
    EXPECT_EQ(home_.text("x.ini"), "new");
}

TEST_F(IniTurnTest, TakesUpWhatAKilledWriterLeft) {
    putText(lock_, "half of a te");
    const ino_t left = stateOf(lock_).st_ino;
    IniTurn turn;
    ASSERT_TRUE(turn.take(target_));
    EXPECT_EQ(stateOf(lock_).st_ino, left);
    EXPECT_EQ(home_.text("x.ini.lock"), "");
}

// A file others could open may still be open in their hands, and would show them the next text, or let them change it.
void replaceLeftFiles(const std::string& target) {
    const std::string lock = target + ".lock";
    for (const mode_t mode : {0644U, 0666U, 0660U, 0400U, 0444U, 0700U}) {
        SCOPED_TRACE(mode);
        putText(lock, "left", mode);
        const int reader = ::open(lock.c_str(), O_RDONLY | O_CLOEXEC);
        IniTurn turn;
        ASSERT_TRUE(turn.take(target));
        struct stat opened;
        ASSERT_EQ(::fstat(reader, &opened), 0);
        EXPECT_NE(stateOf(lock).st_ino, opened.st_ino);
        EXPECT_EQ(modeOf(lock), 0600U);
        ::close(reader);
    }
}

TEST_F(IniTurnTest, ReplacesALeftFileThatOthersCouldOpen) {
    replaceLeftFiles(target_);
}

// Root may open a file of any mode; its owner may not.
TEST_F(IniTurnTest, AnOrdinaryUserReplacesALeftFileThatOthersCouldOpen) {
    ASSERT_EQ(::chmod(home_.path().c_str(), 0777), 0);
    EXPECT_TRUE(passesAsNobody([this] { replaceLeftFiles(target_); }));
}

TEST_F(IniTurnTest, ReplacesALeftFileWithASecondNameAndSparesThatFile) {
    home_.put("precious", "do not empty me");
    ASSERT_EQ(::link(home_.file("precious").c_str(), lock_.c_str()), 0);
    {
        IniTurn turn;
        ASSERT_TRUE(turn.take(target_));
        EXPECT_NE(stateOf(lock_).st_ino, stateOf(home_.file("precious")).st_ino);
    }
    EXPECT_EQ(home_.text("precious"), "do not empty me");
    EXPECT_EQ(home_.names(), std::vector<std::string>{"precious"});
}

TEST_F(IniTurnTest, RootReplacesAFileOfAnotherUser) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a file of another user";
    putText(lock_, "theirs");
    const ino_t theirs = stateOf(lock_).st_ino;
    ASSERT_EQ(::chown(lock_.c_str(), kNobody, kNobody), 0);
    const int keptOpen = ::open(lock_.c_str(), O_RDONLY | O_CLOEXEC);  // so that the inode number is not used again
    IniTurn turn;
    ASSERT_TRUE(turn.take(target_));
    EXPECT_NE(stateOf(lock_).st_ino, theirs);
    EXPECT_EQ(stateOf(lock_).st_uid, 0U);
    ::close(keptOpen);
}

TEST_F(IniTurnTest, RootInASharedDirectoryReplacesAPlantedFile) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a file of another user";
    ASSERT_EQ(::chmod(home_.path().c_str(), 01777), 0);
    putText(lock_, "planted", 0666);
    ASSERT_EQ(::chown(lock_.c_str(), kNobody, kNobody), 0);
    IniTurn turn;
    ASSERT_TRUE(turn.take(target_));
    EXPECT_EQ(stateOf(lock_).st_uid, 0U);
    EXPECT_EQ(modeOf(lock_), 0600U);
}

TEST_F(IniTurnTest, RefusesWhatIsNoRegularFileAndLeavesItAlone) {
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
            IniTurn turn;
            EXPECT_FALSE(turn.take(target_));
        }
        EXPECT_EQ(lastFailure().step, JxIniStepTurn);
        EXPECT_EQ(lastFailure().error, row.error);
        EXPECT_EQ(lastFailure().path, lock_);
        EXPECT_TRUE(before == Identity(lock_));
        EXPECT_EQ(home_.text("x.ini"), "text");
        std::filesystem::remove(lock_);
    }
}

// Its user may open it for reading only, and that waits for a writer unless it is told not to.
TEST_F(IniTurnTest, NeverWaitsForAFifo) {
    ASSERT_EQ(::chmod(home_.path().c_str(), 0777), 0);
    EXPECT_TRUE(passesAsNobody([this] {
        ::alarm(60);
        ASSERT_EQ(::mkfifo(lock_.c_str(), 0400), 0);
        IniTurn turn;
        EXPECT_FALSE(turn.take(target_));
        EXPECT_EQ(lastFailure().error, ENOTSUP);
    }));
    EXPECT_TRUE(S_ISFIFO(stateOf(lock_).st_mode));
}

TEST_F(IniTurnTest, TellsWhenTheDirectoryIsNotThereOrMayNotBeWritten) {
    IniTurn absent;
    EXPECT_FALSE(absent.take(home_.file("no/x.ini")));
    EXPECT_EQ(lastFailure().error, ENOENT);
    EXPECT_EQ(describeLast(), "Cannot lock " + home_.file("no/x.ini.lock") + ": No such file or directory");
    ASSERT_EQ(::chmod(home_.path().c_str(), 0755), 0);
    EXPECT_TRUE(::geteuid() != 0 || passesAsNobody([this] {
                    IniTurn readOnly;
                    EXPECT_FALSE(readOnly.take(target_));
                    EXPECT_EQ(lastFailure().step, JxIniStepTurn);
                    EXPECT_EQ(lastFailure().error, EACCES);
                }));
}

TEST_F(IniTurnTest, TellsWhenTheNameLeavesNoRoomForTheLockFile) {
    IniTurn fits;
    EXPECT_TRUE(fits.take(home_.file(std::string(250, 'n'))));
    IniTurn tooLong;
    EXPECT_FALSE(tooLong.take(home_.file(std::string(251, 'n'))));
    EXPECT_EQ(lastFailure().error, ENAMETOOLONG);
}

TEST_F(IniTurnTest, GivesUpAfterTenSeconds) {
    const Holder holder(lock_);
    ActingFiles waiting(0, [] {});
    const InUse inUse(waiting);
    IniTurn turn;
    const std::int64_t begin = waiting.waitingClockInMilliseconds();
    EXPECT_FALSE(turn.take(target_));
    const std::int64_t took = waiting.waitingClockInMilliseconds() - begin;
    EXPECT_GE(took, 10'000);
    EXPECT_LE(took, 10'010);
    EXPECT_EQ(lastFailure().step, JxIniStepTurn);
    EXPECT_EQ(lastFailure().error, ETIMEDOUT);
    EXPECT_EQ(home_.names(), std::vector<std::string>{"x.ini.lock"});
}

TEST_F(IniTurnTest, TwoObjectsOfOneThreadExcludeEachOther) {
    ActingFiles waiting(0, [] {});
    const InUse inUse(waiting);
    IniTurn first;
    ASSERT_TRUE(first.take(target_));
    IniTurn second;
    EXPECT_FALSE(second.take(target_));
    EXPECT_TRUE(first.withdraw());
    EXPECT_TRUE(second.take(target_));
}

TEST_F(IniTurnTest, TwoFilesHaveTurnsOfTheirOwn) {
    IniTurn one;
    IniTurn other;
    EXPECT_TRUE(one.take(target_));
    EXPECT_TRUE(other.take(home_.file("y.ini")));
}

TEST_F(IniTurnTest, GetsTheTurnOfAKilledWriterWhileItWaits) {
    Holder holder(lock_);
    ActingFiles waiting(5, [&holder] { holder.letGo(); });
    const InUse inUse(waiting);
    IniTurn turn;
    EXPECT_TRUE(turn.take(target_));
    EXPECT_EQ(waiting.waited(), 5 * kAskAgainInMilliseconds);
}

TEST_F(IniTurnTest, GetsTheTurnWhenTheOtherWriterHasRenamedItsFile) {
    Holder holder(lock_);
    ActingFiles waiting(5, [&] {
        ASSERT_EQ(::rename(lock_.c_str(), target_.c_str()), 0);
        holder.letGo();
    });
    const InUse inUse(waiting);
    IniTurn turn;
    EXPECT_TRUE(turn.take(target_));
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

TEST_F(IniTurnTest, SeesThatTheLockedFileHasBecomeTheTarget) {
    putText(lock_, "the other's new text");
    FinishingFiles files([this] { ASSERT_EQ(::rename(lock_.c_str(), target_.c_str()), 0); });
    const InUse inUse(files);
    IniTurn turn;
    ASSERT_TRUE(turn.take(target_));
    EXPECT_EQ(home_.text("x.ini"), "the other's new text");
    EXPECT_EQ(home_.text("x.ini.lock"), "");
}

TEST_F(IniTurnTest, SeesThatTheLockedFileWasRemovedOrReplaced) {
    for (const bool replaced : {false, true}) {
        SCOPED_TRACE(replaced);
        putText(lock_, "left");
        FinishingFiles files([&] {
            ASSERT_EQ(::unlink(lock_.c_str()), 0);
            if (replaced)
                putText(lock_, "another");
        });
        const InUse inUse(files);
        IniTurn turn;
        ASSERT_TRUE(turn.take(target_));
        EXPECT_EQ(home_.text("x.ini.lock"), "");
        struct stat held;
        ASSERT_EQ(::fstat(turn.file(), &held), 0);
        EXPECT_EQ(held.st_ino, stateOf(lock_).st_ino);
    }
}

// Whoever removes the file by hand lets a second writer in. The first must not move the second's file.
TEST_F(IniTurnTest, NeverMovesOrRemovesAnotherWritersFile) {
    home_.put("x.ini", "old");
    IniTurn robbed;
    ASSERT_TRUE(robbed.take(target_));
    ASSERT_EQ(::unlink(lock_.c_str()), 0);
    IniTurn second;
    ASSERT_TRUE(second.take(target_));
    EXPECT_FALSE(robbed.moveOver(target_));
    EXPECT_EQ(lastFailure().step, JxIniStepRename);
    EXPECT_EQ(lastFailure().error, ESTALE);
    EXPECT_EQ(home_.text("x.ini"), "old");
    EXPECT_EQ(home_.names(), (std::vector<std::string>{"x.ini", "x.ini.lock"}));

    IniTurn third;
    ASSERT_TRUE(second.withdraw());
    ASSERT_TRUE(second.take(target_));
    ASSERT_EQ(::unlink(lock_.c_str()), 0);
    ASSERT_TRUE(third.take(target_));
    EXPECT_TRUE(second.withdraw());
    EXPECT_EQ(home_.names(), (std::vector<std::string>{"x.ini", "x.ini.lock"}));
}

TEST_F(IniTurnTest, HoldsAWriterOutWhileItLivesAndNoLonger) {
    int ready[2];
    ASSERT_EQ(::pipe2(ready, O_CLOEXEC), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        IniTurn turn;
        const char taken = turn.take(target_) ? '1' : '0';
        ::close(ready[0]);
        [[maybe_unused]] const ssize_t told = ::write(ready[1], &taken, 1);
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
        IniTurn turn;
        EXPECT_TRUE(turn.take(target_));
        EXPECT_EQ(waiting.waited(), 7 * kAskAgainInMilliseconds);
    }
    ::close(ready[0]);
    ::close(ready[1]);
    EXPECT_EQ(home_.names(), std::vector<std::string>{});
}

}  // namespace
}  // namespace jx::ini::test
