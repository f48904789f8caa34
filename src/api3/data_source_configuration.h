// Requests to add, change and remove data sources through their drivers' setup libraries.
//
//     return configureDataSource(*state, {hwnd, ODBC_ADD_SYS_DSN, "PG", attributes});
#pragma once

#include <jxodbc3/odbcinst.h>

namespace jx::api3 {

struct ThreadState;

struct ConfigurationRequest {
    HWND window;
    WORD request;
    const char* driver;
    const char* attributes;  // a list; null is an empty one
};

// False with a record. Out-of-memory is one; what a setup routine throws passes through. The mode is put back by the
// caller, with ModeAfterwards.
bool configureDataSource(ThreadState& state, const ConfigurationRequest& request);

}  // namespace jx::api3
