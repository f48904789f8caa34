// What the utility library keeps for each thread.
#pragma once

#include <memory>
#include <string>

#include "ini/failure.h"
#include "platform/jxerrors.h"

namespace jx {

namespace ini {
class ProfileCache;
}
namespace dialog {
class Desk;
}

// ThreadData: one thread's own data, made when it is first needed and released when the thread ends.
// Why not  thread_local: where that lives in a library that is loaded late, the first use in a thread allocates behind
//          our back and ends the program when memory is short.
struct ThreadData {
    std::unique_ptr<JxList> errors;
    std::string loadError;
    int taskDepth = 0;
    ini::Failure storeFailure;
    std::shared_ptr<ini::ProfileCache> profiles;  // shared_ptr, so that only its maker needs to know it
    std::shared_ptr<dialog::Desk> desk;           // likewise
};

// The calling thread's data, made now if need be; null when memory is short.
ThreadData* threadData();

// The same, but null when the thread has none yet.
ThreadData* existingThreadData();

// The calling thread's list of errors, made now if need be; null when memory is short.
JxList* threadErrors();

}  // namespace jx
