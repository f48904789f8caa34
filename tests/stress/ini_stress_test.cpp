// Many writers of one file, in processes and threads, some of them killed: no change is lost and no half text is read.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <jxini.h>
#include <jxprofile.h>
#include "jxutl/ini/descriptor.h"
#include "test_home.h"

namespace {

using jx::ini::Descriptor;
using jx::test::TestHome;

constexpr int kWriters = 4;
constexpr int kKeysEach = 25;

// New keys go into the first section, so a text without its begin or end is noticed.
constexpr std::string_view kBegin = "[Keys]\n";
constexpr std::string_view kEnd = "\n[End]\nmark=1\n";

std::string beginning() {
    return std::string(kBegin) + std::string(kEnd);
}

const unsigned char* bytes(const std::string& text) {
    return reinterpret_cast<const unsigned char*>(text.c_str());
}

// On a busy machine a writer may not get the lock in time. The call fails and has changed nothing; it is made again.
bool timedOut() {
    const JxIniFailure failure = jxIniLastFailure();
    return failure.step == JxIniStepLock && failure.error == ETIMEDOUT;
}

bool write(const std::string& file, const std::string& key, const std::string& value) {
    bool written = false;
    do
        written = jxWritePrivateProfileString(bytes("Keys"), bytes(key), bytes(value), bytes(file)) == 1;
    while (!written && timedOut());
    return written;
}

std::string textOf(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

bool isWhole(const std::string& text) {
    return text.starts_with(kBegin) && text.ends_with(kEnd) && text.find('\0') == std::string::npos;
}

std::string keyOf(int writer, int number) {
    return "w" + std::to_string(writer) + "k" + std::to_string(number);
}

// Writes one writer's keys; returns how many failed.
int writeAll(const std::string& file, int writer) {
    int failed = 0;
    for (int number = 0; number < kKeysEach; ++number)
        failed += write(file, keyOf(writer, number), "value of " + keyOf(writer, number)) ? 0 : 1;
    return failed;
}

void expectEveryKeyOnce(const std::string& text) {
    std::size_t lines = 0;
    for (int writer = 0; writer < kWriters; ++writer)
        for (int number = 0; number < kKeysEach; ++number) {
            const std::string key = keyOf(writer, number);
            const std::size_t at = text.find("\n" + key + "=value of " + key + "\n");
            EXPECT_NE(at, std::string::npos) << key << " is lost";
            ++lines;
        }
    EXPECT_EQ(static_cast<std::size_t>(std::count(text.begin(), text.end(), '=')), lines + 1);
    EXPECT_TRUE(isWhole(text));
}

pid_t startChild(const std::function<int()>& body) {
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(body());
    return child;
}

// Events: waits until something changes in a folder. A reader without a pause would slow the writers down.
class Events {
public:
    explicit Events(const std::string& folder) : fd_(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
        constexpr unsigned kByWriters = IN_CREATE | IN_MODIFY | IN_ATTRIB | IN_CLOSE_WRITE | IN_MOVED_TO | IN_DELETE;
        EXPECT_GE(::inotify_add_watch(fd_.get(), folder.c_str(), kByWriters), 0);
    }

    // False once every process has closed the other end of the pipe.
    bool wait(int pipe) const {
        pollfd ready[] = {{fd_.get(), POLLIN, 0}, {pipe, 0, 0}};
        ::poll(ready, 2, -1);
        std::array<char, 4096> events;
        while (::read(fd_.get(), events.data(), events.size()) > 0) {
        }
        return ready[1].revents == 0;
    }

private:
    Descriptor fd_;
};

// Ends: a pipe; every process still at work holds its writing end.
struct Ends {
    Ends() {
        int ends[2] = {-1, -1};
        EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0);
        reading = Descriptor(ends[0]);
        writing = Descriptor(ends[1]);
    }

    Descriptor reading;
    Descriptor writing;
};

// Starts one child for each writer and reads the file until all have ended; returns how often it was not whole or a
// child failed.
int watchWriters(const TestHome& home, const std::function<int(int)>& write) {
    const Events events(home.path());
    Ends ends;
    std::vector<pid_t> children;
    for (int writer = 0; writer < kWriters; ++writer)
        children.push_back(startChild([&] { return write(writer); }));
    ends.writing.close();
    int faults = 0;
    do
        faults += isWhole(textOf(home.file("x.ini"))) ? 0 : 1;
    while (events.wait(ends.reading.get()));
    for (const pid_t child : children) {
        int status = 0;
        faults += ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0 ? 0 : 1;
    }
    return faults;
}

TEST(IniStress, ProcessesLoseNoChangeAndReadersSeeWholeTexts) {
    const TestHome home{{"x.ini", beginning()}};
    const std::string file = home.file("x.ini");
    EXPECT_EQ(watchWriters(home, [&](int writer) { return writeAll(file, writer); }), 0);
    expectEveryKeyOnce(home.text("x.ini"));
    EXPECT_EQ(home.names(), std::vector<std::string>{"x.ini"});
}

TEST(IniStress, ThreadsLoseNoChangeAndReadersSeeWholeTexts) {
    const TestHome home{{"x.ini", beginning()}};
    const std::string file = home.file("x.ini");
    std::atomic<int> faults = 0;
    const Events events(home.path());
    Ends ends;
    std::thread reader([&] {
        do {
            unsigned char mark[8];
            const int length =
                jxGetPrivateProfileString(bytes("End"), bytes("mark"), bytes("lost"), mark, sizeof mark, bytes(file));
            faults += length == 1 && isWhole(textOf(file)) ? 0 : 1;
        } while (events.wait(ends.reading.get()));
    });
    std::vector<std::thread> writers;
    for (int writer = 0; writer < kWriters; ++writer)
        writers.emplace_back([&file, &faults, writer] { faults += writeAll(file, writer); });
    for (std::thread& writer : writers)
        writer.join();
    ends.writing.close();
    reader.join();
    EXPECT_EQ(faults, 0);
    expectEveryKeyOnce(home.text("x.ini"));
    EXPECT_EQ(home.names(), std::vector<std::string>{"x.ini"});
}

TEST(IniStress, WritersThroughALinkAndByNameUseTheSameLock) {
    const TestHome home{{"x.ini", beginning()}};
    ASSERT_EQ(::symlink("x.ini", home.file("link").c_str()), 0);
    const auto name = [](int writer) { return writer % 2 == 0 ? "x.ini" : "link"; };
    EXPECT_EQ(watchWriters(home, [&](int writer) { return writeAll(home.file(name(writer)), writer); }), 0);
    expectEveryKeyOnce(home.text("x.ini"));
    EXPECT_EQ(home.names(), (std::vector<std::string>{"link", "x.ini"}));
}

// Adds one to two counters together; a lost or half change would leave them wrong or different.
int countUp(const std::string& file, int times) {
    for (int i = 0; i < times; ++i) {
        JxIniChange* change = nullptr;
        do
            change = jxIniBegin(file.c_str());
        while (change == nullptr && timedOut());
        std::size_t length = 0;
        const char* before = change == nullptr ? nullptr : jxIniBefore(change, &length);
        JxIniText* text = jxIniParse(before, length);
        JxIniPiece piece;
        const bool found = jxIniFind(text, "Keys", "one", &piece) == 1;
        const std::string next = std::to_string(found ? std::stoi(std::string(piece.value, piece.valueLength)) + 1 : 1);
        jxIniRelease(text);
        const bool set =
            jxIniSet(change, "Keys", "one", next.c_str()) == 1 && jxIniSet(change, "Keys", "two", next.c_str()) == 1;
        if (!set || jxIniCommit(change) != 1)
            return 1;
    }
    return 0;
}

TEST(IniStress, BatchesReadAndWriteAsOne) {
    const TestHome home{{"x.ini", beginning()}};
    const std::string file = home.file("x.ini");
    EXPECT_EQ(watchWriters(home, [&](int) { return countUp(file, kKeysEach); }), 0);
    const std::string count = std::to_string(kWriters * kKeysEach);
    EXPECT_EQ(home.text("x.ini"), "[Keys]\none=" + count + "\ntwo=" + count + "\n" + std::string(kEnd));
}

[[noreturn]] void writeForEver(const std::string& file) {
    for (unsigned number = 0;; ++number)
        write(file, "killed", std::to_string(number));
}

TEST(IniStress, WritersKilledAtAnyMomentDoNoHarm) {
    constexpr int kKills = 100;
    const TestHome home{{"x.ini", beginning()}};
    const std::string file = home.file("x.ini");
    const unsigned seed = std::random_device()();
    std::printf("seed %u\n", seed);
    std::mt19937 random(seed);
    std::uniform_int_distribution<useconds_t> moment(0, 8000);
    int leftBehind = 0;
    for (int kill = 0; kill < kKills; ++kill) {
        const pid_t child = startChild([&]() -> int { writeForEver(file); });
        ::usleep(moment(random));
        ASSERT_EQ(::kill(child, SIGKILL), 0);
        ASSERT_EQ(::waitpid(child, nullptr, 0), child);
        ASSERT_TRUE(isWhole(home.text("x.ini"))) << home.text("x.ini");
        leftBehind += home.names().size() > 1 ? 1 : 0;
        ASSERT_TRUE(write(file, "after", std::to_string(kill)));
        ASSERT_NE(home.text("x.ini").find("\nafter=" + std::to_string(kill) + "\n"), std::string::npos);
        ASSERT_EQ(home.names(), std::vector<std::string>{"x.ini"});
    }
    std::printf("%d writers killed, %d of them left a file that the next one took up\n", kKills, leftBehind);
}

}  // namespace
