// What a thread's cache keeps, for how long, and which calls a look-up makes.
#include "jxutl/ini/profile_cache.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include <jxprofile.h>
#include "faulty_files.h"
#include "jxutl/thread/failure.h"
#include "stamped_files.h"
#include "test_home.h"

namespace jx::ini::test {
namespace {

using jx::test::TestHome;

std::string value(ProfileCache& cache, const std::string& path, std::string_view section = "A",
                  std::string_view key = "k") {
    IniIndex* index = cache.read(path);
    return index == nullptr ? "(no file)" : std::string(index->value(section, key).value_or("(none)"));
}

TEST(ProfileCache, AnUnchangedFileCostsOneStatAndNoOpen) {
    StampedFiles disk;
    const InUse inUse(disk);
    const TestHome home{{"f", "[A]\nk=1\n"}};
    ProfileCache cache;
    EXPECT_EQ(value(cache, home.file("f")), "1");
    EXPECT_EQ(disk.calls(), "open 1, close 1, read 1, look 1, lookAtOpen 1");
    disk.forget();
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(value(cache, home.file("f")), "1");
    EXPECT_EQ(disk.calls(), "look 100");
}

TEST(ProfileCache, TwoFilesReadAlternatelyCostOneStatEach) {
    StampedFiles disk;
    const InUse inUse(disk);
    const TestHome home{{"f", "[A]\nk=1\n"}, {"g", "[A]\nk=2\n"}};
    ProfileCache cache;
    value(cache, home.file("f"));
    value(cache, home.file("g"));
    disk.forget();
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(value(cache, home.file("f")), "1");
        EXPECT_EQ(value(cache, home.file("g")), "2");
    }
    EXPECT_EQ(disk.calls(), "look 20");
}

// As in a program that changes HOME and changes it back: its paths then have other numbers.
TEST(ProfileCache, AFileIsKeptWhenItsPathGetsAnotherNumber) {
    StampedFiles disk;
    const InUse inUse(disk);
    const TestHome home{{"f", "[A]\nk=1\n"}, {"g", "[A]\nk=2\n"}};
    ProfileCache cache;
    const auto numbered = [&](const char* name, std::uint64_t number) {
        return std::string(cache.read(home.file(name), number)->value("A", "k").value_or("(none)"));
    };
    EXPECT_EQ(numbered("f", 1), "1");
    EXPECT_EQ(numbered("g", 2), "2");
    disk.forget();
    EXPECT_EQ(numbered("f", 3), "1");
    EXPECT_EQ(numbered("f", 0), "1");
    EXPECT_EQ(numbered("g", 4), "2");
    EXPECT_EQ(numbered("f", 5), "1");
    EXPECT_EQ(numbered("g", 4), "2");
    EXPECT_EQ(disk.calls(), "look 5");
}

TEST(ProfileCache, TwelveFilesAreKeptAndTheLeastRecentlyReadIsDropped) {
    static_assert(ProfileCache::kMostFiles >= 8);
    StampedFiles disk;
    const InUse inUse(disk);
    const TestHome home;
    ProfileCache cache;
    const auto name = [&](std::size_t number) { return home.file("f" + std::to_string(number)); };
    for (std::size_t i = 0; i <= ProfileCache::kMostFiles; ++i)
        home.put("f" + std::to_string(i), "[A]\nk=" + std::to_string(i) + "\n");
    for (std::size_t i = 0; i < ProfileCache::kMostFiles; ++i)
        EXPECT_EQ(value(cache, name(i)), std::to_string(i));
    EXPECT_EQ(value(cache, name(0)), "0");
    disk.forget();
    EXPECT_EQ(value(cache, name(ProfileCache::kMostFiles)), std::to_string(ProfileCache::kMostFiles));
    EXPECT_EQ(disk.count(Call::open), 1);
    for (std::size_t i = 0; i <= ProfileCache::kMostFiles; ++i)
        EXPECT_TRUE(i == 1 || value(cache, name(i)) == std::to_string(i)) << i;
    EXPECT_EQ(disk.count(Call::open), 1) << "all but file 1 are still there";
    EXPECT_EQ(value(cache, name(1)), "1");
    EXPECT_EQ(disk.count(Call::open), 2);
}

TEST(ProfileCache, AChangeShowsAtOnce) {
    StampedFiles disk;
    const InUse inUse(disk);
    const TestHome home{{"f", "[A]\nk=1\n"}};
    ProfileCache cache;
    EXPECT_EQ(value(cache, home.file("f")), "1");
    home.put("f", "[A]\nk=22\n");  // another size
    EXPECT_EQ(value(cache, home.file("f")), "22");
    home.put("g", "[A]\nk=33\n");  // another inode
    ASSERT_EQ(::rename(home.file("g").c_str(), home.file("f").c_str()), 0);
    EXPECT_EQ(value(cache, home.file("f")), "33");
    home.put("f", "[A]\nk=44\n");  // only another time
    disk.changed.tv_nsec += 1;
    EXPECT_EQ(value(cache, home.file("f")), "44");
    ASSERT_EQ(::unlink(home.file("f").c_str()), 0);
    EXPECT_EQ(value(cache, home.file("f")), "(no file)");
    home.put("f", "[A]\nk=55\n");  // often the inode that was just released
    disk.changed.tv_nsec += 1;
    EXPECT_EQ(value(cache, home.file("f")), "55");
}

// With the real clock and times, without a pause: the same size, the same inode.
TEST(ProfileCache, AWriteDirectlyFollowedByAReadInTheSameTickIsSeen) {
    const TestHome home{{"f", "[A]\nk=0000\n"}};
    const int fd = ::open(home.file("f").c_str(), O_WRONLY | O_CLOEXEC);
    ASSERT_GE(fd, 0);
    ProfileCache cache;
    for (int i = 1000; i < 5000; ++i) {
        const std::string written = std::to_string(i);
        ASSERT_EQ(::pwrite(fd, written.data(), 4, 6), 4);
        ASSERT_EQ(value(cache, home.file("f")), written);
    }
    ::close(fd);
}

TEST(ProfileCache, AWriteThroughTheStoreIsSeenByTheNextRead) {
    const TestHome home;
    const auto bytes = [](const char* text) { return reinterpret_cast<const unsigned char*>(text); };
    ProfileCache cache;
    WatchedFiles unflushed;
    const InUse inUse(unflushed);
    for (int i = 1000; i < 1300; ++i) {
        const std::string written = std::to_string(i);
        ASSERT_EQ(jxWritePrivateProfileString(bytes("A"), bytes("k"), bytes(written.c_str()), bytes(".odbc.ini")), 1);
        ASSERT_EQ(value(cache, home.file(".odbc.ini")), written);
    }
}

TEST(ProfileCache, TheIndexIsKeptWhenTheBytesAreTheSame) {
    StampedFiles disk;
    const InUse inUse(disk);
    const TestHome home{{"f", "[A]\nk=1\n[B]\n"}};
    disk.clock = disk.written;  // every read is a new one
    ProfileCache cache;
    const char* list = cache.read(home.file("f"))->sections().data();
    EXPECT_EQ(cache.read(home.file("f"))->sections().data(), list);
    EXPECT_EQ(disk.count(Call::open), 2);
    home.put("f", "[A]\nk=1\n[C]\n");
    EXPECT_EQ(cache.read(home.file("f"))->sections(), std::string_view("A\0C\0", 4));
}

TEST(ProfileCache, AFileIsKeptUnderEachOfItsPaths) {
    const TestHome home{{"f", "[A]\nk=1\n"}};
    ASSERT_EQ(::symlink("f", home.file("link").c_str()), 0);
    ProfileCache cache;
    EXPECT_EQ(value(cache, home.file("f")), "1");
    EXPECT_EQ(value(cache, home.file("link")), "1");
    home.put("g", "[A]\nk=2\n");
    ASSERT_EQ(::unlink(home.file("link").c_str()), 0);
    ASSERT_EQ(::symlink("g", home.file("link").c_str()), 0);
    EXPECT_EQ(value(cache, home.file("link")), "2");
    EXPECT_EQ(value(cache, home.file("f")), "1");
}

TEST(ProfileCache, ARelativePathFollowsTheWorkingDirectory) {
    const TestHome home;
    ASSERT_EQ(::mkdir(home.file("a").c_str(), 0700), 0);
    ASSERT_EQ(::mkdir(home.file("b").c_str(), 0700), 0);
    home.put("a/f", "[A]\nk=1\n");
    home.put("b/f", "[A]\nk=2\n");
    const std::string old = std::filesystem::current_path();
    ProfileCache cache;
    ASSERT_EQ(::chdir(home.file("a").c_str()), 0);
    EXPECT_EQ(value(cache, "f"), "1");
    ASSERT_EQ(::chdir(home.file("b").c_str()), 0);
    EXPECT_EQ(value(cache, "f"), "2");
    ASSERT_EQ(::chdir(old.c_str()), 0);
}

TEST(ProfileCache, AnAbsentFileIsNotAFailure) {
    const TestHome home{{"f", ""}};
    ProfileCache cache;
    for (const char* name : {"gone", "gone/below", "f/below"}) {
        noteFailure(JxIniStepRead, "earlier", EIO);
        EXPECT_EQ(cache.read(home.file(name)), nullptr);
        EXPECT_EQ(lastFailure().step, JxIniStepNone) << name;
    }
}

TEST(ProfileCache, WhatIsNotARegularFileIsNeverOpened) {
    StampedFiles disk;
    const InUse inUse(disk);
    const TestHome home;
    ASSERT_EQ(::mkfifo(home.file("fifo").c_str(), 0600), 0);
    ProfileCache cache;
    const struct {
        std::string path;
        int error;
    } rows[] = {{home.path(), EISDIR}, {home.file("fifo"), ENOTSUP}, {"/dev/null", ENOTSUP}, {"/dev/zero", ENOTSUP}};
    for (const auto& row : rows) {
        EXPECT_EQ(cache.read(row.path), nullptr);
        EXPECT_EQ(lastFailure().step, JxIniStepOpen) << row.path;
        EXPECT_EQ(lastFailure().error, row.error) << row.path;
        EXPECT_EQ(lastFailure().path, row.path);
    }
    EXPECT_EQ(disk.count(Call::open), 0);
}

TEST(ProfileCache, AFailedStatIsAFailure) {
    const TestHome home;
    ASSERT_EQ(::symlink("loop", home.file("loop").c_str()), 0);
    ProfileCache cache;
    EXPECT_EQ(cache.read(home.file("loop")), nullptr);
    EXPECT_EQ(lastFailure().step, JxIniStepLook);
    EXPECT_EQ(lastFailure().error, ELOOP);
    EXPECT_EQ(cache.read(home.file(std::string(5000, 'x'))), nullptr);
    EXPECT_EQ(lastFailure().error, ENAMETOOLONG);
}

TEST(ProfileCache, EveryCallFailsOnceAndFromThenOnAndTheNextReadIsRight) {
    const TestHome home{{"f", "[A]\nk=1\n"}};
    for (const Fail style : {Fail::once, Fail::fromThenOn}) {
        for (int n = 1;; ++n) {
            SCOPED_TRACE(n);
            ProfileCache cache;
            bool fired = false;
            {
                FaultyFiles disk(n, style, EIO);
                const InUse inUse(disk);
                const std::string answer = value(cache, home.file("f"));
                fired = disk.fired();
                const bool harmless = !fired || disk.failedCall() == Call::close;
                EXPECT_EQ(answer, harmless ? "1" : "(no file)");
                EXPECT_EQ(lastFailure().step == JxIniStepNone, harmless);
            }
            EXPECT_EQ(value(cache, home.file("f")), "1");
            EXPECT_EQ(lastFailure().step, JxIniStepNone);
            if (!fired)
                break;
        }
    }
}

TEST(ProfileCache, ALargeFileTakesLessThanFourTimesItsSize) {
    std::string text = "[ODBC Data Sources]\n";
    for (int i = 0; i < 10000; ++i)
        text += "Data Source " + std::to_string(i) + "=Sample Driver\n";
    for (int i = 0; i < 10000; ++i)
        text += "\n[Data Source " + std::to_string(i) +
                "]\nDriver=/opt/sample/lib/libsample.so\nDescription=A sample\nServer=db.example.com\nPort=5432\n"
                "Database=branch\nUserName=report\nReadOnly=No\n";
    const TestHome home{{"f", text}};
    ProfileCache cache;
    for (int state = 0; state < 2; ++state) {
        IniIndex* index = cache.read(home.file("f"));
        ASSERT_NE(index, nullptr);
        index->sections();
        for (int i = 0; i < 10000; ++i)
            ASSERT_TRUE(index->keys("Data Source " + std::to_string(i)).has_value());
        index->keys("ODBC Data Sources");
        EXPECT_LT(cache.memory(), 4 * text.size());
        home.put("f", text + "; changed\n");
    }
}

// ---- what is let go ----

constexpr std::size_t kLarge = std::size_t{20} << 20;

std::string large(char fill) {
    return "[A]\nk=1\n;" + std::string(kLarge, fill) + "\n";
}

TEST(ProfileCache, KeepsAtMost64MebibytesBesidesTheFileInUse) {
    const TestHome home;
    ProfileCache cache;
    for (int i = 0; i < 6; ++i) {
        home.put("f" + std::to_string(i), large('x'));
        EXPECT_EQ(value(cache, home.file("f" + std::to_string(i))), "1");
        EXPECT_LE(cache.memory(), ProfileCache::kMostBytes + kLarge * 5 / 4);
    }
    EXPECT_GT(cache.memory(), 3 * kLarge);
    home.put("small", "[A]\nk=1\n");
    EXPECT_EQ(value(cache, home.file("small")), "1");
    EXPECT_LE(cache.memory(), ProfileCache::kMostBytes);
}

TEST(ProfileCache, AnIndexThatGrewCountsAsWell) {
    const TestHome home;
    ProfileCache cache;
    std::string text = "[A]\nk=1\n";
    for (int key = 0; key < 1'000'000; ++key)
        text += "\nkey " + std::to_string(key) + "=1";
    for (const char* name : {"f", "g"}) {
        home.put(name, text);
        cache.read(home.file(name))->keys("A");
    }
    EXPECT_GT(cache.memory(), ProfileCache::kMostBytes);
    home.put("small", "[A]\nk=1\n");
    EXPECT_EQ(value(cache, home.file("small")), "1");
    EXPECT_LE(cache.memory(), ProfileCache::kMostBytes);
}

TEST(ProfileCache, AFileThatIsGoneIsLetGoAtTheNextRead) {
    const TestHome home{{"f", large('x')}, {"other", "[A]\nk=1\n"}};
    ProfileCache cache;
    EXPECT_EQ(value(cache, home.file("f")), "1");
    std::filesystem::remove(home.file("f"));
    EXPECT_EQ(cache.read(home.file("f")), nullptr);
    EXPECT_EQ(cache.memory(), 0U);

    home.put("f", large('x'));
    EXPECT_EQ(value(cache, home.file("f")), "1");
    std::filesystem::remove(home.file("f"));
    EXPECT_EQ(value(cache, home.file("other")), "1");
    EXPECT_LT(cache.memory(), kLarge);
}

TEST(ProfileCache, AFileThatBecameSmallGivesItsRoomBack) {
    const TestHome home{{"f", large('x')}};
    ProfileCache cache;
    EXPECT_EQ(value(cache, home.file("f")), "1");
    home.put("f", "[A]\nk=2\n");
    EXPECT_EQ(value(cache, home.file("f")), "2");
    EXPECT_LT(cache.memory(), kLarge / 100);
}

TEST(ProfileCache, EachThreadHasItsOwnAndItEndsWithTheThread) {
    ProfileCache* const own = threadCache();
    EXPECT_EQ(threadCache(), own);
    ProfileCache* others = own;
    std::thread([&others] { others = threadCache(); }).join();
    EXPECT_NE(others, own);
}

std::string readAtTheEnd;

// A thread's clean-up that runs after its cache was released: it gets a new one, which is released as well. The C
// library makes four rounds of clean-ups. In the fourth ThreadSanitizer takes away what it knows of the thread, and
// would crash when a cache is released after that; so the last read is in the second.
void readOnceMore(void* key) {
    unsigned char buffer[20] = {};
    const auto bytes = [](const char* text) { return reinterpret_cast<const unsigned char*>(text); };
    jxGetPrivateProfileString(bytes("A"), bytes("k"), bytes("none"), buffer, sizeof buffer, bytes(".odbc.ini"));
    readAtTheEnd += reinterpret_cast<const char*>(buffer);
    if (readAtTheEnd.size() < 2)
        ::pthread_setspecific(*static_cast<pthread_key_t*>(key), key);
}

TEST(ProfileCache, CleanUpAtTheEndOfAThreadMayStillRead) {
    const TestHome home{{".odbc.ini", "[A]\nk=1\n"}};
    static pthread_key_t key;
    ASSERT_EQ(::pthread_key_create(&key, readOnceMore), 0);
    std::thread([] {
        ::pthread_setspecific(key, &key);
        EXPECT_NE(threadCache(), nullptr);
    }).join();
    EXPECT_EQ(readAtTheEnd, "11");
}

}  // namespace
}  // namespace jx::ini::test
