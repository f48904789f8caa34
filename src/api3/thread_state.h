// What the library keeps for each thread.
//
//     ThreadState* state = threadState();
//     if (state == nullptr) ...   // memory is too short even for that
#pragma once

#include <optional>

#include "api3/config_mode.h"
#include "api3/error_queue.h"
#include "api3/file_places.h"

namespace jx::api3 {

// ThreadState: one thread's own data, made when it is first needed and released when the thread ends.
// Why not  thread_local: where that lives in a library that is loaded late, the first use in a thread takes memory
//          unseen, and ends the program when there is none.
struct ThreadState {
    ErrorQueue errors;
    std::optional<Mode> ownMode;  // while a setup routine runs
    unsigned routines = 0;        // setup routines that are running, one called by another
    FilePlaces places;
};

// The calling thread's data, made now if need be; null when memory is short.
ThreadState* threadState();

// Whether the thread's last call found no memory for its data, and so for a record either.
bool wasWithoutState();

}  // namespace jx::api3
