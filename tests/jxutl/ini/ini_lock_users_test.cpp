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
    putText(lock_, "of root");
    ASSERT_EQ(::chmod(home_.path().c_str(), 0777), 0);
    EXPECT_TRUE(passesAsNobody([this] {
        ActingFiles waiting(0, [] {});
        const InUse inUse(waiting);
        IniLock lock;
        EXPECT_FALSE(lock.take(target_));
        EXPECT_EQ(lastFailure().step, JxIniStepLock);
        EXPECT_EQ(lastFailure().error, EACCES);
        EXPECT_GT(waiting.waited(), 4000);
    }));
    EXPECT_EQ(home_.text("x.ini.lock"), "of root");
}

TEST_F(IniLockTest, OthersCanLockALeftFileThatTheyMayRead) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can become another user";
    putText(lock_, "of a writer that was killed");
    ASSERT_EQ(::chmod(lock_.c_str(), 0644), 0);
    ASSERT_EQ(::chmod(home_.path().c_str(), 0755), 0);
    ASSERT_EQ(::seteuid(kNobody), 0);
    const Holder reader(lock_, O_RDONLY);
    ASSERT_EQ(::seteuid(0), 0);
    {
        ActingFiles waiting(0, [] {});
        const InUse inUse(waiting);
        IniLock lock;
        EXPECT_FALSE(lock.take(target_));
        EXPECT_EQ(lastFailure().step, JxIniStepLock);
        EXPECT_EQ(lastFailure().error, ETIMEDOUT);
        EXPECT_GT(waiting.waited(), 4000);
    }
    ASSERT_EQ(::unlink(lock_.c_str()), 0);
    IniLock lock;
    EXPECT_TRUE(lock.take(target_));
}

TEST_F(IniLockTest, ALockBelongsToAForkedChildAsWell) {
    int leave[2];  // the grandchild ends when the write end is closed
    int gone[2];   // its read end sees the grandchild end
    ASSERT_EQ(::pipe(leave), 0);
    ASSERT_EQ(::pipe(gone), 0);
    EXPECT_TRUE(passesInChild([&] {
        IniLock lock;
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
        IniLock lock;
        EXPECT_FALSE(lock.take(target_));
        EXPECT_EQ(lastFailure().error, ETIMEDOUT);
    }
    ::close(leave[1]);
    char byte = 0;
    EXPECT_EQ(::read(gone[0], &byte, 1), 0);
    IniLock lock;
    EXPECT_TRUE(lock.take(target_));
    ::close(leave[0]);
    ::close(gone[0]);
}

TEST_F(IniLockTest, AUserGetsTheLockWhenTheOtherUsersFileGoes) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a file of another user";
    putText(lock_, "of root");
    ASSERT_EQ(::chmod(home_.path().c_str(), 0777), 0);
    EXPECT_TRUE(passesAsNobody([this] {
        ActingFiles waiting(3, [this] { ::unlink(lock_.c_str()); });
        const InUse inUse(waiting);
        IniLock lock;
        EXPECT_TRUE(lock.take(target_));
    }));
}

TEST_F(IniLockTest, AUserCannotRemoveAPlantedFileFromASharedDirectory) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a file of another user";
    putText(lock_, "planted", 0666);
    ASSERT_EQ(::chmod(home_.path().c_str(), 01777), 0);
    EXPECT_TRUE(passesAsNobody([this] {
        IniLock lock;
        EXPECT_FALSE(lock.take(target_));
        EXPECT_EQ(lastFailure().step, JxIniStepLock);
        EXPECT_EQ(lastFailure().error, EPERM);
    }));
    EXPECT_EQ(home_.text("x.ini.lock"), "planted");
}

}  // namespace
}  // namespace jx::ini::test
