// The routine that adds, changes and removes data sources of a driver: its setup library's, or the common one.
//
//     const OwnMode mode(state, Mode::system);
//     return callDsnRoutine(state, driver, {hwnd, ODBC_REMOVE_DSN, "DSN=Sales\0"});
#pragma once

#include <jxodbc3/odbcinst.h>
#include "api3/driver_registry.h"

namespace jx::api3 {

// DsnRequest: one of the three plain requests. The list may be null and is then empty.
struct DsnRequest {
    HWND window;
    WORD request;
    const char* attributes;
};

// Calls ConfigDSNW of the driver's setup library, else its ConfigDSN, else, when there is no library, none that loads
// or none with these, the common routine. Calls that the routine makes belong to this one: their records are kept when
// it gives FALSE, which has one at least, and forgotten when it gives TRUE. False also when memory is short; what the
// routine throws passes through.
bool callDsnRoutine(ThreadState& state, const RegisteredDriver& driver, const DsnRequest& request);

}  // namespace jx::api3
