// Signal handlers and kept output. A handler calls only what POSIX lets it call.
#include "odbcadmin/terminal/guard.h"

#include <fcntl.h>
#include <sys/eventfd.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>

namespace jx::terminal {

namespace {

constexpr std::size_t kLongestFarewell = 1024;
constexpr std::size_t kLongestWorker = 1024;

// Everything the handlers use, in one place that needs no memory of its own.
struct State {
    volatile sig_atomic_t isOn = 0;
    volatile sig_atomic_t wasStopped = 0;
    pid_t owner = 0;
    int terminal = -1;
    termios before{};
    std::array<char, kLongestFarewell> farewell{};
    std::size_t farewellLength = 0;
    std::array<char, kLongestWorker> worker{};  // whose code runs
    volatile sig_atomic_t workerLength = 0;
    int wake = -1;
    int kept = -1;    // what drivers wrote
    int output = -1;  // standard output as it was
    int error = -1;   // standard error as it was
};

State state;

void writeAll(int descriptor, const char* bytes, std::size_t length) {
    while (length > 0) {
        const ssize_t count = ::write(descriptor, bytes, length);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return;
        bytes += count;
        length -= static_cast<std::size_t>(count);
    }
}

void giveBackModes() {
    writeAll(state.terminal, state.farewell.data(), state.farewellLength);
    while (::tcsetattr(state.terminal, TCSANOW, &state.before) != 0 && errno == EINTR) {
    }
}

// What was written meanwhile appears now, once.
void giveBackOutput() {
    if (state.kept < 0)
        return;
    ::dup2(state.output, STDOUT_FILENO);
    ::dup2(state.error, STDERR_FILENO);
    ::lseek(state.kept, 0, SEEK_SET);
    char bytes[512];
    ssize_t count = 0;
    while ((count = ::read(state.kept, bytes, sizeof bytes)) > 0)
        writeAll(STDERR_FILENO, bytes, static_cast<std::size_t>(count));
    (void)::ftruncate(state.kept, 0);
    ::lseek(state.kept, 0, SEEK_SET);
}

void giveBack() {
    if (state.isOn == 0 || ::getpid() != state.owner)
        return;
    state.isOn = 0;
    giveBackModes();
    giveBackOutput();
}

void say(const char* text) {
    std::size_t length = 0;
    while (text[length] != '\0')
        ++length;
    writeAll(STDERR_FILENO, text, length);
}

// One line about the code that ended the program, if it was not this program's own.
void blame(const char* deed) {
    if (state.workerLength == 0)
        return;
    say("odbcadmin: ");
    writeAll(STDERR_FILENO, state.worker.data(), static_cast<std::size_t>(state.workerLength));
    say(deed);
}

bool isCrash(int signal) {
    return signal == SIGSEGV || signal == SIGBUS || signal == SIGFPE || signal == SIGILL || signal == SIGABRT ||
           signal == SIGSYS || signal == SIGTRAP;
}

void exiting() {
    const bool isOn = state.isOn != 0 && ::getpid() == state.owner;
    giveBack();
    if (isOn)
        blame(" ended this program.\n");
}

void setDefault(int signal) {
    struct sigaction action {};
    action.sa_handler = SIG_DFL;
    ::sigaction(signal, &action, nullptr);
}

void raiseNow(int signal) {
    sigset_t one;
    sigset_t before;
    sigemptyset(&one);
    sigaddset(&one, signal);
    ::raise(signal);
    ::sigprocmask(SIG_UNBLOCK, &one, &before);
    ::sigprocmask(SIG_SETMASK, &before, nullptr);
}

void wakeUp() {
    const std::uint64_t one = 1;
    (void)!::write(state.wake, &one, sizeof one);
}

void end(int signal) {
    const bool isOn = state.isOn != 0 && ::getpid() == state.owner;
    giveBack();
    if (isOn && isCrash(signal))
        blame(" crashed, which ends this program.\n");
    setDefault(signal);
    raiseNow(signal);
}

// Stops as the signal would; goes on here when the program is continued.
void stop(int signal) {
    const int error = errno;
    struct sigaction own {};
    if (::getpid() == state.owner)
        giveBackModes();
    ::sigaction(signal, nullptr, &own);
    setDefault(signal);
    raiseNow(signal);
    ::sigaction(signal, &own, nullptr);
    errno = error;
}

void wake(int signal) {
    const int error = errno;
    if (signal == SIGCONT)
        state.wasStopped = 1;
    if (::getpid() == state.owner)
        wakeUp();
    errno = error;
}

void keepOutput() {
    state.kept = ::memfd_create("output", MFD_CLOEXEC);
    state.output = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
    state.error = ::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3);
    if (state.kept < 0 || state.output < 0 || state.error < 0)
        return;
    ::dup2(state.kept, STDOUT_FILENO);
    ::dup2(state.kept, STDERR_FILENO);
}

void closeOne(int& descriptor) {
    if (descriptor >= 0)
        ::close(descriptor);
    descriptor = -1;
}

void setUp(int descriptor, const termios& before, const std::string& farewell) {
    state.owner = ::getpid();
    state.terminal = descriptor;
    state.before = before;
    state.farewellLength = std::min(farewell.size(), kLongestFarewell);
    farewell.copy(state.farewell.data(), state.farewellLength);
    state.workerLength = 0;
    state.wake = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    keepOutput();
    state.isOn = 1;
}

void registerExit() {
    static const int kRegistered = std::atexit(exiting);
    (void)kRegistered;
}

}  // namespace

