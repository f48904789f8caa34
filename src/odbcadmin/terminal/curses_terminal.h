// A real terminal, by way of ncurses.
#pragma once

#include <termios.h>

#include <cstdio>
#include <deque>
#include <memory>
#include <string>

#include "odbcadmin/terminal/guard.h"
#include "odbcadmin/terminal/terminal.h"

namespace jx::terminal {

// CursesTerminal: opens the terminal, gives it back when it goes or when a signal ends the program (Guard). Set the
// locale first. One at a time in a process.
class CursesTerminal : public Terminal {
public:
    // Descriptors of the terminal and the name of its kind, null for TERM. They stay the caller's.
    CursesTerminal(int input, int output, const char* kind = nullptr);
    ~CursesTerminal() override;

    // False when the kind of terminal is not known; nothing was opened then and nothing else may be called.
    bool isOpen() const { return screen_ != nullptr; }

    Abilities abilities() const override;
    int columns() const override;
    int lines() const override;
    void show(const Canvas& canvas, std::optional<Point> cursor) override;
    Input next() override;
    void beforeWork() override;
    void afterWork() override;
    void setWorker(const std::string& worker) override { guard_->setWorker(worker); }

private:
    struct CloseFile {
        void operator()(FILE* file) const { std::fclose(file); }
    };

    void setUp();
    void chooseColors();
    unsigned long attributesOf(Look look) const;
    void putLine(const Canvas& canvas, int line);
    std::string farewell() const;
    void setPasteBrackets(bool on);
    bool takeKeys();
    void takeKey(bool isCode, unsigned int code);
    void takeEscape();
    void takeSequence(unsigned int second);
    void takePasted(bool isCode, unsigned int code);
    bool readRest(bool& isCode, unsigned int& code) const;
    void takeMouse();
    void pressedAt(Point place);
    void add(Key key);
    void addByte(unsigned int code, bool alt);
    void takeSignals();
    bool waitForMore();

    std::unique_ptr<FILE, CloseFile> input_;
    std::unique_ptr<FILE, CloseFile> output_;
    void* screen_ = nullptr;  // ncurses' SCREEN
    termios before_{};
    Abilities abilities_;
    bool hasColors_ = false;
    bool hasMouse_ = false;
    bool hasPasteBrackets_ = false;
    bool isPasting_ = false;
    std::string pasted_;  // so far
    std::unique_ptr<Guard> guard_;
    std::string unfinished_;  // a character of which bytes are missing
    bool isUnfinishedAlt_ = false;
    std::deque<Input> ready_;
    Input lastPress_;
};

}  // namespace jx::terminal
