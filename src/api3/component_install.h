// Installing a driver or translator: entering it in the system's file, and counting.
//
//     return installComponent(state, kDrivers,
//                             {lpszDriver, lpszPathIn, ODBC_INSTALL_COMPLETE, output, pcbPathOut, lpdwUsageCount});
#pragma once

#include <cstdint>

#include <jxodbc3/odbcinst.h>
#include "api3/component.h"
#include "api3/text_output.h"

namespace jx::api3 {

struct ThreadState;

// InstallRequest: the arguments of a call. The directory goes to output and pathLength, the count to count; the last
// two may be null.
struct InstallRequest {
    const char* list;
    const char* pathIn;
    WORD request;  // ODBC_INSTALL_INQUIRY changes nothing
    TextOutput output;
    WORD* pathLength;
    DWORD* count;
};

// False with a record; nothing is written then. A path that is cut is told all the same, with its full length.
bool installComponent(ThreadState& state, const ComponentKind& kind, const InstallRequest& request);

}  // namespace jx::api3
