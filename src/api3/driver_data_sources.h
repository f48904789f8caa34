// The data sources that belong to a driver.
//
//     removeDataSourcesOf(state, driver);   // of both files, as far as they can be written
#pragma once

#include "api3/driver_registry.h"

namespace jx::api3 {

// Removes every data source of the driver from the files that the mode allows, through the driver's ConfigDSN or the
// common routine. For each file in which some are left there is one record ODBC_ERROR_REMOVE_DSN_FAILED afterwards. A
// data source is the driver's when the list or its section names the driver, or when its section holds the driver's
// library, which no other driver has. What a setup routine throws passes through.
void removeDataSourcesOf(ThreadState& state, const RegisteredDriver& driver);

}  // namespace jx::api3
