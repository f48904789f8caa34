// The routine that installs, removes and configures a driver: ConfigDriver of its setup library.
//
//     switch (callDriverRoutine(state, driver, {hwnd, ODBC_REMOVE_DRIVER, nullptr}, nothing)) ...
#pragma once

#include <cstdint>

#include <jxodbc3/odbcinst.h>
#include "api3/driver_registry.h"
#include "api3/text_output.h"

namespace jx::api3 {

struct DriverRequest {
    HWND window;
    WORD request;
    const char* text;  // may be null
};

// DriverMessage: where the routine's message goes.
struct DriverMessage {
    TextOutput output{static_cast<char*>(nullptr), 0};
    WORD* length = nullptr;
};

enum class DriverOutcome : std::uint8_t {
    done,
    none,       // the driver has no setup library, or that has no such routine
    notLoaded,  // the setup library does not load: ODBC_ERROR_LOAD_LIB_FAILED is posted
    failed      // records say why
};

// Calls ConfigDriverW, else ConfigDriver. Calls that the routine makes belong to this one, as for callDsnRoutine. What
// it throws passes through.
DriverOutcome callDriverRoutine(ThreadState& state, const RegisteredDriver& driver, const DriverRequest& request,
                                const DriverMessage& message);

}  // namespace jx::api3
