// Writes the harmless characters of texts to standard error.
#include "jxutl/dialog/terminal_text.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <string_view>

#include "jxutl/thread/held_signal.h"
#include "jxutl/thread/no_cancellation.h"
#include "rules/utf8.h"

namespace jx::dialog {

namespace {

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
    const NoCancellation writing;
    const HeldSignal held(SIGPIPE);
    Output output;
    put(output, title, /*keepsLineBreaks=*/false);
    output.put(": ", 2);
    put(output, text, /*keepsLineBreaks=*/true);
    output.put("\n", 1);
    output.flush();
}

}  // namespace jx::dialog
