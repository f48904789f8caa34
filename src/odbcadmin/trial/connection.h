// Connecting to a data source through its driver, in a process that may die of it.
//
//     const ConnectReport report = tryConnecting({"/opt/acme/libacme.so", "Sales", std::chrono::seconds(20)});
#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "odbcadmin/trial/child.h"

namespace jx::trial {

struct ConnectRequest {
    std::string library;
    std::string dataSource;
    std::chrono::milliseconds limit{20000};
};

struct Diagnostic {
    std::string state;
    int native = 0;
    std::string message;
};

struct ConnectReport {
    enum class End {
        connected,
        refused,     // function failed: diagnostics, which may be none
        notLoaded,   // the loader said no: sentence
        noFunction,  // the driver lacks function
        crashed,     // code is the signal; function is the last one called, empty while loading
        exited,      // the driver ended the process; code is the exit code
        timedOut,
        notStarted,  // no child could be started; code is errno
    };
    End end = End::notStarted;
    int code = 0;
    std::string function;
    std::string sentence;
    std::vector<Diagnostic> diagnostics;  // of a connection: remarks
    std::string driver, database;         // what the driver says of itself, such as "libx.so 1.2"; may be empty
    std::string output;                   // what the driver printed
};

// Loads the library and connects to the data source as a driver manager would: SQLAllocHandle, SQLSetEnvAttr,
// SQLDriverConnect with "DSN=NAME" and no dialog, SQLGetDiagRec; with the functions of the standard's second version
// where a driver has those only, and with the wide ones (UTF-16) where it has no others. Then disconnects. The driver
// finds this product's libodbcinst.so.1 loaded already.
ConnectReport tryConnecting(const ConnectRequest& request, const Waiting& waiting = {});

}  // namespace jx::trial
