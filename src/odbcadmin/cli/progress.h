// A line on the terminal that tells what takes so long.
#pragma once

#include <chrono>
#include <string>

namespace jx::admin {

// Progress: shows what is going on, and for how long, on standard error once that took a second; nothing when standard
// error is no terminal, or quiet. The line is gone when the object is.
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

    bool shows_;
    bool isShown_ = false;
    std::string what_;
    Clock::time_point began_ = Clock::now();
    Clock::time_point drawn_ = began_;
};

}  // namespace jx::admin
