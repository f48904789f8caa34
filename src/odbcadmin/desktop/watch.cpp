// The child, what it leaves to be read, and the message after its end.
#include "odbcadmin/desktop/watch.h"

#include <FL/Fl.H>
#include <jxdialog.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <new>

#include "odbcadmin/desktop/message_window.h"
#include "odbcadmin/desktop/toolkit.h"
#include "odbcadmin/trial/library_load.h"

namespace jx::desktop {

namespace {

// Written by the child, read when it has ended.
struct Board {
    std::array<char, 1024> worker;  // ended by a NUL
    bool isDone;                    // the last dialog was closed
};

void note(Board& board, const std::string& worker) {
    const std::size_t length = std::min(worker.size(), board.worker.size() - 1);
    worker.copy(board.worker.data(), length);
    board.worker[length] = '\0';
}

bool isCrash(int signal) {
    return signal == SIGSEGV || signal == SIGBUS || signal == SIGFPE || signal == SIGILL || signal == SIGABRT ||
           signal == SIGSYS || signal == SIGTRAP;
}

// What the user must know about the child's end; empty when it is as he wanted it.
std::string endText(const Board& board, int status) {
    const std::string worker = board.worker.data();
    if (board.isDone)
        return {};
    if (WIFSIGNALED(status))
        return isCrash(WTERMSIG(status))
                   ? (worker.empty() ? "It" : worker) +
                         " crashed, which ended xodbcadmin: " + trial::signalText(WTERMSIG(status)) + "."
                   : "";
    return worker.empty() ? "" : worker + " ended xodbcadmin with code " + std::to_string(WEXITSTATUS(status)) + ".";
}

bool wantsToBeginAnew(const std::string& text) {
    if (!openToolkit())
        return false;
    MessageWindow message(text + "\n\nWhat was stored before is kept. Open xodbcadmin again?", "Setup library",
                          MB_YESNO | MB_ICONSTOP);
    standOnScreen(message, (Fl::w() - message.w()) / 2, (Fl::h() - message.h()) / 3);
    message.open();
    while (!message.answer() && Fl::wait() >= 0) {
    }
    return message.answer().value_or(message.leastAnswer()) == IDYES;
}

int endAs(int status) {
    if (!WIFSIGNALED(status))
        return WEXITSTATUS(status);
    // The child has left its core; this process has nothing to show in one.
    constexpr rlimit kNone{0, 0};
    setrlimit(RLIMIT_CORE, &kNone);
    std::signal(WTERMSIG(status), SIG_DFL);
    std::raise(WTERMSIG(status));
    constexpr int kSignalCodes = 128;
    return kSignalCodes + WTERMSIG(status);
}

int runHere(Board& board, const std::function<int(const NoteWorker&)>& show) {
    const int code = show([&board](const std::string& worker) { note(board, worker); });
    board.isDone = true;
    return code;
}

int statusOf(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

}  // namespace

int runWatched(char** arguments, const std::function<int(const NoteWorker&)>& show) {
    void* memory = mmap(nullptr, sizeof(Board), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    Board alone{};
    if (memory == MAP_FAILED)
        return runHere(alone, show);
    auto& board = *new (memory) Board{};
    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child < 0)
        return runHere(board, show);
    if (child == 0) {
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        return getppid() == parent ? runHere(board, show) : 0;
    }
    const int status = statusOf(child);
    const std::string text = endText(board, status);
    if (!text.empty()) {
        std::fprintf(stderr, "xodbcadmin: %s\n", text.c_str());
        if (wantsToBeginAnew(text))
            execv("/proc/self/exe", arguments);
    }
    return endAs(status);
}

}  // namespace jx::desktop
