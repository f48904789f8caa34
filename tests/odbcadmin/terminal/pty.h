// The real program on a pseudo-terminal.
#pragma once

#include <sys/types.h>
#include <termios.h>

#include <functional>
#include <string>
#include <vector>

namespace jx::test {

// Pty: a pseudo-terminal and one program on it, which it leads as a shell's foreground job. What cannot be set up fails
// the test. Leaving scope kills the program.
class Pty {
public:
    // environment: "NAME=value" texts that are added.
    Pty(const std::string& program, const std::vector<std::string>& environment, int columns = 80, int lines = 24);
    ~Pty();
    Pty(const Pty&) = delete;
    Pty& operator=(const Pty&) = delete;

    // The modes of the terminal at this moment, as a text that tells what is on.
    std::string modes() const;
    // The same before the program began.
    const std::string& modesBefore() const { return before_; }

    void send(const std::string& bytes) const;
    // Sends one byte after another, each when the program has read the one before and waits for more.
    void sendSlowly(const std::string& bytes);
    void signal(int number) const;
    void resize(int columns, int lines) const;

    // Hangs up, as a connection does that breaks.
    void hangUp();

    // Reads until what was written since the last take holds text; false when that does not come in time.
    bool waitFor(const std::string& text);

    // Everything that was written since the last take.
    std::string take();

    // Waits for the end or a stop: "exited 0", "signal 15", "stopped 20"; "running" when neither comes in time.
    std::string waitForEnd();

private:
    bool readSome();
    long bytesRead() const;
    bool isWaiting() const;
    void live(const std::string& program, const std::vector<std::string>& environment, int reports);

    int master_ = -1;
    int slave_ = -1;    // kept open, so that the modes can be read after the end
    int reports_ = -1;  // what the shell of the program says: its process id, then each status
    pid_t leader_ = -1;
    int child_ = -1;
    std::string written_;
    std::string before_;
};

// Waits until condition holds, looking at it every few milliseconds; false when it does not within ten seconds.
bool waitUntil(const std::function<bool()>& condition);

}  // namespace jx::test
