// Why something was not done, and what to do about it.
//
//     if (const Reason reason = whyNoName(name))
//         ... reason.fact, reason.advice ...
//
// The model never prints: it returns reasons, and each client shows them in its own way.
#pragma once

#include <string>

namespace jx::model {

struct Reason {
    enum class Kind {
        none,         // nothing is wrong
        refused,      // a name or value that a file could not give back, or that is not allowed here
        locked,       // another program kept the file locked for too long
        fileTrouble,  // a file cannot be read or written
        notFound,
        exists,
        incomplete,  // something must be given as well
        failed,      // anything else
        noRight,     // a file that this user may not read or change
    };
    Kind kind = Kind::none;
    std::string fact;    // a sentence without its full stop
    std::string advice;  // a sentence; may be empty

    explicit operator bool() const { return kind != Kind::none; }
    bool operator==(const Reason&) const = default;
};

// The reason for the store's last failure on this thread.
Reason lastFailure();

}  // namespace jx::model
