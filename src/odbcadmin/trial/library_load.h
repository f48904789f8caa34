// Really loading a library, in the helper program.
//
//     const LoadReport report = tryLoading({"/opt/acme/libacme.so", {"SQLConnect"}, {}, std::chrono::seconds(10)});
#pragma once

#include <chrono>
#include <set>
#include <string>
#include <vector>

#include "odbcadmin/trial/helper_run.h"

namespace jx::trial {

struct LoadRequest {
    std::string library;
    std::vector<std::string> functions = {};  // to ask the library for
    std::vector<std::string> namedBy = {};    // as in HelperRequest
    std::chrono::milliseconds limit{10000};
};

struct LoadReport : Remarks {
    enum class End {
        loaded,
        refused,  // the loader said no: sentence
        crashed,  // code is the signal
        exited,   // the library ended the process; code is the exit code
        timedOut,
        notStarted,  // why
        withheld,    // why
    };
    End end = End::notStarted;
    bool unloaded = false;          // loaded: it could be unloaded as well, as a program does that configures a driver
    std::string unloadEnd;          // not unloaded: what happened instead, such as "signal 11 (Segmentation fault)"
    std::string sentence;           // the loader's, verbatim
    std::set<std::string> offered;  // those of the functions asked for that it has
};

// Loads a library with all its symbols resolved, asks for the functions, and unloads it.
LoadReport tryLoading(const LoadRequest& request, const Waiting& waiting = {});

}  // namespace jx::trial
