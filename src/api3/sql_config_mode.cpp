// The exported calls that read and set the mode.
#include <string>

#include <jxodbc3/odbcinst.h>
#include "api3/call.h"
#include "api3/config_mode.h"

using namespace jx::api3;

BOOL SQLGetConfigMode(UWORD* pwConfigMode) {
    return answerCall([&](ThreadState& state) {
        if (pwConfigMode == nullptr)
            return refuse(ODBC_ERROR_INVALID_PARAM_SEQUENCE, "There is no place for the mode.");
        *pwConfigMode = static_cast<UWORD>(modeOf(state));
        return true;
    });
}

BOOL SQLSetConfigMode(UWORD wConfigMode) {
    return answerCall([&](ThreadState& state) {
        if (wConfigMode > ODBC_SYSTEM_DSN)
            return refuse(ODBC_ERROR_INVALID_PARAM_SEQUENCE,
                          "There is no configuration mode " + std::to_string(wConfigMode) + ".");
        setMode(state, static_cast<Mode>(wConfigMode));
        return true;
    });
}
