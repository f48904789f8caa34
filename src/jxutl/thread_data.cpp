// Makes and releases each thread's data.
#include "thread_data.h"

#include <pthread.h>

#include <new>

namespace jx {

namespace {

pthread_once_t keyOnce = PTHREAD_ONCE_INIT;
pthread_key_t key;
bool keyMade = false;

void release(void* data) {
    delete static_cast<ThreadData*>(data);
}

void makeKey() {
    keyMade = pthread_key_create(&key, release) == 0;
}

}  // namespace

ThreadData* existingThreadData() {
    (void)pthread_once(&keyOnce, makeKey);  // cannot fail for a valid control word
    return keyMade ? static_cast<ThreadData*>(pthread_getspecific(key)) : nullptr;
}

ThreadData* threadData() {
    if (ThreadData* known = existingThreadData(); known != nullptr || !keyMade)
        return known;
    std::unique_ptr<ThreadData> made(new (std::nothrow) ThreadData);
    if (made == nullptr || pthread_setspecific(key, made.get()) != 0)
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
