// Requests to a driver: its own, and the ones that are carried out here.
//
//     return configureDriver(*state, {hwnd, ODBC_CONFIG_DRIVER, "CPTimeout=60"}, "PG", message);
#pragma once

#include "api3/driver_routine.h"

namespace jx::api3 {

// Stores CPTimeout for ODBC_CONFIG_DRIVER; the other requests go to the driver's routine, without which they succeed.
// False with a record.
bool configureDriver(ThreadState& state, const DriverRequest& request, const char* driver,
                     const DriverMessage& message);

}  // namespace jx::api3
