// Starting the helper, and the texts between it and this program.
#include "odbcadmin/trial/helper_run.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "odbcadmin/trial/installer_library.h"
#include "odbcadmin/trial/owned_descriptor.h"

namespace jx::trial {

namespace {

using Clock = std::chrono::steady_clock;
using Ending = HelperOutcome::End;

constexpr std::size_t kOutputLimit = 64U << 10U;
constexpr std::size_t kReportLimit = 2U << 20U;
constexpr int kSlice = 20;  // milliseconds
// The helper keeps the limit itself; this is for one that was stopped.
constexpr std::chrono::seconds kGrace{15};

std::string& chosenHelper() {
    static std::string path;
    return path;
}

std::string helperPath() {
    if (!chosenHelper().empty())
        return chosenHelper();
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    return (program.parent_path() / JX_HELPER_FROM_PROGRAM).lexically_normal().string();
}

// A descriptor below 3 would be in the way of those that the helper gets.
bool take(OwnedDescriptor& to, int descriptor) {
    OwnedDescriptor first(descriptor);
    to.reset(::fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    return to.isOpen();
}

struct Channel {
    OwnedDescriptor ours, theirs;

    bool openPipe() {
        int ends[2];
        return ::pipe2(ends, O_CLOEXEC) == 0 && takeBoth(ends);
    }

    // A pipe whose reader is gone would end this process by a signal; this only fails.
    bool openSocket() {
        int ends[2];
        return ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) == 0 && takeBoth(ends);
    }

private:
    bool takeBoth(const int (&ends)[2]) {
        const bool hasOurs = take(ours, ends[0]);
        return take(theirs, ends[1]) && hasOurs;
    }
};

void appendLine(std::string& text, const std::string& word, const std::string& value) {
    text.append(word).append(" ");
    for (const char letter : value.substr(0, value.find('\0'))) {
        if (letter == '\\' || letter == '\n')
            text.push_back('\\');
        text.push_back(letter == '\n' ? 'n' : letter);
    }
    text.push_back('\n');
}

std::string textOf(const HelperRequest& request) {
    std::string text = "jxodbc-trial 1\n";
    appendLine(text, "action", request.action);
    appendLine(text, "limit", std::to_string(request.limit.count()));
    appendLine(text, "library", request.library);
    appendLine(text, "installer", driversInstallerPath());
    for (const std::string& file : request.namedBy)
        appendLine(text, "named-by", file);
    for (const auto& [word, value] : request.details)
        appendLine(text, word, value);
    return text + "go\n";
}

std::string unescaped(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text[i] == '\\' && i + 1 < text.size();
        i += isEscape ? 1 : 0;
        plain.push_back(isEscape && text[i] == 'n' ? '\n' : text[i]);
    }
    return plain;
}

void send(int socket, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::send(socket, text.data(), text.size(), MSG_NOSIGNAL);
        if (count < 0 && errno != EINTR)
            return;
        text.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
}

// Reads what is there; false at the end of the stream.
bool drain(int descriptor, std::string& text, std::size_t limit) {
    std::array<char, 16384> bytes{};
    const ssize_t length = ::read(descriptor, bytes.data(), bytes.size());
    if (length < 0)
        return errno == EINTR || errno == EAGAIN;
    text.append(bytes.data(), std::min(static_cast<std::size_t>(length), limit - std::min(limit, text.size())));
    return length > 0;
}

// Drivers look for libodbcinst.so.1 by its name. Programs that use this product have it, wherever it is installed; so
// it must be found here, but by those alone who ask for it, and behind everything else.
class Environment {
public:
    Environment() {
        const std::string directory = std::filesystem::path(installerPath()).parent_path().string();
        const bool isFound = directory.empty() || isSystems(directory);
        for (char** each = environ; *each != nullptr; ++each)
            if (isFound || !std::string_view(*each).starts_with(kSearchPath))
                variables_.push_back(*each);
        const char* present = std::getenv("LD_LIBRARY_PATH");
        path_ = kSearchPath + (present != nullptr && *present != '\0' ? std::string(present) + ":" : "") + directory;
        if (!isFound)
            variables_.push_back(path_.data());
        variables_.push_back(nullptr);
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

    char* const* get() const { return variables_.data(); }

private:
    // Where every loader looks, or where distributions have it look.
    static bool isSystems(const std::string& directory) {
        for (const char* begin : {"/lib", "/usr/lib", "/usr/local/lib"})
            if (directory.starts_with(begin))
                return true;
        return false;
    }

    static constexpr const char* kSearchPath = "LD_LIBRARY_PATH=";

    std::string path_;
    std::vector<char*> variables_;
};

// The helper with its standard streams; the errno of what failed.
int start(const std::string& path, const Channel& request, const Channel& report, const Channel& output,
          pid_t& helper) {
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawn_file_actions_init(&actions);
    posix_spawnattr_init(&attributes);
    posix_spawn_file_actions_adddup2(&actions, request.theirs.get(), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, report.theirs.get(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output.theirs.get(), STDERR_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &all);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    std::string name = path;
    char* const arguments[] = {name.data(), nullptr};
    const Environment environment;
    const int error = ::posix_spawn(&helper, path.c_str(), &actions, &attributes, arguments, environment.get());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return error;
}

// Reads both streams until the report ends; what is left of the output then lies in its pipe.
void listen(pid_t helper, Channel& report, Channel& output, Clock::time_point deadline, const Waiting& waiting,
            std::string& lines, std::string& printed) {
    bool isOpen = true;
    while (isOpen) {
        std::array<pollfd, 2> streams{{{output.ours.get(), POLLIN, 0}, {report.ours.get(), POLLIN, 0}}};
        const int ready = ::poll(streams.data(), streams.size(), kSlice);
        if (ready > 0 && streams[0].revents != 0 && !drain(output.ours.get(), printed, kOutputLimit))
            output.ours.reset();
        if (ready > 0 && streams[1].revents != 0)
            isOpen = drain(report.ours.get(), lines, kReportLimit);
        if (waiting)
            waiting();
        if (Clock::now() >= deadline)
            ::kill(helper, SIGKILL);
    }
    pollfd left{output.ours.get(), POLLIN, 0};
    while (output.ours.isOpen() && ::poll(&left, 1, 0) > 0 && drain(output.ours.get(), printed, kOutputLimit)) {
    }
}

void takeEnd(const std::string& text, HelperOutcome& outcome) {
    const std::size_t blank = std::min(text.find(' '), text.size());
    const std::string how = text.substr(0, blank);
    std::from_chars(text.data() + std::min(blank + 1, text.size()), text.data() + text.size(), outcome.code);
    outcome.end = how == "exited"      ? Ending::exited
                  : how == "signalled" ? Ending::signalled
                  : how == "timed-out" ? Ending::timedOut
                                       : Ending::notStarted;
    if (outcome.end == Ending::notStarted)
        outcome.why = helperPath() + ": " + std::strerror(outcome.code);
}

// The helper's own end stands for the library's where no report says how that ended.
void takeHelpersEnd(int status, HelperOutcome& outcome) {
    outcome.end = WIFSIGNALED(status) ? Ending::signalled : Ending::exited;
    outcome.code = WIFSIGNALED(status) ? WTERMSIG(status) : WEXITSTATUS(status);
}

void takeReport(std::string_view lines, HelperOutcome& outcome) {
    for (std::size_t end = lines.find('\n'); end != std::string_view::npos; end = lines.find('\n')) {
        const std::string_view line = lines.substr(0, end);
        const std::size_t blank = std::min(line.find(' '), line.size());
        const std::string word(line.substr(0, blank));
        const std::string text = unescaped(line.substr(std::min(blank + 1, line.size())));
        lines.remove_prefix(end + 1);
        if (word == "end")
            takeEnd(text, outcome);
        else if (word == "user")
            outcome.user = text;
        else
            outcome.report.emplace_back(word, text);
    }
}

const std::string* textOf(const Records& records, std::string_view word) {
    const auto found =
        std::find_if(records.begin(), records.end(), [&](const auto& each) { return each.first == word; });
    return found != records.end() ? &found->second : nullptr;
}

HelperOutcome notStarted(int error, const std::string& what) {
    HelperOutcome outcome;
    outcome.code = error;
    outcome.why = what + ": " + std::strerror(error);
    return outcome;
}

}  // namespace

HelperOutcome runHelper(const HelperRequest& request, const Waiting& waiting) {
    const Clock::time_point deadline = Clock::now() + request.limit + kGrace;
    const std::string path = helperPath();
    Channel asked;
    Channel report;
    Channel output;
    if (!asked.openSocket() || !report.openPipe() || !output.openPipe())
        return notStarted(errno, path);
    pid_t helper = 0;
    if (const int error = start(path, asked, report, output, helper); error != 0)
        return notStarted(error, path);
    asked.theirs.reset();
    report.theirs.reset();
    output.theirs.reset();
    send(asked.ours.get(), textOf(request));
    HelperOutcome outcome;
    std::string lines;
    listen(helper, report, output, deadline, waiting, lines, outcome.output);
    int status = 0;
    while (::waitpid(helper, &status, 0) < 0 && errno == EINTR) {
    }
    takeHelpersEnd(status, outcome);
    takeReport(lines, outcome);
    if (textOf(outcome.report, "finished") != nullptr)
        outcome.end = Ending::finished;
    if (const std::string* why = textOf(outcome.report, "withheld")) {
        outcome.end = Ending::withheld;
        outcome.why = *why;
        outcome.user.clear();
    }
    return outcome;
}

void useHelper(const std::string& path) {
    chosenHelper() = path;
}

std::string signalText(int signal) {
    const char* description = sigdescr_np(signal);
    return "signal " + std::to_string(signal) + " (" + (description != nullptr ? description : "unknown") + ")";
}

}  // namespace jx::trial
