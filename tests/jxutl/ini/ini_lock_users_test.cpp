// The lock between several users, and between a process and its children.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "child_process.h"
#include "disk_check.h"
#include "ini_lock_fixture.h"
#include "jxutl/ini/ini_lock.h"
#include "jxutl/thread/failure.h"

namespace jx::ini::test {
namespace {

TEST_F(IniLockTest, AUserWaitsForAFileOfAnotherAndGivesUp) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a file of another user";
    putText(lock_, kLockText);
    ASSERT_EQ(::chmod(home_.path().c_str(), 0777), 0);
    EXPECT_TRUE(passesAsNobody([this] {
        ActingFiles waiting(0, [] {});
        const InUse inUse(waiting);
        TestLock lock;
        EXPECT_FALSE(lock.take(target_));
        EXPECT_EQ(lastFailure().step, JxIniStepLock);
        EXPECT_EQ(lastFailure().error, EACCES);
        EXPECT_GT(waiting.waited(), 4000);
    }));
    EXPECT_EQ(textOf(lock_), kLockText);
}

// A writer of root that is killed must not keep a user from the user's own files.
TEST_F(IniLockTest, TheOwnerOfTheDirectoryTakesUpTheFileOfAKilledWriterOfRoot) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can write as root";
    ASSERT_EQ(::chown(home_.path().c_str(), kNobody, kNobody), 0);
    EXPECT_TRUE(passesInChild([this] {
        TestLock lock;
        ASSERT_TRUE(lock.take(target_));
        ::_exit(0);  // without removing it
    }));
    EXPECT_EQ(stateOf(lock_).st_uid, kNobody);
    EXPECT_EQ(modeOf(lock_), 0600U);
    EXPECT_TRUE(passesAsNobody([this] {
        TestLock lock;
        EXPECT_TRUE(lock.take(target_));
    }));
    EXPECT_EQ(home_.names(), std::vector<std::string>{});
}

TEST_F(IniLockTest, RootTakesUpAFileOfAnotherUser) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a file of another user";
    putText(lock_, kLockText);
    ASSERT_EQ(::chown(lock_.c_str(), kNobody, kNobody), 0);
    TestLock lock;
    EXPECT_TRUE(lock.take(target_));
}

TEST_F(IniLockTest, RootWaitsForAnotherUser) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a file of another user";
    ASSERT_EQ(::chmod(home_.path().c_str(), 01777), 0);
    putText(lock_, kLockText);
    ASSERT_EQ(::chown(lock_.c_str(), kNobody, kNobody), 0);
    expectTakenFromAHolder();
}

TEST_F(IniLockTest, ALockBelongsToAForkedChildAsWell) {
    int leave[2];  // the grandchild ends when the write end is closed
    int gone[2];   // its read end sees the grandchild end
    ASSERT_EQ(::pipe(leave), 0);
    ASSERT_EQ(::pipe(gone), 0);
    EXPECT_TRUE(passesInChild([&] {
        TestLock lock;
        ASSERT_TRUE(lock.take(target_));
        char byte = 0;
        if (::fork() == 0) {
            ::close(leave[1]);
            (void)!::read(leave[0], &byte, 1);
            ::_exit(0);
        }
        ::_exit(0);  // without unlocking
    }));
    ::close(gone[1]);
    {
        ActingFiles waiting(0, [] {});
        const InUse inUse(waiting);
        TestLock lock;
        EXPECT_FALSE(lock.take(target_));
        EXPECT_EQ(lastFailure().error, ETIMEDOUT);
    }
    ::close(leave[1]);
    char byte = 0;
    EXPECT_EQ(::read(gone[0], &byte, 1), 0);
    TestLock lock;
    EXPECT_TRUE(lock.take(target_));
    ::close(leave[0]);
    ::close(gone[0]);
}

TEST_F(IniLockTest, AUserGetsTheLockWhenTheOtherUsersFileGoes) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a file of another user";
    putText(lock_, kLockText);
    ASSERT_EQ(::chmod(home_.path().c_str(), 0777), 0);
    EXPECT_TRUE(passesAsNobody([this] {
        ActingFiles waiting(3, [this] { ::unlink(lock_.c_str()); });
        const InUse inUse(waiting);
        TestLock lock;
        EXPECT_TRUE(lock.take(target_));
    }));
}

TEST_F(IniLockTest, APlantedFileInASharedDirectoryIsRefused) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a file of another user";
    putText(lock_, kLockText, 0666);
    ASSERT_EQ(::chown(lock_.c_str(), 1, 1), 0);
    ASSERT_EQ(::chmod(home_.path().c_str(), 01777), 0);
    const auto refused = [this] {
        TestLock lock;
        EXPECT_FALSE(lock.take(target_));
        EXPECT_EQ(lastFailure().step, JxIniStepLock);
        EXPECT_EQ(lastFailure().error, EEXIST);
    };
    refused();
    EXPECT_TRUE(passesAsNobody(refused));
    EXPECT_EQ(textOf(lock_), kLockText);
}

}  // namespace
}  // namespace jx::ini::test
