// A folder with a target and its lock file, and other writers.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "disk_check.h"
#include "jxutl/ini/ini_lock.h"
#include "jxutl/ini/ini_place.h"
#include "jxutl/thread/failure.h"
#include "test_home.h"
#include "watched_files.h"

namespace jx::ini::test {

using jx::test::TestHome;

// Another writer that holds the lock.
class Holder {
public:
    explicit Holder(const std::string& path, int flags = O_RDWR | O_CREAT)
        : fd_(::open(path.c_str(), flags | O_CLOEXEC, 0600)) {
        EXPECT_GE(fd_, 0);
        EXPECT_EQ(::flock(fd_, LOCK_EX | LOCK_NB), 0);
    }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;
    ~Holder() { letGo(); }

    void letGo() {
        if (fd_ >= 0)
            ::close(fd_);
        fd_ = -1;
    }

private:
    int fd_;
};

// Calls act at the pause of that number, and adds up the time waited.
class ActingFiles : public WatchedFiles {
public:
    ActingFiles(int pauseNumber, std::function<void()> act) : pauseNumber_(pauseNumber), act_(std::move(act)) {}

    void pause(std::int64_t milliseconds) override {
        waited_ += milliseconds;
        if (++pauses_ == pauseNumber_)
            act_();
        WatchedFiles::pause(milliseconds);
    }

    std::int64_t waited() const { return waited_; }

private:
    const int pauseNumber_;
    const std::function<void()> act_;
    int pauses_ = 0;
    std::int64_t waited_ = 0;
};

// A lock with the place it needs.
class TestLock {
public:
    bool take(const std::string& target) { return place_.find(target) && lock_.take(place_); }
    bool withdraw() { return lock_.withdraw(); }
    std::string newFile() const { return place_.pathOf(lock_.nameOfNewFile()); }

private:
    IniPlace place_;
    IniLock lock_;
};

// What the store writes into a lock file.
inline constexpr const char* kLockText = "jxodbc lock\n";

class IniLockTest : public ::testing::Test {
protected:
    void TearDown() override { EXPECT_EQ(openDescriptors(), descriptors_); }

    // The lock is taken when the writer that holds it lets go at the fifth pause.
    void expectTakenFromAHolder() const {
        Holder holder(lock_);
        ActingFiles waiting(5, [&holder] { holder.letGo(); });
        const InUse inUse(waiting);
        TestLock lock;
        EXPECT_TRUE(lock.take(target_));
        EXPECT_EQ(waiting.waited(), 5 * kAskAgainInMilliseconds);
    }

    const std::size_t descriptors_ = openDescriptors();
    TestHome home_;
    const std::string target_ = home_.file("x.ini");
    const std::string lock_ = home_.file(".x.ini.jxlock");
};

}  // namespace jx::ini::test
