// Running a function in a process of its own, so that what a library does there harms nobody.
#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace jx::doctor {

struct ChildOutcome {
    enum class End {
        exited,      // code is the exit code
        signalled,   // code is the signal
        timedOut,    // killed after the limit
        notStarted,  // code is the errno of the call that failed
    };
    End end = End::notStarted;
    int code = 0;
    std::string output;  // what was written to standard output and standard error, in turn as it came
    std::string result;  // what body wrote to its descriptor, complete up to the end

    bool exitedWith(int wanted) const { return end == End::exited && code == wanted; }
};

// What runs in the child: writes its result to the descriptor and returns the exit code.
using ChildBody = std::function<int(int result)>;

// What the parent does every few milliseconds while it waits.
using Waiting = std::function<void()>;

// Runs body in a child process and waits for its end, at most for limit.
// The child  is a copy of this process with no other open files, standard input empty, in a session of its own, without
//            core files, and ends when this process does. Whatever is left of it and of processes it started in its
//            session's group is killed before this returns.
// Captured   the first 64 KiB of the output and 1 MiB of the result; what comes beyond is read and forgotten.
// After      nothing is left: no process, no descriptor. Children of others are not touched.
// Not for a process with other threads: the child would have none of them.
ChildOutcome runInChild(const ChildBody& body, std::chrono::milliseconds limit, const Waiting& waiting = {});

// Writes all of text, whatever its size; for bodies.
void writeWhole(int descriptor, const std::string& text);

// "signal 11 (Segmentation fault)".
std::string signalText(int signal);

}  // namespace jx::doctor
