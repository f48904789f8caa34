// Writes the harmless characters of texts to standard error.
#include "jxutl/dialog/terminal_text.h"

#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <ctime>
#include <string_view>

#include "rules/utf8.h"

namespace jx::dialog {

namespace {

// NoPipeSignal: while it exists, a write to a closed pipe fails instead of ending the program with SIGPIPE. A SIGPIPE
// that was pending before stays pending.
class NoPipeSignal {
public:
    NoPipeSignal() {
        sigset_t waiting;
        sigemptyset(&pipe_);
        sigaddset(&pipe_, SIGPIPE);
        sigpending(&waiting);
        wasWaiting_ = sigismember(&waiting, SIGPIPE) == 1;
        blocked_ = pthread_sigmask(SIG_BLOCK, &pipe_, &before_) == 0;
    }

    ~NoPipeSignal() {
        const timespec now{};
        if (blocked_ && !wasWaiting_)
            while (sigtimedwait(&pipe_, nullptr, &now) < 0 && errno == EINTR) {
            }
        if (blocked_)
            pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }

    NoPipeSignal(const NoPipeSignal&) = delete;
    NoPipeSignal& operator=(const NoPipeSignal&) = delete;

private:
    sigset_t pipe_{};
    sigset_t before_{};
    bool wasWaiting_ = false;
    bool blocked_ = false;
};

// Output: bytes on their way to standard error.
class Output {
public:
    void put(const char* bytes, std::size_t count) {
        if (used_ + count > sizeof buffer_)
            flush();
        std::memcpy(buffer_ + used_, bytes, count);  // count is one character's
        used_ += count;
    }

    void flush() {
        const char* from = buffer_;
        while (used_ != 0) {
            const ssize_t written = ::write(STDERR_FILENO, from, used_);
            if (written < 0 && errno == EINTR)
                continue;
            if (written <= 0)
                break;
            from += written;
            used_ -= static_cast<std::size_t>(written);
        }
        used_ = 0;
    }

private:
    char buffer_[1024];
    std::size_t used_ = 0;
};

void put(Output& output, std::string_view text, bool keepsLineBreaks) {
    for (std::size_t at = 0; at < text.size();) {
        const rules::Character next = rules::characterAt(text, at);
        if (!rules::isControl(next, text[at]) || (text[at] == '\n' && keepsLineBreaks))
            output.put(text.data() + at, next.length);
        else
            output.put("?", 1);
        at += next.length;
    }
}

}  // namespace

void writeMessage(const char* title, const char* text) {
    const NoPipeSignal held;
    Output output;
    put(output, title, /*keepsLineBreaks=*/false);
    output.put(": ", 2);
    put(output, text, /*keepsLineBreaks=*/true);
    output.put("\n", 1);
    output.flush();
}

}  // namespace jx::dialog
