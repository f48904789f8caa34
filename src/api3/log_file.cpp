// Writes lines where nobody must notice.
#include "api3/log_file.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

namespace jx::api3 {

namespace {

// Undisturbed: while it lives, no signal that a write can raise reaches the thread, nobody cancels it, and errno is
// afterwards what it was.
class Undisturbed {
public:
    Undisturbed() {
        pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &cancelState_);
        sigemptyset(&signals_);
        for (const int signal : kSignals)
            sigaddset(&signals_, signal);
        sigpending(&pendingBefore_);
        pthread_sigmask(SIG_BLOCK, &signals_, &maskBefore_);
    }
    ~Undisturbed() {
        for (const int signal : kSignals)
            if (sigismember(&pendingBefore_, signal) == 0)
                takeAway(signal);
        pthread_sigmask(SIG_SETMASK, &maskBefore_, nullptr);
        pthread_setcancelstate(cancelState_, nullptr);
        errno = error_;
    }
    Undisturbed(const Undisturbed&) = delete;
    Undisturbed& operator=(const Undisturbed&) = delete;

private:
    static constexpr std::array<int, 2> kSignals{SIGPIPE, SIGXFSZ};

    static void takeAway(int signal) {
        sigset_t only;
        sigemptyset(&only);
        sigaddset(&only, signal);
        const timespec now{};
        while (sigtimedwait(&only, nullptr, &now) < 0 && errno == EINTR) {
        }
    }

    int error_ = errno;
    int cancelState_ = 0;
    sigset_t signals_{};
    sigset_t pendingBefore_{};
    sigset_t maskBefore_{};
};

constexpr int kFlags = O_WRONLY | O_APPEND | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

bool isNumber(const char* text) {
    return *text != '\0' && text[std::strspn(text, "0123456789")] == '\0';
}

void writeOnce(int fd, std::string_view line) {
    while (write(fd, line.data(), line.size()) < 0 && errno == EINTR) {
    }
}

// A pipe takes this much whole or not at all.
void writeToPipe(int fd, std::string_view line) {
    std::array<char, PIPE_BUF> part;
    if (line.size() > part.size()) {
        line.copy(part.data(), part.size() - 1);
        part.back() = '\n';
        line = {part.data(), part.size()};
    }
    writeOnce(fd, line);
}

void writeTo(int fd, const struct stat& state, std::string_view line) {
    if (S_ISFIFO(state.st_mode))
        writeToPipe(fd, line);
    else
        writeOnce(fd, line);
}

void appendToFile(const char* path, std::string_view line) {
    const int fd = open(path, kFlags | O_CREAT, S_IRUSR | S_IWUSR);
    if (fd < 0)
        return;
    struct stat state {};
    if (fstat(fd, &state) == 0)
        writeTo(fd, state, line);
    close(fd);
}

// Whether a write waits is a property that all who share the descriptor have in common, so a pipe or a terminal is
// opened once more, without waiting.
void appendToDescriptor(int fd, std::string_view line) {
    struct stat state {};
    const int mode = fcntl(fd, F_GETFL);
    if (mode < 0 || (mode & O_ACCMODE) == O_RDONLY || fstat(fd, &state) != 0)
        return;
    if (S_ISSOCK(state.st_mode)) {
        (void)send(fd, line.data(), line.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
        return;
    }
    if (S_ISREG(state.st_mode)) {
        writeOnce(fd, line);
        return;
    }
    std::array<char, 32> again;
    std::snprintf(again.data(), again.size(), "/proc/self/fd/%d", fd);
    const int own = open(again.data(), kFlags);
    if (own < 0)
        return;
    writeTo(own, state, line);
    close(own);
}

}  // namespace

void appendToLog(const char* where, std::string_view line) noexcept {
    const Undisturbed undisturbed;
    if (!isNumber(where)) {
        appendToFile(where, line);
        return;
    }
    const long number = std::strtol(where, nullptr, 10);
    if (number <= INT_MAX)
        appendToDescriptor(static_cast<int>(number), line);
}

}  // namespace jx::api3
