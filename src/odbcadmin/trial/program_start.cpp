// Starting programs and being their parent.
#include "odbcadmin/trial/program_start.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>

#include "odbcadmin/trial/owned_descriptor.h"

namespace jx::trial {

namespace {

// Those that stop a process are among them: the child stops, and then this process as if by itself.
constexpr int kSignals[] = {SIGCHLD, SIGHUP,  SIGINT,  SIGQUIT, SIGTERM, SIGUSR1,
                            SIGUSR2, SIGTSTP, SIGTTIN, SIGTTOU, SIGWINCH};
constexpr int kLogDescriptor = 100;  // above those that programs commonly take for themselves
constexpr int kPipeSize = 1 << 20;   // what does not fit is lost
constexpr std::size_t kLongestLine = 1U << 16U;

// The signals that this process waits for are blocked while it lives.
class BlockedSignals {
public:
    BlockedSignals() {
        sigemptyset(&set_);
        for (const int each : kSignals)
            sigaddset(&set_, each);
        sigprocmask(SIG_BLOCK, &set_, &before_);
    }
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;
    ~BlockedSignals() { restore(); }

    const sigset_t& set() const { return set_; }
    void restore() const { sigprocmask(SIG_SETMASK, &before_, nullptr); }

private:
    sigset_t set_{};
    sigset_t before_{};
};

std::vector<char*> argumentsOf(std::vector<std::string>& words) {
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    return arguments;
}

// The lines of a log as they come in.
class LogLines {
public:
    explicit LogLines(const std::function<void(std::string_view)>& take) : take_(take) {}

    // Everything that can be read now; false at the end of the pipe.
    bool readFrom(int descriptor) {
        std::array<char, 4096> room;
        while (true) {
            const ssize_t count = ::read(descriptor, room.data(), room.size());
            if (count < 0 && errno == EINTR)
                continue;
            if (count <= 0)
                return count != 0;
            text_.append(room.data(), static_cast<std::size_t>(count));
            takeWhole();
            // Whatever else writes there need not write lines.
            if (text_.size() > kLongestLine)
                text_.clear();
        }
    }

private:
    void takeWhole() {
        std::size_t begin = 0;
        for (std::size_t end = text_.find('\n'); end != std::string::npos; end = text_.find('\n', begin)) {
            take_(std::string_view(text_).substr(begin, end - begin));
            begin = end + 1;
        }
        text_.erase(0, begin);
    }

    const std::function<void(std::string_view)>& take_;
    std::string text_;
};

[[noreturn]] void beChild(const std::string& path, const std::vector<std::string>& words, int log, int failure,
                          const BlockedSignals& signals, pid_t parent) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent)
        ::_exit(1);
    const int kept = ::fcntl(log, F_DUPFD, kLogDescriptor);
    if (kept >= 0)
        ::setenv("JXODBC_LOG", std::to_string(kept).c_str(), 1);
    signals.restore();
    const int error = becomeProgram(path, words);
    (void)!::write(failure, &error, sizeof error);
    ::_exit(1);
}

// True when the child has ended; end then tells how.
bool hasEnded(pid_t child, ProgramEnd& end) {
    int status = 0;
    pid_t answered = 0;
    while ((answered = ::waitpid(child, &status, WNOHANG | WUNTRACED)) == child && WIFSTOPPED(status)) {
        // As its parent's terminal expects: whoever started this process sees it stop, and go on.
        ::raise(SIGSTOP);
        ::kill(child, SIGCONT);
    }
    if (answered == 0)
        return false;
    end.code = WIFEXITED(status) ? WEXITSTATUS(status) : 0;
    end.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    return true;
}

// What a terminal sends reaches the child by itself.
void sendOn(int signals, pid_t child) {
    signalfd_siginfo info{};
    while (::read(signals, &info, sizeof info) == static_cast<ssize_t>(sizeof info))
        if (info.ssi_signo != SIGCHLD && info.ssi_code != SI_KERNEL)
            ::kill(child, static_cast<int>(info.ssi_signo));
}

ProgramEnd follow(pid_t child, int log, int signals, const std::function<void(std::string_view)>& take) {
    LogLines lines(take);
    ProgramEnd end;
    std::array<pollfd, 2> waits{pollfd{signals, POLLIN, 0}, pollfd{log, POLLIN, 0}};
    while (!hasEnded(child, end)) {
        ::poll(waits.data(), waits.size(), -1);
        if (waits[1].revents != 0 && !lines.readFrom(log))
            waits[1].fd = -1;
        sendOn(signals, child);
    }
    lines.readFrom(log);
    return end;
}

// The errno that the child left when it could not become the program.
int failureOf(int descriptor) {
    int error = 0;
    return ::read(descriptor, &error, sizeof error) == static_cast<ssize_t>(sizeof error) ? error : 0;
}

}  // namespace

int becomeProgram(const std::string& path, const std::vector<std::string>& words) {
    std::vector<std::string> owned = words;
    // Not execv: a text without a first line that names its interpreter is run by a shell.
    ::execvp(path.c_str(), argumentsOf(owned).data());
    return errno;
}

ProgramEnd superviseProgram(const std::string& path, const std::vector<std::string>& words,
                            const std::function<void(std::string_view line)>& take) {
    int log[2];
    int failure[2];
    if (::pipe2(log, O_CLOEXEC) != 0)
        return {errno, 0, 0};
    const OwnedDescriptor reading(log[0]);
    OwnedDescriptor writing(log[1]);
    if (::pipe2(failure, O_CLOEXEC) != 0)
        return {errno, 0, 0};
    const OwnedDescriptor failureReading(failure[0]);
    OwnedDescriptor failureWriting(failure[1]);
    ::fcntl(reading.get(), F_SETFL, O_NONBLOCK);
    ::fcntl(reading.get(), F_SETPIPE_SZ, kPipeSize);
    const BlockedSignals blocked;
    const OwnedDescriptor signals(::signalfd(-1, &blocked.set(), SFD_CLOEXEC | SFD_NONBLOCK));
    const pid_t parent = ::getpid();
    const pid_t child = signals.isOpen() ? ::fork() : -1;
    if (child < 0)
        return {errno, 0, 0};
    if (child == 0)
        beChild(path, words, writing.get(), failureWriting.get(), blocked, parent);
    // The program goes on when nobody reads what this process writes any more.
    ::signal(SIGPIPE, SIG_IGN);
    writing.reset();
    failureWriting.reset();
    ProgramEnd end;
    end.error = failureOf(failureReading.get());
    const ProgramEnd followed = follow(child, reading.get(), signals.get(), take);
    return end.error != 0 ? end : followed;
}

int endLike(const ProgramEnd& end) {
    if (end.signal == 0)
        return end.code;
    const rlimit none{0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
    ::signal(end.signal, SIG_DFL);
    sigset_t only;
    sigemptyset(&only);
    sigaddset(&only, end.signal);
    sigprocmask(SIG_UNBLOCK, &only, nullptr);
    ::raise(end.signal);
    constexpr int kBySignal = 128;
    return kBySignal + end.signal;
}

}  // namespace jx::trial
