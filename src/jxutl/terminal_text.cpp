// Takes texts apart into characters and writes the harmless ones.
#include "jxutl/terminal_text.h"

#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <ctime>

namespace jx {

namespace {

// NoPipeSignal: while it lives, a write to a pipe that nobody reads any more fails without ending the program; a signal
// that was waiting before stays.
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

bool isBetween(unsigned char byte, unsigned char least, unsigned char most) {
    return byte >= least && byte <= most;
}

// The second byte of a UTF-8 character is bounded where a wider range would spell a character in a longer way than
// needed; a careless terminal might take such a spelling for a control character.
bool isSecondByte(unsigned char first, unsigned char second) {
    const unsigned char least = first == 0xE0 ? 0xA0 : first == 0xF0 ? 0x90 : 0x80;
    const unsigned char most = first == 0xED ? 0x9F : first == 0xF4 ? 0x8F : 0xBF;
    return isBetween(second, least, most);
}

// The number of bytes of the UTF-8 character at text, 1 when the first byte begins none.
std::size_t characterLength(const unsigned char* text) {
    const unsigned char first = text[0];
    if (!isBetween(first, 0xC2, 0xF4) || !isSecondByte(first, text[1]))
        return 1;
    const std::size_t length = first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    for (std::size_t at = 2; at < length; ++at)
        if (!isBetween(text[at], 0x80, 0xBF))
            return 1;
    return length;
}

bool isControl(const unsigned char* text, std::size_t length) {
    if (length == 2)
        return text[0] == 0xC2 && text[1] < 0xA0;
    return length == 1 && (text[0] < 0x20 || isBetween(text[0], 0x7F, 0x9F));
}

void put(Output& output, const char* text, bool keepsLineBreaks) {
    const auto* at = reinterpret_cast<const unsigned char*>(text);
    while (*at != 0) {
        const std::size_t length = characterLength(at);
        const bool shown = !isControl(at, length) || (*at == '\n' && keepsLineBreaks);
        if (shown)
            output.put(reinterpret_cast<const char*>(at), length);
        else
            output.put("?", 1);
        at += length;
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

}  // namespace jx
