// Calling the setup routine of a driver, which adds, changes or removes a data source in its own way.
//
//     if (probeSetup("/opt/acme/libacmeS.so").end == SetupReport::End::done)
//         ... callSetup({SetupRequest::Action::add, "Acme", "Sales", {{"Server", "db1"}}}) ...
//
// It runs in this process: what the library does there happens to the program.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace jx::trial {

struct SetupRequest {
    enum class Action { add, configure, remove };

    Action action = Action::add;
    std::string driver;  // a registered one
    std::string dataSource;
    std::vector<std::pair<std::string, std::string>> attributes;
};

struct SetupReport {
    enum class End {
        done,
        refused,    // the routine said no: errors
        notLoaded,  // sentence
        noRoutine,  // the library has no ConfigDSN
        tooLong,    // the request is longer than the call takes: sentence says what is
    };
    End end = End::done;
    std::string sentence;
    std::vector<std::string> errors;  // what the setup library left in the error list
};

// Loads a setup library once to see whether it has its routine: done, notLoaded or noRoutine.
SetupReport probeSetup(const std::string& library);

// Calls SQLConfigDataSource without a window: done, refused or tooLong.
SetupReport callSetup(const SetupRequest& request);

}  // namespace jx::trial
