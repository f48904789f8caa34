// A function in a process of its own: how it ends, what it leaves, what of it arrives.
#include "odbcadmin/trial/child.h"

#include <dirent.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <vector>

namespace jx::trial {
namespace {

using End = ChildOutcome::End;
using std::chrono::milliseconds;

constexpr milliseconds kLong{60000};
constexpr milliseconds kShort{50};

std::size_t openDescriptors() {
    std::size_t count = 0;
    DIR* directory = opendir("/proc/self/fd");
    while (readdir(directory) != nullptr)
        ++count;
    closedir(directory);
    return count;
}

// Whether this process has no child, not even one that waits to be reaped.
bool hasNoChildren() {
    return waitpid(-1, nullptr, WNOHANG) < 0 && errno == ECHILD;
}

class Child : public testing::Test {
protected:
    Child() : before_(openDescriptors()) {}
    ~Child() override {
        EXPECT_EQ(openDescriptors(), before_);
        EXPECT_TRUE(hasNoChildren());
    }

    std::size_t before_;
};

TEST_F(Child, EndsAsItsBodyDoes) {
    const struct {
        const char* name;
        std::function<int()> body;
        End end;
        int code;
    } rows[] = {
        {"success", [] { return 0; }, End::exited, 0},
        {"a code", [] { return 42; }, End::exited, 42},
        {"exit",
         [] {
             std::exit(7);
             return 0;
         },
         End::exited, 7},
        {"a crash", [] { return raise(SIGSEGV); }, End::signalled, SIGSEGV},
        {"abort",
         [] {
             std::abort();
             return 0;
         },
         End::signalled, SIGABRT},
        {"a hang", [] { return pause(); }, End::timedOut, 0},
        {"a hang that holds on",
         [] {
             signal(SIGTERM, SIG_IGN);
             signal(SIGINT, SIG_IGN);
             return pause();
         },
         End::timedOut, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const ChildOutcome outcome =
            runInChild([&](int) { return row.body(); }, row.end == End::timedOut ? kShort : kLong);
        EXPECT_EQ(outcome.end, row.end);
        EXPECT_EQ(outcome.code, row.code);
    }
}

TEST_F(Child, WhatItWritesArrivesFromBothStreamsAndOnce) {
    std::cout << "";
    std::fputs("", stdout);
    const ChildOutcome outcome = runInChild(
        [](int result) {
            std::puts("to standard output");
            std::fflush(stdout);
            std::fputs("to standard error\n", stderr);
            report(result, 'r', "to the result");
            return 0;
        },
        kLong);
    EXPECT_EQ(outcome.output, "to standard output\nto standard error\n");
    EXPECT_EQ(outcome.result, std::string("rto the result\0", 15));
}

TEST_F(Child, OutputAndResultAreCutAtTheirLimitsAndTheChildIsNotHeldUp) {
    constexpr std::size_t kMany = 3U << 20U;
    const ChildOutcome outcome = runInChild(
        [](int result) {
            const std::string many(kMany, 'x');
            std::fwrite(many.data(), 1, many.size(), stdout);
            report(result, 'r', many);
            return 5;
        },
        kLong);
    EXPECT_EQ(outcome.end, End::exited);
    EXPECT_EQ(outcome.code, 5);
    EXPECT_EQ(outcome.output.size(), 64U << 10U);
    EXPECT_EQ(outcome.result.size(), 1U << 20U);
}

TEST_F(Child, WhatItWroteBeforeItsTimeRanOutArrives) {
    const ChildOutcome outcome = runInChild(
        [](int result) {
            std::fputs("so far\n", stderr);
            report(result, 'a', "begun");
            return pause();
        },
        kShort);
    EXPECT_EQ(outcome.end, End::timedOut);
    EXPECT_EQ(outcome.output, "so far\n");
    EXPECT_EQ(outcome.result, std::string("abegun\0", 7));
}

TEST_F(Child, HasNothingOfItsParentsButTheCode) {
    int pipe[2];
    ASSERT_EQ(::pipe(pipe), 0);
    signal(SIGUSR1, SIG_IGN);
    sigset_t blocked;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGUSR2);
    sigprocmask(SIG_BLOCK, &blocked, nullptr);
    const ChildOutcome outcome = runInChild(
        [&](int result) {
            const auto note = [&](const char* what, long value) {
                report(result, 'n', std::string(what) + "=" + std::to_string(value));
            };
            char byte = 0;
            note("input", read(STDIN_FILENO, &byte, 1));
            note("inherited", write(pipe[1], "x", 1));
            note("session", getsid(0) == getpid() ? 1 : 0);
            rlimit core{};
            getrlimit(RLIMIT_CORE, &core);
            note("core", static_cast<long>(core.rlim_cur));
            note("ignored", signal(SIGUSR1, SIG_DFL) == SIG_IGN ? 1 : 0);
            sigset_t mask;
            sigprocmask(SIG_SETMASK, nullptr, &mask);
            note("blocked", sigismember(&mask, SIGUSR2));
            return 0;
        },
        kLong);
    signal(SIGUSR1, SIG_DFL);
    sigprocmask(SIG_UNBLOCK, &blocked, nullptr);
    close(pipe[0]);
    close(pipe[1]);
    std::string notes;
    eachReport(outcome.result, [&](char, const std::string& text) { notes += text + " "; });
    EXPECT_EQ(notes, "input=0 inherited=-1 session=1 core=0 ignored=0 blocked=0 ");
}

// Whether a process ends without anybody ending it now.
bool ends(pid_t process) {
    constexpr int kPatience = 10000;  // until the test is given up
    const int descriptor = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
    if (descriptor < 0)
        return errno == ESRCH;
    pollfd gone{descriptor, POLLIN, 0};
    const bool isGone = poll(&gone, 1, kPatience) == 1;
    close(descriptor);
    return isGone;
}

TEST_F(Child, WhatItStartedIsKilledWithIt) {
    for (const bool hangs : {false, true}) {
        SCOPED_TRACE(hangs);
        const ChildOutcome outcome = runInChild(
            [&](int result) {
                const pid_t started = fork();
                if (started == 0) {
                    close(result);
                    pause();
                    _exit(0);
                }
                report(result, 'p', std::to_string(started));
                return hangs ? pause() : 0;
            },
            hangs ? milliseconds(300) : kLong);
        pid_t grandchild = 0;
        eachReport(outcome.result, [&](char, const std::string& text) { grandchild = std::atoi(text.c_str()); });
        ASSERT_GT(grandchild, 0);
        EXPECT_TRUE(ends(grandchild));
    }
}

TEST_F(Child, TheParentIsCalledWhileItWaits) {
    int calls = 0;
    runInChild([](int) { return pause(); }, kShort, [&] { ++calls; });
    EXPECT_GT(calls, 1);
}

TEST_F(Child, WithoutRoomForItsPipesItIsNotStarted) {
    EXPECT_NE(runInChild([](int) { return 0; }, kLong).end, End::notStarted);
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none{0, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    const ChildOutcome outcome = runInChild([](int) { return 0; }, kLong);
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(outcome.end, End::notStarted);
    EXPECT_EQ(outcome.code, EMFILE);
}

TEST(Reports, AreTakenInOrderAndACutOneIsLeftOut) {
    const auto taken = [](std::string_view result) {
        std::string all;
        eachReport(result, [&](char kind, const std::string& text) { all += std::string(1, kind) + ":" + text + " "; });
        return all;
    };
    EXPECT_EQ(taken(""), "");
    EXPECT_EQ(taken(std::string_view("aone\0b\0ctwo\0", 12)), "a:one b: c:two ");
    EXPECT_EQ(taken(std::string_view("aone\0btw", 8)), "a:one ");
    EXPECT_EQ(taken(std::string_view("\0aone\0", 6)), "a:one ");
}

TEST(Signals, HaveTheirNumberAndTheirName) {
    EXPECT_EQ(signalText(11), "signal 11 (Segmentation fault)");
    EXPECT_EQ(signalText(6), "signal 6 (Aborted)");
    EXPECT_EQ(signalText(9999), "signal 9999 (unknown)");
}

}  // namespace
}  // namespace jx::trial
