// Connecting to a data source through its driver, in the helper program.
//
//     const ConnectReport report = tryConnecting({"/opt/acme/libacme.so", "Sales", {}, std::chrono::seconds(20)});
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "odbcadmin/trial/helper_run.h"

namespace jx::trial {

struct ConnectRequest {
    std::string library;
    std::string dataSource;
    std::vector<std::string> namedBy = {};  // as in HelperRequest
    std::chrono::milliseconds limit{20000};
};

struct Diagnostic {
    std::string state;
    int native = 0;
    std::string message;
};

struct ConnectReport : Remarks {
    enum class End {
        connected,
        refused,     // function failed, with result code: diagnostics, which may be none
        notLoaded,   // the loader said no: sentence
        noFunction,  // the driver lacks function
        crashed,     // code is the signal; function is the last one called, empty while loading
        exited,      // the driver ended the process; code is the exit code
        timedOut,
        notStarted,  // why
        withheld,    // why
    };
    End end = End::notStarted;
    std::string function;
    std::string sentence;
    std::vector<Diagnostic> diagnostics;  // of a connection: remarks
    std::string driver, database;         // what the driver says of itself, such as "libx.so 1.2"; may be empty
};

// Loads the library and connects to the data source as a driver manager would: SQLAllocHandle, SQLSetEnvAttr,
// SQLDriverConnect with "DSN=NAME" and no dialog, SQLGetDiagRec; with the functions of the standard's second version
// where a driver has those only, and with the wide ones (UTF-16) where it has no others. Then disconnects. Nothing else
// is loaded: the driver finds the installer library that it asks for, or does not.
ConnectReport tryConnecting(const ConnectRequest& request, const Waiting& waiting = {});

}  // namespace jx::trial
