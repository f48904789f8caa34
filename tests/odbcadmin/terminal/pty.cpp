// Pseudo-terminals and waiting.
#include "pty.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utmp.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace jx::test {

namespace {

constexpr std::chrono::seconds kPatience{10};

std::string statusText(int status) {
    if (WIFSTOPPED(status))
        return "stopped " + std::to_string(WSTOPSIG(status));
    if (WIFSIGNALED(status))
        return "signal " + std::to_string(WTERMSIG(status));
    return "exited " + std::to_string(WEXITSTATUS(status));
}

}  // namespace

bool waitUntil(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        ::poll(nullptr, 0, 5);
    }
    return true;
}

// The leader of the terminal's session plays the shell: it makes the program its foreground job and reports each end
// and stop. Without a shell nothing would stop: a process group that nobody could continue ignores such signals.
void Pty::live(const std::string& program, const std::vector<std::string>& environment, int reports) {
    ::close(master_);
    ::login_tty(slave_);
    ::signal(SIGTTOU, SIG_IGN);
    const pid_t job = ::fork();
    if (job == 0) {
        ::close(reports);
        ::setpgid(0, 0);
        ::tcsetpgrp(STDIN_FILENO, ::getpid());
        ::signal(SIGTTOU, SIG_DFL);
        for (const std::string& variable : environment)
            ::putenv(const_cast<char*>(variable.c_str()));
        ::execl(program.c_str(), program.c_str(), nullptr);
        ::_exit(127);
    }
    ::signal(SIGHUP, SIG_IGN);
    int status = job;
    do {
        (void)!::write(reports, &status, sizeof status);
    } while (::waitpid(job, &status, WUNTRACED) == job);
    ::_exit(0);
}

Pty::Pty(const std::string& program, const std::vector<std::string>& environment, int columns, int lines) {
    const winsize size{static_cast<unsigned short>(lines), static_cast<unsigned short>(columns), 0, 0};
    int ends[2] = {-1, -1};
    if (::openpty(&master_, &slave_, nullptr, nullptr, &size) != 0 || ::pipe(ends) != 0) {
        ADD_FAILURE() << "no pseudo-terminal";
        return;
    }
    reports_ = ends[0];
    before_ = modes();
    leader_ = ::fork();
    if (leader_ == 0)
        live(program, environment, ends[1]);
    ::close(ends[1]);
    EXPECT_EQ(::read(reports_, &child_, sizeof child_), static_cast<ssize_t>(sizeof child_));
}

Pty::~Pty() {
    if (child_ > 0)
        ::kill(child_, SIGKILL);
    ::waitpid(leader_, nullptr, 0);
    hangUp();
    for (const int descriptor : {slave_, reports_})
        if (descriptor >= 0)
            ::close(descriptor);
}

std::string Pty::modes() const {
    termios now{};
    if (::tcgetattr(slave_, &now) != 0)
        return "(none)";
    std::string text = std::to_string(now.c_iflag) + " " + std::to_string(now.c_oflag) + " " +
                       std::to_string(now.c_cflag) + " " + std::to_string(now.c_lflag);
    text += (now.c_lflag & ICANON) != 0 ? " icanon" : " -icanon";
    text += (now.c_lflag & ECHO) != 0 ? " echo" : " -echo";
    return text + ((now.c_iflag & ICRNL) != 0 ? " icrnl" : " -icrnl");
}

void Pty::send(const std::string& bytes) const {
    EXPECT_EQ(::write(master_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
}

// How much the program has read from anywhere.
long Pty::bytesRead() const {
    std::ifstream file("/proc/" + std::to_string(child_) + "/io");
    std::string name;
    long bytes = -1;
    file >> name >> bytes;
    return bytes;
}

bool Pty::isWaiting() const {
    std::ifstream file("/proc/" + std::to_string(child_) + "/stat");
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const std::size_t name = text.rfind(") ");
    return name != std::string::npos && text.compare(name + 2, 1, "S") == 0;
}

void Pty::sendSlowly(const std::string& bytes) {
    for (const char byte : bytes) {
        const long before = bytesRead();
        send(std::string(1, byte));
        const bool isTaken = waitUntil([&] {
            while (readSome()) {
            }
            return bytesRead() > before && isWaiting();
        });
        ASSERT_TRUE(isTaken) << "the program does not read";
    }
}

void Pty::signal(int number) const {
    ::kill(child_, number);
}

void Pty::resize(int columns, int lines) const {
    const winsize size{static_cast<unsigned short>(lines), static_cast<unsigned short>(columns), 0, 0};
    ::ioctl(master_, TIOCSWINSZ, &size);
}

void Pty::hangUp() {
    if (master_ >= 0)
        ::close(master_);
    master_ = -1;
}

bool Pty::readSome() {
    std::array<char, 4096> bytes{};
    pollfd source{master_, POLLIN, 0};
    if (master_ < 0 || ::poll(&source, 1, 0) <= 0)
        return false;
    const ssize_t count = ::read(master_, bytes.data(), bytes.size());
    if (count > 0)
        written_.append(bytes.data(), static_cast<std::size_t>(count));
    return count > 0;
}

bool Pty::waitFor(const std::string& text) {
    return waitUntil([&] {
        while (readSome()) {
        }
        return written_.find(text) != std::string::npos;
    });
}

std::string Pty::take() {
    while (readSome()) {
    }
    return std::exchange(written_, {});
}

std::string Pty::waitForEnd() {
    int status = 0;
    const bool came = waitUntil([&] {
        while (readSome()) {
        }
        pollfd report{reports_, POLLIN, 0};
        return ::poll(&report, 1, 0) > 0;
    });
    if (!came || ::read(reports_, &status, sizeof status) != static_cast<ssize_t>(sizeof status))
        return "running";
    if (!WIFSTOPPED(status))
        child_ = -1;
    return statusText(status);
}

}  // namespace jx::test
