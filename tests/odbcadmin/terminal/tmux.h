// The real program under tmux: keys in, the screen out as text.
#pragma once

#include <string>

#include "test_home.h"

namespace jx::test {

// Tmux: a server of its own with one window that runs a program; leaving scope ends it.
class Tmux {
public:
    // environment: "NAME=value NAME=value", command: as a shell takes it.
    Tmux(const TestHome& home, int columns, int lines, const std::string& environment, const std::string& command);
    ~Tmux();
    Tmux(const Tmux&) = delete;
    Tmux& operator=(const Tmux&) = delete;

    // Names of keys as tmux knows them ("Tab", "M-a"), or texts in quotes.
    void keys(const std::string& names) const;
    void resize(int columns, int lines) const;

    // The screen, without blanks at the ends of lines.
    std::string screen() const;

    // Waits until the screen is expected, or holds part; the screen then, or as it was last.
    std::string waitForScreen(const std::string& expected) const;
    std::string waitForPart(const std::string& part) const;

private:
    std::string run(const std::string& command) const;

    std::string socket_;
};

}  // namespace jx::test
