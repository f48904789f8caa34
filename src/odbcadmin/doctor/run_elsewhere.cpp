// Becoming the other user, and listening.
#include "odbcadmin/doctor/run_elsewhere.h"

#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <optional>

namespace jx::doctor {

namespace {

using model::Reason;
using trial::OwnedDescriptor;

constexpr std::size_t kMost = 16U << 20U;
constexpr int kSlice = 20;  // milliseconds
constexpr int kSignalled = 128;

enum class Step { begin, mounts, root, rights, program, run };

// What the child reports when it gets no further.
struct Stop {
    Step step;
    int error;
};

struct Pipe {
    OwnedDescriptor reading, writing;

    bool open() {
        int ends[2];
        if (::pipe2(ends, O_CLOEXEC) != 0)
            return false;
        reading.reset(ends[0]);
        writing.reset(ends[1]);
        return true;
    }
};

// All that the child needs, made before it: between fork and exec nothing is allocated.
struct Start {
    const Standpoint& place;
    std::string program;
    struct stat file {};
    std::vector<std::string> words;
    std::vector<char*> arguments, environment;
    OwnedDescriptor nothing;
    Pipe output, errors, stop;
    pid_t parent = ::getpid();

    explicit Start(const Standpoint& standpoint) : place(standpoint) {}
};

// The errno of the step that fails; 0.
int becomeUser(const Standpoint& place) {
    if (::geteuid() != 0)
        return 0;
    const bool isDone = ::setgroups(place.groups.size(), place.groups.data()) == 0 &&
                        ::setresgid(place.group, place.group, place.group) == 0 &&
                        ::setresuid(place.user, place.user, place.user) == 0;
    return isDone ? 0 : errno;
}

// A directory that the user may not enter is nobody's working directory.
void enterDirectory(const Standpoint& place) {
    if (place.place.isOpen() ? ::fchdir(place.place.get()) == 0 : ::chdir(place.directory.c_str()) == 0)
        return;
    if (::chdir("/") != 0)
        ::_exit(1);
}

bool useStreams(const Start& start) {
    return ::dup2(start.nothing.get(), STDIN_FILENO) >= 0 && ::dup2(start.output.writing.get(), STDOUT_FILENO) >= 0 &&
           ::dup2(start.errors.writing.get(), STDERR_FILENO) >= 0 &&
           ::close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC) == 0;
}

// Returns only when something fails.
Stop enter(const Start& start) {
    const Standpoint& place = start.place;
    // Without a terminal of its own nothing can be typed into the caller's.
    ::setsid();
    if (!useStreams(start))
        return {Step::begin, errno};
    if (place.mounts.isOpen() && ::setns(place.mounts.get(), CLONE_NEWNS) != 0)
        return {Step::mounts, errno};
    if (place.root.isOpen() && (::fchdir(place.root.get()) != 0 || ::chroot(".") != 0))
        return {Step::root, errno};
    if (const int error = becomeUser(place); error != 0)
        return {Step::rights, error};
    enterDirectory(place);
    // The kernel forgets this when rights change, so it comes behind them.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != start.parent)
        ::_exit(1);
    struct stat found {};
    if (::stat(start.program.c_str(), &found) != 0)
        return {Step::program, errno};
    if (found.st_dev != start.file.st_dev || found.st_ino != start.file.st_ino)
        return {Step::program, ENOENT};
    ::execve(start.program.c_str(), start.arguments.data(), start.environment.data());
    return {Step::run, errno};
}

Reason reasonFor(const Stop& stop, const Start& start) {
    const std::string error = std::strerror(stop.error);
    const std::string& who = start.place.who;
    switch (stop.step) {
        case Step::mounts:
        case Step::root:
            return {Reason::Kind::failed,
                    who + " sees other files than this program, and they cannot be entered: " + error,
                    "Run odbcadmin doctor there: in its container, or as root of the system."};
        case Step::rights:
            return {Reason::Kind::failed, "The rights of " + who + " cannot be taken: " + error, "Run it as root."};
        case Step::program:
        case Step::run:
            return {Reason::Kind::failed, who + " cannot run " + start.program + ": " + error,
                    start.place.hasFilesOfItsOwn()
                        ? "It sees other files than this program: install odbcadmin there, and run it there."
                        : "Install odbcadmin where every user may run it, such as /usr/local."};
        default:
            return {Reason::Kind::failed, "No process can be started: " + error, "Try again when the system has room."};
    }
}

// Reads what is there; false at the end.
bool drain(const OwnedDescriptor& from, std::string& text) {
    std::array<char, 16384> bytes{};
    const ssize_t count = ::read(from.get(), bytes.data(), bytes.size());
    if (count > 0 && text.size() < kMost)
        text.append(bytes.data(), static_cast<std::size_t>(count));
    return count > 0 || (count < 0 && errno == EINTR);
}

void listen(Start& start, const std::function<void()>& waiting, ElsewhereRun& run) {
    Pipe& output = start.output;
    Pipe& errors = start.errors;
    while (output.reading.isOpen() || errors.reading.isOpen()) {
        std::array<pollfd, 2> streams{{{output.reading.get(), POLLIN, 0}, {errors.reading.get(), POLLIN, 0}}};
        ::poll(streams.data(), streams.size(), kSlice);
        if (streams[0].revents != 0 && !drain(output.reading, run.output))
            output.reading.reset();
        if (streams[1].revents != 0 && !drain(errors.reading, run.errors))
            errors.reading.reset();
        if (waiting)
            waiting();
    }
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& each : texts)
        pointers.push_back(each.data());
    pointers.push_back(nullptr);
    return pointers;
}

bool isReady(Start& start) {
    std::error_code error;
    start.program = std::filesystem::read_symlink("/proc/self/exe", error).string();
    start.nothing.reset(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    return !error && ::stat(start.program.c_str(), &start.file) == 0 && start.nothing.isOpen() && start.output.open() &&
           start.errors.open() && start.stop.open();
}

int codeOf(int status) {
    return WIFSIGNALED(status) ? kSignalled + WTERMSIG(status) : WEXITSTATUS(status);
}

}  // namespace

ElsewhereRun runElsewhere(const Standpoint& place, const std::vector<std::string>& arguments,
                          const std::function<void()>& waiting) {
    ElsewhereRun run;
    Start start(place);
    std::vector<std::string> environment = place.environment;
    start.words = {"odbcadmin"};
    start.words.insert(start.words.end(), arguments.begin(), arguments.end());
    start.arguments = pointersTo(start.words);
    start.environment = pointersTo(environment);
    const pid_t child = isReady(start) ? ::fork() : -1;
    if (child < 0) {
        run.trouble = reasonFor({Step::begin, errno}, start);
        return run;
    }
    if (child == 0) {
        const Stop stop = enter(start);
        const ssize_t written = ::write(start.stop.writing.get(), &stop, sizeof stop);
        ::_exit(written == sizeof stop ? 0 : 1);
    }
    for (Pipe* each : {&start.output, &start.errors, &start.stop})
        each->writing.reset();
    listen(start, waiting, run);
    Stop stop{};
    if (::read(start.stop.reading.get(), &stop, sizeof stop) == sizeof stop)
        run.trouble = reasonFor(stop, start);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    run.code = codeOf(status);
    return run;
}

}  // namespace jx::doctor
