// Makes and releases each thread's data.
#include "jxutl/thread/thread_data.h"

#include <new>

namespace jx {

namespace {

pthread_once_t keyOnce = PTHREAD_ONCE_INIT;

void release(void* data) {
    delete static_cast<ThreadData*>(data);
}

void makeKey() {
    thread_key::isMade.store(pthread_key_create(&thread_key::key, release) == 0, std::memory_order_release);
}

}  // namespace

pthread_key_t thread_key::key;
std::atomic<bool> thread_key::isMade = false;

ThreadData* newThreadData() {
    (void)pthread_once(&keyOnce, makeKey);  // cannot fail for a valid control word
    if (!thread_key::isMade.load(std::memory_order_relaxed))
        return nullptr;
    std::unique_ptr<ThreadData> made(new (std::nothrow) ThreadData);
    if (made == nullptr || pthread_setspecific(thread_key::key, made.get()) != 0)
        return nullptr;
    return made.release();
}

JxList* threadErrors() {
    ThreadData* data = threadData();
    if (data == nullptr)
        return nullptr;
    if (data->errors == nullptr)
        data->errors.reset(new (std::nothrow) JxList);
    return data->errors.get();
}

}  // namespace jx
