// Having the helper program do something with a foreign library, so that nothing that the library does happens here.
//
//     const HelperOutcome outcome = runHelper({"load", "/opt/acme/libacme.so", {}, {{"function", "SQLConnect"}},
//     limit}); const auto answer = answerOf<LoadReport>(outcome, [](const std::string& word, const std::string& text,
//     ...) {});
//
// The helper is a program of its own, in libexec/jxodbc, linked with the C library alone: a library that it loads finds
// what it needs as in any program. Request and report are lines of text; trial/helper says which.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace jx::trial {

// Words and texts, in order.
using Records = std::vector<std::pair<std::string, std::string>>;

struct HelperRequest {
    std::string action;
    std::string library;
    // The files in which the library's path stands. When this is root and one of them, the library or a directory above
    // it is another user's, the library is loaded with that user's rights, or not at all.
    std::vector<std::string> namedBy;
    Records details;
    std::chrono::milliseconds limit{0};
};

// What reports of every kind have.
struct Remarks {
    int code = 0;        // the signal, exit code or errno that goes with an end
    std::string output;  // what the library printed; at most the first 64 KiB
    std::string user;    // whose rights it had, when these are not the caller's
    std::string why;     // withheld: what belongs to whom; notStarted: which file and what is wrong
};

struct HelperOutcome : Remarks {
    enum class End {
        finished,
        exited,      // the library ended its process; code is the exit code
        signalled,   // code is the signal
        timedOut,    // ended after the limit
        notStarted,  // why
        withheld,    // why
    };
    End end = End::notStarted;
    Records report;  // complete up to the end, whichever it was
};

// Called every few hundredths of a second while the helper is at work.
using Waiting = std::function<void()>;

// Starts the helper, hands it the request and waits for its report.
// It finds     what any program finds, and this product's libodbcinst.so.1 by its name, wherever that is installed; its
//              libodbcinst.so.2 where the loader finds none.
// The library  runs in a process with no open files, no terminal, no core file, in a session of its own. Calls by which
// it
//              would signal this process or the helper fail.
// Afterwards   everything that the library started is gone, wherever it went; it is too when this process ends
// meanwhile.
HelperOutcome runHelper(const HelperRequest& request, const Waiting& waiting = {});

// Where the helper is looked for; without a call beside the folder of this program, in ../libexec/jxodbc. For tests.
void useHelper(const std::string& path);

// The report on a library that may have ended its process: a struct with End and Remarks, which take completes from
// what was reported.
template <class Report, class Take>
Report answerOf(const HelperOutcome& outcome, Take take) {
    using End = typename Report::End;
    Report answer;
    static_cast<Remarks&>(answer) = outcome;
    switch (outcome.end) {
        case HelperOutcome::End::signalled:
            answer.end = End::crashed;
            break;
        case HelperOutcome::End::timedOut:
            answer.end = End::timedOut;
            break;
        case HelperOutcome::End::notStarted:
            answer.end = End::notStarted;
            break;
        case HelperOutcome::End::withheld:
            answer.end = End::withheld;
            break;
        default:
            answer.end = End::exited;
    }
    for (const auto& [word, text] : outcome.report)
        take(word, text, answer);
    return answer;
}

// "signal 11 (Segmentation fault)".
std::string signalText(int signal);

}  // namespace jx::trial
