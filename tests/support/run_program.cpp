// A child process whose three streams are files in memory, so that neither side ever waits for the other.
#include "run_program.h"

#include <grp.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>

namespace jx::test {

namespace {

// MemoryFile: a file that is nowhere on the disk; closed with the object.
class MemoryFile {
public:
    MemoryFile() : descriptor_(memfd_create("stream", MFD_CLOEXEC)) {}
    ~MemoryFile() { close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    int descriptor() const { return descriptor_; }

    void put(const std::string& text) const {
        std::size_t written = 0;
        while (written < text.size()) {
            const ssize_t count = write(descriptor_, text.data() + written, text.size() - written);
            if (count <= 0)
                return;
            written += static_cast<std::size_t>(count);
        }
        lseek(descriptor_, 0, SEEK_SET);
    }

    std::string text() const {
        std::string all;
        std::array<char, 65536> part{};
        for (off_t at = 0;;) {
            const ssize_t count = pread(descriptor_, part.data(), part.size(), at);
            if (count <= 0)
                return all;
            all.append(part.data(), static_cast<std::size_t>(count));
            at += count;
        }
    }

private:
    int descriptor_;
};

constexpr int kCannotRun = 127;
constexpr unsigned int kNobody = 65534;

void becomeNobody() {
    if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(kNobody) != 0 || setuid(kNobody) != 0))
        _exit(kCannotRun);
}

}  // namespace

std::string shellQuoted(const std::string& text) {
    std::string quoted = "'";
    for (const char each : text)
        quoted += each == '\'' ? std::string("'\\''") : std::string(1, each);
    return quoted + "'";
}

ProgramResult runProgram(const std::string& program, const std::vector<std::string>& arguments,
                         const std::string& input, As who) {
    const MemoryFile in;
    const MemoryFile out;
    const MemoryFile err;
    in.put(input);
    std::vector<char*> words{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments)
        words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        dup2(in.descriptor(), STDIN_FILENO);
        dup2(out.descriptor(), STDOUT_FILENO);
        dup2(err.descriptor(), STDERR_FILENO);
        if (who == As::nobody)
            becomeNobody();
        execv(program.c_str(), words.data());
        _exit(kCannotRun);
    }
    int status = 0;
    const bool ended = child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status);
    return {ended ? WEXITSTATUS(status) : -1, out.text(), err.text()};
}

}  // namespace jx::test
