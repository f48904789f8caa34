// Drawing the line and taking it away.
#include "odbcadmin/cli/progress.h"

#include <unistd.h>

#include <iostream>
#include <system_error>

#include "odbcadmin/model/text.h"

namespace jx::cli {

namespace {

constexpr std::chrono::seconds kPatience{1};
constexpr std::chrono::milliseconds kBetween{200};
constexpr std::size_t kWidth = 70;

}  // namespace

Progress::Progress(bool quiet) : shows_(!quiet && ::isatty(STDERR_FILENO) == 1) {}

Progress::~Progress() {
    erase();
}

void Progress::begin(const std::string& what) {
    what_ = what.size() > kWidth ? "..." + what.substr(what.size() - kWidth) : what;
    tick();
}

void Progress::tick() {
    const Clock::time_point now = Clock::now();
    if (!shows_ || now - began_ < kPatience || now - drawn_ < kBetween)
        return;
    drawn_ = now;
    isShown_ = true;
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now - began_);
    std::cerr << "\r\x1b[K" << model::printable(what_) << " ... " << seconds.count() << " s" << std::flush;
}

void Progress::erase() {
    if (isShown_)
        std::cerr << "\r\x1b[K" << std::flush;
    isShown_ = false;
}

Waiting::Waiting(bool quiet, const std::string& what) : progress_(quiet) {
    progress_.begin(what);
    if (!progress_.shows_)
        return;
    try {
        thread_ = std::thread([this] { drawUntilOver(); });
    } catch (const std::system_error&) {
        // Without a thread there is no line; the call goes on all the same.
    }
}

Waiting::~Waiting() {
    if (!thread_.joinable())
        return;
    {
        const std::lock_guard lock(mutex_);
        isOver_ = true;
    }
    ended_.notify_one();
    thread_.join();
}

void Waiting::drawUntilOver() {
    std::unique_lock lock(mutex_);
    while (!ended_.wait_for(lock, kBetween, [this] { return isOver_; }))
        progress_.tick();
}

}  // namespace jx::cli
