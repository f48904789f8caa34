// Reading a whole file, and how long its text is current.
#include "jxutl/ini/file_text.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>

#include "child_process.h"
#include "faulty_files.h"
#include "jxutl/thread/failure.h"
#include "stamped_files.h"
#include "test_home.h"

namespace jx::ini::test {
namespace {

using jx::test::TestHome;
using Outcome = FileText::Outcome;

constexpr long kTick = 1'000'000;  // a millisecond

timespec at(time_t seconds, long nanoseconds) {
    timespec time{};
    time.tv_sec = seconds;
    time.tv_nsec = nanoseconds;
    return time;
}

FileStamp stampAt(timespec written, timespec changed) {
    FileStamp stamp;
    stamp.written = written;
    stamp.changed = changed;
    return stamp;
}

TEST(FileStamp, DiffersWhateverDiffers) {
    const FileStamp stamp{1, 2, 3, at(4, 5), at(6, 7)};
    EXPECT_TRUE(stamp == (FileStamp{1, 2, 3, at(4, 5), at(6, 7)}));
    const FileStamp others[] = {
        {0, 2, 3, at(4, 5), at(6, 7)}, {1, 0, 3, at(4, 5), at(6, 7)}, {1, 2, 0, at(4, 5), at(6, 7)},
        {1, 2, 3, at(0, 5), at(6, 7)}, {1, 2, 3, at(4, 0), at(6, 7)}, {1, 2, 3, at(4, 5), at(0, 7)},
        {1, 2, 3, at(4, 5), at(6, 0)},
    };
    for (const FileStamp& other : others)
        EXPECT_FALSE(stamp == other);
}

struct stat stateOf(const std::string& path) {
    struct stat state {};
    EXPECT_EQ(uninterrupted([&] { return files().lookAt(path.c_str(), &state); }), 0) << path;
    return state;
}

Outcome readNow(FileText& text, const std::string& path) {
    return text.read(path, stateOf(path));
}

void append(const std::string& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary | std::ios::app) << bytes;
}

std::string repeated(std::string_view part, std::size_t size) {
    std::string bytes;
    while (bytes.size() < size)
        bytes += part;
    bytes.resize(size);
    return bytes;
}

struct SettledRow {
    const char* name;
    timespec time;
    timespec now;
    bool settled;
};

const SettledRow kSettled[] = {
    {"long ago", at(1000, 5), at(9000, 0), true},
    {"the same moment", at(1000, 500 * kTick), at(1000, 500 * kTick), false},
    {"the same tick", at(1000, 500 * kTick), at(1000, 504 * kTick), false},
    {"two ticks of a slow kernel", at(1000, 500 * kTick), at(1000, 520 * kTick), false},
    {"just beyond", at(1000, 500 * kTick), at(1000, 520 * kTick + 1), true},
    {"across a second", at(1000, 999 * kTick), at(1001, 10 * kTick), false},
    {"well across a second", at(1000, 999 * kTick), at(1001, 20 * kTick), true},
    {"whole seconds, one later", at(1000, 0), at(1001, 0), false},
    {"whole seconds, two later", at(1000, 0), at(1002, 0), false},
    {"whole seconds, two and a tick later", at(1000, 0), at(1002, 20 * kTick), false},
    {"whole seconds, more than two later", at(1000, 0), at(1002, 21 * kTick), true},
    {"ahead by a little", at(1000, 500 * kTick), at(1000, 499 * kTick), false},
    {"ahead by far", at(9000, 1), at(1000, 0), false},
    {"before all time", at(-4'000'000'000, 1), at(1000, 0), true},
    {"the lowest there is", at(INT64_MIN, 1), at(1'700'000'000, 0), true},
    {"the highest there is", at(INT64_MAX, 1), at(1'700'000'000, 0), false},
    {"ten seconds and more", at(1000, 999 * kTick), at(1011, 0), true},
};

TEST(FileText, AStampIsSettledWhenALaterChangeMustShowInIt) {
    if (sizeof(time_t) < 8)
        GTEST_SKIP() << "time_t is narrow here";
    for (const SettledRow& row : kSettled) {
        SCOPED_TRACE(row.name);
        const timespec old = at(0, 1);
        EXPECT_EQ(isSettled(stampAt(row.time, old), row.now), row.settled);
        EXPECT_EQ(isSettled(stampAt(old, row.time), row.now), row.settled);
        EXPECT_EQ(isSettled(stampAt(row.time, row.time), row.now), row.settled);
    }
}

TEST(FileText, ReadsTheWholeFile) {
    StampedFiles disk;
    const InUse inUse(disk);
    const TestHome home;
    for (const std::size_t size : {0U, 1U, 4096U, 32767U, 32768U, 32769U, 65536U, 300'000U}) {
        const std::string bytes = repeated("a line of a file\n", size);
        home.put("f", bytes);
        FileText text;
        EXPECT_EQ(readNow(text, home.file("f")), Outcome::other) << size;
        EXPECT_EQ(text.view(), bytes) << size;
        EXPECT_TRUE(text.isCurrent(stateOf(home.file("f")))) << size;
    }
}

TEST(FileText, OpensWithoutWaitingAndKeepsTheDescriptorToItself) {
    StampedFiles disk;
    const InUse inUse(disk);
    const TestHome home{{"f", "x"}};
    FileText text;
    readNow(text, home.file("f"));
    EXPECT_EQ(disk.lastFlags(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY | O_NOATIME);
    EXPECT_EQ(disk.calls(), "open 1, close 1, read 1, look 1, lookAtOpen 1");
}

TEST(FileText, AFileOfAnotherUserIsOpenedAgainWithoutNoAtime) {
    StampedFiles disk;
    disk.openError = EPERM;
    const InUse inUse(disk);
    const TestHome home{{"f", "x"}};
    FileText text;
    EXPECT_EQ(readNow(text, home.file("f")), Outcome::other);
    EXPECT_EQ(disk.count(Call::open), 2);
    disk.written.tv_nsec += 1;
    EXPECT_EQ(readNow(text, home.file("f")), Outcome::other);
    EXPECT_EQ(disk.count(Call::open), 3) << "it need not be tried again";
    EXPECT_EQ(disk.lastFlags() & O_NOATIME, 0);
}

TEST(FileText, ShortAndInterruptedReadsMakeTheSameText) {
    const std::string bytes = repeated("0123456789\n", 1000);
    const TestHome home{{"f", bytes}};
    ShortFiles disk(7, 3);
    const InUse inUse(disk);
    FileText text;
    EXPECT_EQ(readNow(text, home.file("f")), Outcome::other);
    EXPECT_EQ(text.view(), bytes);
}

// Every part of a file's state, changed alone.
TEST(FileText, AnyChangeOfStateMakesTheTextNotCurrent) {
    using Adjust = void (*)(struct stat&);
    const Adjust changes[] = {
        [](struct stat& state) { ++state.st_dev; },          [](struct stat& state) { ++state.st_ino; },
        [](struct stat& state) { ++state.st_size; },         [](struct stat& state) { ++state.st_mtim.tv_sec; },
        [](struct stat& state) { ++state.st_mtim.tv_nsec; }, [](struct stat& state) { --state.st_mtim.tv_nsec; },
        [](struct stat& state) { ++state.st_ctim.tv_sec; },  [](struct stat& state) { ++state.st_ctim.tv_nsec; },
    };
    StampedFiles disk;
    const InUse inUse(disk);
    const TestHome home{{"f", "x"}};
    FileText text;
    readNow(text, home.file("f"));
    EXPECT_TRUE(text.isCurrent(stateOf(home.file("f"))));
    for (std::size_t i = 0; i < std::size(changes); ++i) {
        disk.adjust = changes[i];
        EXPECT_FALSE(text.isCurrent(stateOf(home.file("f")))) << i;
    }
    disk.adjust = [](struct stat& state) { ++state.st_atim.tv_sec; };
    EXPECT_TRUE(text.isCurrent(stateOf(home.file("f"))));
}

TEST(FileText, AFreshlyChangedFileIsNotTrustedAndCostsAReadEachTime) {
    StampedFiles disk;
    const InUse inUse(disk);
    const TestHome home{{"f", "first"}};
    disk.clock = disk.written;
    FileText text;
    EXPECT_EQ(readNow(text, home.file("f")), Outcome::other);
    EXPECT_FALSE(text.isCurrent(stateOf(home.file("f"))));
    home.put("f", "other");  // the same size, in the same tick
    EXPECT_EQ(readNow(text, home.file("f")), Outcome::other);
    EXPECT_EQ(text.view(), "other");
    disk.clock.tv_sec += 1;
    EXPECT_EQ(readNow(text, home.file("f")), Outcome::same);
    EXPECT_TRUE(text.isCurrent(stateOf(home.file("f"))));
}

// The time is taken before the reading: a change right after that may get the same time.
TEST(FileText, TheAgeOfAChangeCountsFromBeforeTheReading) {
    StampedFiles disk;
    const InUse inUse(disk);
    const TestHome home{{"f", "x"}};
    disk.clock = disk.written;
    disk.beforeReading = [&disk] { disk.clock.tv_sec += 100; };
    FileText text;
    readNow(text, home.file("f"));
    EXPECT_FALSE(text.isCurrent(stateOf(home.file("f"))));
}

struct SameRow {
    const char* name;
    std::string before;
    std::string after;
    Outcome outcome;
};

TEST(FileText, UnchangedBytesAreNotCopiedAgain) {
    const std::string large = repeated("0123456789abcde\n", 100'000);
    std::string changedInside = large;
    changedInside[50'000] = 'X';
    std::string changedAtTheEnd = large;
    changedAtTheEnd.back() = 'X';
    const SameRow rows[] = {
        {"small", "x", "x", Outcome::same},
        {"empty", "", "", Outcome::same},
        {"large", large, large, Outcome::same},
        {"changed inside", large, changedInside, Outcome::other},
        {"changed at the end", large, changedAtTheEnd, Outcome::other},
        {"longer", large, large + "more", Outcome::other},
        {"shorter", large, large.substr(0, 99'999), Outcome::other},
        {"shorter by parts", large, large.substr(0, 32768), Outcome::other},
        {"emptied", "x", "", Outcome::other},
        {"filled", "", "x", Outcome::other},
    };
    for (const SameRow& row : rows) {
        SCOPED_TRACE(row.name);
        StampedFiles disk;
        const InUse inUse(disk);
        const TestHome home{{"f", row.before}};
        disk.clock = disk.written;
        disk.adjust = [](struct stat& state) { state.st_size = 0; };  // their states are the same
        FileText text;
        readNow(text, home.file("f"));
        EXPECT_EQ(text.view(), row.before);
        const char* place = text.view().data();
        home.put("f", row.after);
        EXPECT_EQ(readNow(text, home.file("f")), row.outcome);
        EXPECT_EQ(text.view(), row.after);
        EXPECT_TRUE(row.outcome == Outcome::other || text.view().data() == place);
    }
}

TEST(FileText, AFileThatGrowsWhileItIsReadIsReadAgain) {
    StampedFiles disk;
    const InUse inUse(disk);
    const TestHome home{{"f", "one\n"}};
    const struct stat before = stateOf(home.file("f"));
    disk.beforeReading = [&] {
        append(home.file("f"), "two\n");
        disk.beforeReading = nullptr;
    };
    FileText text;
    EXPECT_EQ(text.read(home.file("f"), before), Outcome::other);
    EXPECT_EQ(text.view(), "one\ntwo\n");
    EXPECT_EQ(disk.count(Call::open), 2);
    EXPECT_TRUE(text.isCurrent(stateOf(home.file("f"))));
}

TEST(FileText, AFileThatShrinksWhileItIsReadIsReadAgain) {
    StampedFiles disk;
    const InUse inUse(disk);
    const TestHome home{{"f", "one\ntwo\n"}};
    const struct stat before = stateOf(home.file("f"));
    disk.beforeReading = [&] {
        home.put("f", "one\n");
        disk.beforeReading = nullptr;
    };
    FileText text;
    EXPECT_EQ(text.read(home.file("f"), before), Outcome::other);
    EXPECT_EQ(text.view(), "one\n");
    EXPECT_TRUE(text.isCurrent(stateOf(home.file("f"))));
}

TEST(FileText, AFileThatIsReplacedBetweenLookAndOpeningIsReadAgain) {
    StampedFiles disk;
    const InUse inUse(disk);
    const TestHome home{{"f", "old"}, {"g", "new"}};
    const struct stat before = stateOf(home.file("f"));
    disk.beforeOpening = [&] {
        ASSERT_EQ(::rename(home.file("g").c_str(), home.file("f").c_str()), 0);
        disk.beforeOpening = nullptr;
    };
    FileText text;
    text.read(home.file("f"), before);
    EXPECT_EQ(text.view(), "new");
    EXPECT_EQ(disk.count(Call::open), 2);
    EXPECT_TRUE(text.isCurrent(stateOf(home.file("f"))));
}

TEST(FileText, AFileThatKeepsChangingIsReadButNotTrusted) {
    StampedFiles disk;
    const InUse inUse(disk);
    const TestHome home{{"f", ""}};
    const struct stat before = stateOf(home.file("f"));
    disk.beforeReading = [&] { append(home.file("f"), "x"); };
    FileText text;
    EXPECT_EQ(text.read(home.file("f"), before), Outcome::other);
    EXPECT_EQ(disk.count(Call::open), 5);
    EXPECT_FALSE(text.view().empty());
    disk.beforeReading = nullptr;
    EXPECT_FALSE(text.isCurrent(stateOf(home.file("f"))));
    EXPECT_NE(readNow(text, home.file("f")), Outcome::none);
    EXPECT_EQ(text.view(), home.text("f"));
}

// As files of /proc: their state has no size.
TEST(FileText, AFileThatReportsNoSizeIsReadButNotTrusted) {
    const std::string bytes = repeated("0123456789\n", 100'000);
    StampedFiles disk;
    const InUse inUse(disk);
    disk.adjust = [](struct stat& state) { state.st_size = 0; };
    const TestHome home{{"f", bytes}};
    FileText text;
    EXPECT_EQ(readNow(text, home.file("f")), Outcome::other);
    EXPECT_EQ(text.view(), bytes);
    EXPECT_FALSE(text.isCurrent(stateOf(home.file("f"))));
}

TEST(FileText, AnAbsentFileIsNotAFailure) {
    const TestHome home{{"f", "x"}};
    const struct stat before = stateOf(home.file("f"));
    for (const char* name : {"gone", "f/below"}) {
        noteFailure(JxIniStepRead, "earlier", EIO);
        FileText text;
        EXPECT_EQ(text.read(home.file(name), before), Outcome::none);
        EXPECT_EQ(lastFailure().step, JxIniStepNone) << name;
    }
}

TEST(FileText, AFileOfAGibibyteOrMoreIsRefusedUnread) {
    StampedFiles disk;
    const InUse inUse(disk);
    const TestHome home{{"f", "x"}};
    for (const std::size_t size : {std::size_t{1} << 30, (std::size_t{1} << 31) - 1}) {
        ASSERT_EQ(::truncate(home.file("f").c_str(), static_cast<off_t>(size)), 0);
        FileText text;
        EXPECT_EQ(readNow(text, home.file("f")), Outcome::none);
        EXPECT_EQ(lastFailure().step, JxIniStepRead);
        EXPECT_EQ(lastFailure().error, EFBIG);
        EXPECT_EQ(lastFailure().path, home.file("f"));
        EXPECT_EQ(disk.count(Call::read), 0);
        EXPECT_EQ(text.memory(), 0U);
    }
}

// A FIFO that replaced the file after the stat: it is opened, but nothing waits and nothing is read.
TEST(FileText, AFifoInTheFilesPlaceIsAFailureWithoutWaiting) {
    StampedFiles disk;
    const InUse inUse(disk);
    const TestHome home{{"f", "x"}};
    const struct stat before = stateOf(home.file("f"));
    ASSERT_EQ(::unlink(home.file("f").c_str()), 0);
    ASSERT_EQ(::mkfifo(home.file("f").c_str(), 0600), 0);
    FileText text;
    EXPECT_EQ(text.read(home.file("f"), before), Outcome::none);
    EXPECT_EQ(lastFailure().step, JxIniStepOpen);
    EXPECT_EQ(lastFailure().error, ENOTSUP);
}

TEST(FileText, EveryCallThatFailsIsNamed) {
    const TestHome home{{"f", "text"}};
    const struct stat before = stateOf(home.file("f"));
    struct {
        Call call;
        JxIniStep step;
    } const expected[] = {{Call::open, JxIniStepOpen}, {Call::read, JxIniStepRead}, {Call::lookAtOpen, JxIniStepLook}};
    int n = 1;
    for (const auto& row : expected) {
        FaultyFiles disk(n++, Fail::fromThenOn, EIO);
        const InUse inUse(disk);
        FileText text;
        EXPECT_EQ(text.read(home.file("f"), before), Outcome::none);
        EXPECT_EQ(disk.failedCall(), row.call);
        EXPECT_EQ(lastFailure().step, row.step);
        EXPECT_EQ(lastFailure().error, EIO);
        EXPECT_EQ(lastFailure().path, home.file("f"));
    }
}

TEST(FileText, AfterAFailureTheNextReadIsWhole) {
    const TestHome home{{"f", repeated("first ", 100'000)}};
    FileText text;
    ASSERT_EQ(readNow(text, home.file("f")), Outcome::other);
    const std::string next = repeated("second ", 100'000);
    home.put("f", next);
    for (int n = 1; n <= 5; ++n) {
        {
            const struct stat before = stateOf(home.file("f"));
            FaultyFiles disk(n, Fail::fromThenOn, EIO);
            const InUse inUse(disk);
            text.read(home.file("f"), before);
        }
        EXPECT_NE(readNow(text, home.file("f")), Outcome::none) << n;
        EXPECT_EQ(text.view(), next) << n;
    }
}

TEST(FileText, AFileThatMayNotBeReadIsAFailure) {
    const TestHome home{{"f", "secret"}};
    ASSERT_EQ(::chmod(home.path().c_str(), 0755), 0);
    ASSERT_EQ(::chmod(home.file("f").c_str(), 0), 0);
    const struct stat before = stateOf(home.file("f"));
    EXPECT_TRUE(passesAsNobody([&] {
        FileText text;
        EXPECT_EQ(text.read(home.file("f"), before), Outcome::none);
        EXPECT_EQ(lastFailure().step, JxIniStepOpen);
        EXPECT_EQ(lastFailure().error, EACCES);
        EXPECT_TRUE(text.view().empty());
    }));
}

TEST(FileText, AFileOfAnotherUserIsReadFromTheRealDisk) {
    const TestHome home{{"f", "shared"}};
    ASSERT_EQ(::chmod(home.path().c_str(), 0755), 0);
    ASSERT_EQ(::chmod(home.file("f").c_str(), 0644), 0);
    EXPECT_TRUE(passesAsNobody([&] {
        FileText text;
        EXPECT_EQ(readNow(text, home.file("f")), Outcome::other);
        EXPECT_EQ(text.view(), "shared");
    }));
}

}  // namespace
}  // namespace jx::ini::test
