// A line on the terminal that tells what takes so long.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace jx::cli {

// Progress: shows what is going on, and for how long, on standard error once that took a second; nothing when standard
// error is not a terminal, or quiet. The line is gone when the object is.
class Progress {
public:
    explicit Progress(bool quiet);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // Something else begins.
    void begin(const std::string& what);

    // Time has passed; call it as often as you like.
    void tick();

private:
    using Clock = std::chrono::steady_clock;

    void erase();

    friend class Waiting;

    bool shows_;
    bool isShown_ = false;
    std::string what_;
    Clock::time_point began_ = Clock::now();
    Clock::time_point drawn_ = began_;
};

// Waiting: the same for one call that cannot tick. A thread of its own draws the line, on a terminal only.
class Waiting {
public:
    Waiting(bool quiet, const std::string& what);
    ~Waiting();
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

private:
    void drawUntilOver();

    Progress progress_;
    std::mutex mutex_;
    std::condition_variable ended_;
    bool isOver_ = false;
    std::thread thread_;
};

}  // namespace jx::cli
