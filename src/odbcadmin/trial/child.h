// Running a function in a process of its own, so that what a library does there harms nobody.
//
//     const ChildOutcome outcome = runInChild([&](int result) { report(result, 'x', "text"); return 0; }, limit);
//     const auto answer = answerOf<LoadReport>(outcome, [](char kind, const std::string& text, LoadReport& report) {});
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

namespace jx::trial {

struct ChildOutcome {
    enum class End {
        exited,      // code is the exit code
        signalled,   // code is the signal
        timedOut,    // killed after the limit
        notStarted,  // code is the errno of the call that failed
    };
    End end = End::notStarted;
    int code = 0;
    std::string output;  // what was written to standard output and standard error, as it came
    std::string result;  // what body wrote to its descriptor, complete up to the end
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

// For bodies: writes one of a row of short texts, each with a letter that says what it is. A NUL inside text ends it.
void report(int descriptor, char kind, const std::string& text = {});

// Calls take for each text of a result, in order; one that was cut off at the end is left out.
void eachReport(std::string_view result, const std::function<void(char kind, const std::string& text)>& take);

// The report on a child that may have ended before its time: a struct with End, code and output, which take completes
// from what the child reported.
template <class Report, class Take>
Report answerOf(const ChildOutcome& outcome, Take take) {
    using End = typename Report::End;
    Report answer;
    answer.end = outcome.end == ChildOutcome::End::exited      ? End::exited
                 : outcome.end == ChildOutcome::End::signalled ? End::crashed
                 : outcome.end == ChildOutcome::End::timedOut  ? End::timedOut
                                                               : End::notStarted;
    answer.code = outcome.code;
    answer.output = outcome.output;
    eachReport(outcome.result, [&](char kind, const std::string& text) { take(kind, text, answer); });
    return answer;
}

// "signal 11 (Segmentation fault)".
std::string signalText(int signal);

}  // namespace jx::trial
