// What the utility library keeps for each thread.
#pragma once

#include <pthread.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

#include <jxerrors.h>
#include "jxutl/thread/failure.h"

namespace jx {

namespace ini {
class IniRun;
class ProfileCache;

// How long a writer waits for a lock unless its thread asked for another time.
inline constexpr std::int64_t kLongestWaitInMilliseconds = 10'000;
}  // namespace ini
namespace dialog {
class Desk;
}

// ThreadData: one thread's data, made when it is first needed and released when the thread ends.
// Why not  thread_local: in a library that is loaded late its first use in a thread allocates, and ends the program
// when
//          memory is short.
struct ThreadData {
    std::unique_ptr<JxList> errors;
    std::string loadError;
    int taskDepth = 0;
    ini::Failure storeFailure;
    std::int64_t lockWaitInMilliseconds = ini::kLongestWaitInMilliseconds;
    std::shared_ptr<ini::ProfileCache> profiles;  // shared_ptr: the type need not be complete here
    std::shared_ptr<ini::IniRun> run;             // likewise; null unless one is open
    std::shared_ptr<dialog::Desk> desk;           // likewise
};

// The key of the threads' data; it exists from the first data on.
namespace thread_key {
extern pthread_key_t key;
extern std::atomic<bool> isMade;
}  // namespace thread_key

// The calling thread's data, or null before it has any. Inline: nearly every call begins with it.
inline ThreadData* existingThreadData() {
    if (!thread_key::isMade.load(std::memory_order_acquire))
        return nullptr;
    return static_cast<ThreadData*>(pthread_getspecific(thread_key::key));
}

// Makes the calling thread's data; null when memory is short.
ThreadData* newThreadData();

// The calling thread's data, made now if necessary; null when memory is short.
inline ThreadData* threadData() {
    ThreadData* known = existingThreadData();
    return known != nullptr ? known : newThreadData();
}

// The calling thread's list of errors, made now if necessary; null when memory is short.
JxList* threadErrors();

}  // namespace jx
