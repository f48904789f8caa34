// One call from outside: the records it begins with and leaves, and what ends it.
//
//     BOOL SQLValidDSN(LPCSTR lpszDSN) {
//         return answerCall([&](ThreadState&) { return isValidDsn(lpszDSN); });
//     }
//
// Code inside a call says no with refuse(); std::bad_alloc ends the call as a failure, except while a setup routine
// runs: what that throws passes through to the caller, so that code begins with beginCall and guards its own parts.
#pragma once

#include <new>
#include <string>
#include <utility>

#include <jxodbc3/odbcinst.h>
#include "api3/thread_state.h"

namespace jx::api3 {

// The calling thread's state, with its queue emptied unless a setup routine makes the call: that belongs to the outer
// one. Null when memory is short.
ThreadState* beginCall() noexcept;

// Posts a record; false, for whoever says no with it. std::bad_alloc may be thrown.
bool refuse(DWORD code, std::string text);

// Posts that memory was short; false.
bool refuseForMemory() noexcept;

// Runs work(), and gives back what it does; failed when memory is short.
template <class Result, class Work>
Result guarded(Result failed, Work work) {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        refuseForMemory();
        return failed;
    }
}

// The same for work that tells by true and false: false.
template <class Work>
bool guarded(Work work) {
    return guarded(/*failed=*/false, work);
}

// A whole call that gives TRUE or FALSE: begins it and runs work(state) guarded.
template <class Work>
BOOL answerCall(Work work) {
    ThreadState* state = beginCall();
    if (state == nullptr)
        return FALSE;
    return guarded([&] { return work(*state); }) ? TRUE : FALSE;
}

// RoutineScope: while it lives, calls made on this thread belong to the call that made it.
class RoutineScope {
public:
    explicit RoutineScope(ThreadState& state) : state_(state) { ++state_.routines; }
    ~RoutineScope() { --state_.routines; }
    RoutineScope(const RoutineScope&) = delete;
    RoutineScope& operator=(const RoutineScope&) = delete;

private:
    ThreadState& state_;
};

}  // namespace jx::api3
