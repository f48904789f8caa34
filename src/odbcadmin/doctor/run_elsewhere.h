// Running this program again at somebody else's standpoint.
//
//     Standpoint place;
//     if (const model::Reason reason = standpointOfAccount("www-data", place))
//         ...
//     const ElsewhereRun run = runElsewhere(place, {"doctor", "--json"}, {});
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "odbcadmin/doctor/standpoint.h"

namespace jx::doctor {

struct ElsewhereRun {
    model::Reason trouble;  // why it did not run
    int code = 0;           // its exit code; 128 and the signal when a signal ended it
    std::string output;     // of its standard output and standard error, at most 16 MiB each
    std::string errors;
};

// The program runs in a process that has become the other user before it begins: nothing of this process's memory,
// descriptors, variables or terminal is left to it, since what it loads there is that user's. It is gone when this
// process ends. waiting is called every few hundredths of a second. Not for programs with several threads.
ElsewhereRun runElsewhere(const Standpoint& place, const std::vector<std::string>& arguments,
                          const std::function<void()>& waiting);

}  // namespace jx::doctor
