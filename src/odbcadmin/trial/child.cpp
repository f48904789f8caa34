// Child processes: start, listen, time limit, end; and what they report.
#include "odbcadmin/trial/child.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <iostream>

#include "odbcadmin/trial/owned_descriptor.h"

namespace jx::trial {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kOutputLimit = 64U << 10U;
constexpr std::size_t kResultLimit = 1U << 20U;

struct Pipe {
    OwnedDescriptor reader, writer;

    bool open() {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0)
            return false;
        reader.reset(ends[0]);
        writer.reset(ends[1]);
        return true;
    }
};

// The other descriptors are closed one range at a time, where the system can; the child of an older one keeps them.
void closeAllBut(int kept) {
    const auto first = static_cast<unsigned>(STDERR_FILENO) + 1;
    const auto middle = static_cast<unsigned>(kept);
    if (middle > first)
        ::close_range(first, middle - 1, 0);
    ::close_range(middle + 1, ~0U, 0);
}

void resetSignals() {
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    for (int signal = 1; signal < NSIG; ++signal)
        ::signal(signal, SIG_DFL);
}

// The child's life. It leaves without the end of the program: that belongs to the parent.
[[noreturn]] void live(const ChildBody& body, int output, int result, pid_t parent) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent)
        ::_exit(EXIT_FAILURE);
    ::setsid();
    resetSignals();
    const rlimit noCore{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
    const int empty = ::open("/dev/null", O_RDONLY);
    ::dup2(empty, STDIN_FILENO);
    ::dup2(output, STDOUT_FILENO);
    ::dup2(output, STDERR_FILENO);
    closeAllBut(result);
    const int code = body(result);
    std::fflush(nullptr);
    ::_exit(code);
}

// Reads what is there; false at the end of the stream.
bool drain(int descriptor, std::string& text, std::size_t limit) {
    std::array<char, 4096> bytes{};
    const ssize_t length = ::read(descriptor, bytes.data(), bytes.size());
    if (length < 0)
        return errno == EINTR || errno == EAGAIN;
    text.append(bytes.data(), std::min(static_cast<std::size_t>(length), limit - std::min(limit, text.size())));
    return length > 0;
}

bool hasEnded(pid_t child) {
    siginfo_t state{};
    const int result = ::waitid(P_PID, static_cast<id_t>(child), &state, WEXITED | WNOHANG | WNOWAIT);
    return result != 0 ? errno != EINTR : state.si_pid == child;
}

// A child that ended may have left others that hold the pipes, so the end of the streams is not the end of the child,
// nor the other way round: both are looked at, the child every few milliseconds.
class Listener {
public:
    Listener(pid_t child, Pipe& output, Pipe& result, ChildOutcome& outcome)
        : child_(child), output_(output), result_(result), outcome_(outcome) {}

    // False when the time ran out.
    bool untilEnd(Clock::time_point deadline, const Waiting& waiting) {
        while (!hasEnded(child_)) {
            if (Clock::now() >= deadline)
                return false;
            listen(kSlice);
            if (waiting)
                waiting();
        }
        while (listen(0)) {
        }
        return true;
    }

    // Takes what lies in the pipes; false when there is nothing.
    bool listen(int milliseconds) {
        std::array<pollfd, 2> streams{{{output_.reader.get(), POLLIN, 0}, {result_.reader.get(), POLLIN, 0}}};
        if (::poll(streams.data(), streams.size(), milliseconds) <= 0)
            return false;
        if (streams[0].revents != 0 && !drain(output_.reader.get(), outcome_.output, kOutputLimit))
            output_.reader.reset();
        if (streams[1].revents != 0 && !drain(result_.reader.get(), outcome_.result, kResultLimit))
            result_.reader.reset();
        return true;
    }

private:
    static constexpr int kSlice = 5;

    pid_t child_;
    Pipe& output_;
    Pipe& result_;
    ChildOutcome& outcome_;
};

// Kills what is left of the child's group and takes the child's status. The child is not reaped before, so its number
// cannot mean anybody else.
int endOf(pid_t child) {
    ::kill(-child, SIGKILL);
    ::kill(child, SIGKILL);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

void tell(ChildOutcome& outcome, bool inTime, int status) {
    if (!inTime) {
        outcome.end = ChildOutcome::End::timedOut;
    } else if (WIFEXITED(status)) {
        outcome.end = ChildOutcome::End::exited;
        outcome.code = WEXITSTATUS(status);
    } else {
        outcome.end = ChildOutcome::End::signalled;
        outcome.code = WTERMSIG(status);
    }
}

void writeWhole(int descriptor, const std::string& text) {
    std::size_t written = 0;
    while (written < text.size()) {
        const ssize_t count = ::write(descriptor, text.data() + written, text.size() - written);
        if (count < 0 && errno != EINTR)
            return;
        written += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
}

}  // namespace

ChildOutcome runInChild(const ChildBody& body, std::chrono::milliseconds limit, const Waiting& waiting) {
    ChildOutcome outcome;
    Pipe output;
    Pipe result;
    const Clock::time_point deadline = Clock::now() + limit;
    // What waits in this process's buffers must not be written by the child as well.
    std::cout.flush();
    std::fflush(nullptr);
    const pid_t parent = ::getpid();
    const pid_t child = output.open() && result.open() ? ::fork() : -1;
    if (child < 0) {
        outcome.code = errno;
        return outcome;
    }
    if (child == 0)
        live(body, output.writer.get(), result.writer.get(), parent);
    output.writer.reset();
    result.writer.reset();
    Listener listener(child, output, result, outcome);
    const bool inTime = listener.untilEnd(deadline, waiting);
    const int status = endOf(child);
    while (!inTime && listener.listen(0)) {
    }
    tell(outcome, inTime, status);
    return outcome;
}

void report(int descriptor, char kind, const std::string& text) {
    std::string record(1, kind);
    record.append(text).push_back('\0');
    writeWhole(descriptor, record);
}

void eachReport(std::string_view result, const std::function<void(char kind, const std::string& text)>& take) {
    while (!result.empty()) {
        const std::size_t end = result.find('\0');
        if (end == std::string_view::npos)
            return;
        if (end > 0)
            take(result.front(), std::string(result.substr(1, end - 1)));
        result.remove_prefix(end + 1);
    }
}

std::string signalText(int signal) {
    const char* description = sigdescr_np(signal);
    return "signal " + std::to_string(signal) + " (" + (description != nullptr ? description : "unknown") + ")";
}

}  // namespace jx::trial
