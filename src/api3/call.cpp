// Begins calls and posts records.
#include "api3/call.h"

namespace jx::api3 {

ThreadState* beginCall() noexcept {
    ThreadState* state = threadState();
    if (state != nullptr && state->routines == 0)
        state->errors.clear();
    return state;
}

bool refuse(DWORD code, std::string text) {
    if (ThreadState* state = threadState())
        state->errors.post(code, std::move(text));
    return false;
}

bool refuseForMemory() noexcept {
    if (ThreadState* state = threadState())
        state->errors.post(ODBC_ERROR_OUT_OF_MEM, {});
    return false;
}

}  // namespace jx::api3