Guard::Guard(int descriptor, const termios& before, const std::string& farewell) : signalStack_(64U << 10U) {
    registerExit();
    setUp(descriptor, before, farewell);
    install();
}

Guard::~Guard() {
    for (const auto& [signal, action] : oldActions_)
        ::sigaction(signal, &action, nullptr);
    ::sigaltstack(&oldStack_, nullptr);
    giveBack();
    for (int* descriptor : {&state.wake, &state.kept, &state.output, &state.error})
        closeOne(*descriptor);
}

void Guard::install() {
    stack_t own{};
    own.ss_sp = signalStack_.data();
    own.ss_size = signalStack_.size();
    ::sigaltstack(&own, &oldStack_);
    const auto set = [this](int signal, void (*handler)(int), int flags) {
        struct sigaction action {};
        struct sigaction old {};
        action.sa_handler = handler;
        action.sa_flags = flags;
        sigfillset(&action.sa_mask);
        ::sigaction(signal, nullptr, &old);
        // What the program was told to ignore (nohup) stays ignored.
        if (old.sa_handler == SIG_IGN && signal != SIGWINCH && signal != SIGCONT)
            return;
        ::sigaction(signal, &action, &old);
        oldActions_.emplace_back(signal, old);
    };
    // A crash is told on a stack of its own: the program's may be what is used up.
    for (const int signal :
         {SIGINT,  SIGTERM, SIGHUP,    SIGQUIT, SIGABRT, SIGSEGV, SIGBUS, SIGFPE,  SIGILL, SIGPIPE, SIGUSR1,
          SIGUSR2, SIGALRM, SIGVTALRM, SIGPROF, SIGXCPU, SIGXFSZ, SIGSYS, SIGTRAP, SIGIO,  SIGPWR,  SIGSTKFLT})
        set(signal, end, SA_ONSTACK);
    for (int signal = SIGRTMIN; signal <= SIGRTMAX; ++signal)
        set(signal, end, SA_ONSTACK);
    set(SIGTSTP, stop, SA_RESTART | SA_ONSTACK);
    set(SIGCONT, wake, SA_RESTART | SA_ONSTACK);
    set(SIGWINCH, wake, SA_RESTART | SA_ONSTACK);
}

void Guard::setWorker(const std::string& worker) {
    state.workerLength = 0;
    const std::size_t length = std::min(worker.size(), kLongestWorker);
    worker.copy(state.worker.data(), length);
    state.workerLength = static_cast<sig_atomic_t>(length);
}

int Guard::wakeDescriptor() const {
    return state.wake;
}

bool Guard::takeWake() {
    std::uint64_t count = 0;
    return ::read(state.wake, &count, sizeof count) == static_cast<ssize_t>(sizeof count);
}

bool Guard::takeStopped() {
    const bool wasStopped = state.wasStopped != 0;
    state.wasStopped = 0;
    return wasStopped;
}

}  // namespace jx::terminal
