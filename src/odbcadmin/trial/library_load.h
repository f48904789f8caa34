// Really loading a library, in a process that may die of it.
//
//     const LoadReport report = tryLoading({"/opt/acme/libacme.so", {"SQLConnect"}, std::chrono::seconds(10)});
#pragma once

#include <chrono>
#include <set>
#include <string>
#include <vector>

#include "odbcadmin/trial/child.h"

namespace jx::trial {

struct LoadRequest {
    std::string library;
    std::vector<std::string> functions;  // to ask the library for
    std::chrono::milliseconds limit{10000};
};

struct LoadReport {
    enum class End {
        loaded,
        refused,  // the loader said no: sentence
        crashed,  // code is the signal
        exited,   // the library ended the process; code is the exit code
        timedOut,
        notStarted,  // no child could be started; code is errno
    };
    End end = End::notStarted;
    int code = 0;
    bool unloaded = false;          // loaded: it could be unloaded as well, as a program does that configures a driver
    std::string unloadEnd;          // not unloaded: what happened instead, such as "signal 11 (Segmentation fault)"
    std::string sentence;           // the loader's, verbatim
    std::string output;             // what the library printed while it was loaded
    std::set<std::string> offered;  // those of the functions asked for that it has
};

// Loads a library in a child process, with all its symbols resolved, asks for the functions, and unloads it.
LoadReport tryLoading(const LoadRequest& request, const Waiting& waiting = {});

}  // namespace jx::trial
