// The depth of tasks on a thread, and the slots of per-thread data.
#include <jxtasks.h>

#include <limits>

#include "jxutl/thread/thread_data.h"

int mdsPerTaskInit() {
    jx::ThreadData* data = jx::threadData();
    if (data == nullptr)
        return 0;
    if (data->taskDepth < std::numeric_limits<int>::max())
        ++data->taskDepth;
    return data->taskDepth;
}

int mdsPerTaskTerm() {
    jx::ThreadData* data = jx::existingThreadData();
    if (data == nullptr)
        return 0;
    if (data->taskDepth > 0)
        --data->taskDepth;
    return data->taskDepth;
}

void* mdsGetPerThreadData(PerThreadData slot) {
    return slot == PerThreadErrors ? jx::threadErrors() : nullptr;
}
