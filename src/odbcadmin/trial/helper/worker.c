// Starting the worker, waiting for it, ending it.
#include "odbcadmin/trial/helper/worker.h"

#include <errno.h>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include "odbcadmin/trial/helper/actions.h"
#include "odbcadmin/trial/helper/descendants.h"
#include "odbcadmin/trial/helper/owner.h"
#include "odbcadmin/trial/helper/report.h"
#include "odbcadmin/trial/helper/signal_guard.h"

enum { kSentence = 5000 };

static void act(const Request* request) {
    const char* action = requestText(request, "action");
    if (strcmp(action, "load") == 0)
        loadLibrary(request);
    else if (strcmp(action, "connect") == 0)
        connectToSource(request);
    else if (strcmp(action, "setup") == 0)
        callSetupRoutine(request);
}

// The worker has no descriptor that means anything to anybody: what it prints goes where its output is read, and what
// it reports stands in memory.
static void takeStreams(void) {
    const int empty = open("/dev/null", O_RDONLY);
    dup2(empty, STDIN_FILENO);
    dup2(STDERR_FILENO, STDOUT_FILENO);
    close_range(STDERR_FILENO + 1, ~0U, 0);
}

static void resetSignals(void) {
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, NULL);
    for (int each = 1; each < NSIG; ++each)
        signal(each, SIG_DFL);
}

static void withhold(const Owner* owner) {
    char sentence[kSentence];
    snprintf(sentence, sizeof sentence, "%.4000s belongs to %s", owner->path, userName(owner->user));
    report("withheld", sentence);
}

// The worker's life. It leaves without the functions that libraries have registered for the end of the program.
_Noreturn static void live(const Request* request, const Owner* owner, pid_t helper, pid_t command) {
    const struct rlimit noCore = {0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    setsid();
    takeStreams();
    resetSignals();
    if (owner->whose == kOneUsersCode && !becomeUser(owner->user)) {
        withhold(owner);
        _exit(EXIT_FAILURE);
    }
    // Behind the change of user, which would undo both.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    prctl(PR_SET_DUMPABLE, 1, 0, 0, 0);
    if (getppid() != helper)
        _exit(EXIT_FAILURE);
    guardAgainstSignals(helper, command);
    act(request);
    report("finished", "");
    fflush(NULL);
    _exit(EXIT_SUCCESS);
}

static long long now(void) {
    struct timespec time;
    clock_gettime(CLOCK_MONOTONIC, &time);
    return (long long)time.tv_sec * 1000 + time.tv_nsec / 1000000;
}

static bool hasEnded(pid_t worker, siginfo_t* state) {
    memset(state, 0, sizeof *state);
    return waitid(P_PID, (id_t)worker, state, WEXITED | WNOHANG | WNOWAIT) == 0 && state->si_pid == worker;
}

// False when the time ran out or nobody waits any more.
static bool waitForEnd(pid_t worker, int childSignals, long long deadline, siginfo_t* state) {
    while (!hasEnded(worker, state)) {
        struct pollfd events[] = {{childSignals, POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}};
        const long long left = deadline - now();
        if (left <= 0)
            return false;
        const int result = poll(events, 2, left < 1000 ? (int)left : 1000);
        if (result > 0 && events[1].revents != 0)
            return false;
        struct signalfd_siginfo taken;
        if (result > 0 && read(childSignals, &taken, sizeof taken) < 0 && errno != EAGAIN && errno != EINTR)
            return false;
    }
    return true;
}

static void say(const char* how, const char* text) {
    char line[kSentence + 64];
    const int length = snprintf(line, sizeof line, "end %s %s\n", how, text);
    if (write(STDOUT_FILENO, line, (size_t)length) < 0)
        _exit(EXIT_FAILURE);
}

static void sayNumber(const char* how, long number) {
    char text[32];
    snprintf(text, sizeof text, "%ld", number);
    say(how, text);
}

static void sayEnd(const siginfo_t* state, bool isInTime) {
    writeReport(STDOUT_FILENO);
    if (!isInTime)
        say("timed-out", "");
    else if (state->si_code == CLD_EXITED)
        sayNumber("exited", state->si_status);
    else
        sayNumber("signalled", state->si_status);
}

// What ends children comes through a descriptor, so that it can be waited for together with the command.
static int childSignals(void) {
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGCHLD);
    sigprocmask(SIG_BLOCK, &ends, NULL);
    return signalfd(-1, &ends, SFD_CLOEXEC | SFD_NONBLOCK);
}

void serve(const Request* request) {
    const pid_t helper = getpid();
    const pid_t command = getppid();
    const long long deadline = now() + strtoll(requestText(request, "limit"), NULL, 10);
    const Owner owner = geteuid() == 0 ? ownerOf(request) : (Owner){kOwnCode, 0, NULL};
    const int signals = childSignals();
    if (!openReport() || signals < 0)
        return sayNumber("not-started", errno);
    if (owner.whose == kManyUsersCode) {
        withhold(&owner);
        writeReport(STDOUT_FILENO);
        return sayNumber("exited", EXIT_FAILURE);
    }
    if (owner.whose == kOneUsersCode)
        report("user", userName(owner.user));
    keepDescendants();
    const pid_t worker = fork();
    if (worker < 0)
        return sayNumber("not-started", errno);
    if (worker == 0)
        live(request, &owner, helper, command);
    siginfo_t state;
    const bool isInTime = waitForEnd(worker, signals, deadline, &state);
    endDescendants();
    sayEnd(&state, isInTime);
}
