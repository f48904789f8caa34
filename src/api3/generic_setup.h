// The common setup routine as this library offers it: in either scope, and with records.
//
//     return configureWithoutLibrary(state, {hwnd, ODBC_ADD_DSN, attributes}, driver);
#pragma once

#include <jxodbc3/odbcinst.h>
#include "api3/driver_registry.h"

namespace jx::api3 {

// GenericRequest: one of the three plain requests, and a list that ends with an empty text.
struct GenericRequest {
    HWND window;
    WORD request;
    const char* attributes;
};

// Adds, changes or removes the data source in the file that the thread's mode names. False with a record.
// std::bad_alloc may be thrown; what a screen of the thread throws passes through.
bool configureWithoutLibrary(ThreadState& state, const GenericRequest& request, const RegisteredDriver& driver);

}  // namespace jx::api3
