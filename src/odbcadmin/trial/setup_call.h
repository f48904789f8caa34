// Calling the setup routine of a driver, which adds, changes or removes a data source in its own way, in the helper
// program.
//
//     SetupRequest request{SetupRequest::Action::add, "/opt/acme/libacmeS.so", "Acme", "Sales", {{"Server", "db1"}}};
//     if (callSetup(request).end == SetupReport::End::agreed)
//         ... look whether the data source is there ...
#pragma once

#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "odbcadmin/trial/helper_run.h"

namespace jx::trial {

struct SetupRequest {
    enum class Action { add, configure, remove };

    Action action = Action::add;
    std::string library;
    std::string driver;
    std::string dataSource;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::vector<std::string> namedBy = {};  // as in HelperRequest
    std::chrono::milliseconds limit{30000};
};

struct SetupReport : Remarks {
    enum class End {
        agreed,     // the routine said yes; what it did is another question
        declined,   // it said no: errors
        notLoaded,  // the loader said no: sentence
        noRoutine,  // the library has no ConfigDSN
        tooLong,    // the request is longer than programs can make one: sentence says what is; nothing was called
        crashed,    // code is the signal; function is empty while loading
        exited,     // the library ended the process; code is the exit code
        timedOut,
        notStarted,  // why
        withheld,    // why
    };
    End end = End::notStarted;
    std::string function;  // that was called: "ConfigDSN"
    std::string sentence;
    std::vector<std::string> errors;  // what the routine left with its installer library
};

// Loads the library and calls its CONFIGDSN, or else its ConfigDSN, without a window, as SQLConfigDataSource would, and
// within the bounds of that function's request.
SetupReport callSetup(const SetupRequest& request, const Waiting& waiting = {});

}  // namespace jx::trial
