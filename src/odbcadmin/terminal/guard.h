// Giving the terminal back, whatever ends or stops the program.
#pragma once

#include <termios.h>

#include <csignal>
#include <string>
#include <utility>
#include <vector>

namespace jx::terminal {

// Guard: from its beginning to its end SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGABRT, SIGSEGV and every other signal that
// ends a program first give the terminal back, then end the program as they would have; SIGTSTP stops it likewise.
// wake() tells that the program goes on after a stop or that the window has another size. An exit inside a library
// gives the terminal back as well.
//
// What is written to standard output and standard error meanwhile (by drivers) is kept and written when the terminal is
// given back, so that it does not disturb the picture.
//
// One at a time in a process. Begin it after the terminal was opened, end it before that is closed. A child process
// that inherits the handlers leaves the terminal alone.
class Guard {
public:
    // descriptor: of the terminal. before: its modes as they were. farewell: the bytes that put its picture back.
    Guard(int descriptor, const termios& before, const std::string& farewell);
    ~Guard();
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

    // Whose code runs from now on, such as "The setup library x.so of driver X"; empty: this program's own. If it
    // crashes or exits, standard error names it.
    void setWorker(const std::string& worker);

    // Becomes readable when the picture must be painted anew; drain it with takeWake.
    int wakeDescriptor() const;
    // True once after a wake.
    bool takeWake();
    // True once after a stop: the terminal's modes are no longer those of the picture.
    bool takeStopped();

private:
    void install();

    std::vector<std::pair<int, struct sigaction>> oldActions_;
    std::vector<char> signalStack_;
    stack_t oldStack_{};
};

}  // namespace jx::terminal
