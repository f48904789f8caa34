// Makes and releases each thread's data.
#include "api3/thread_state.h"

#include <pthread.h>

#include <atomic>
#include <memory>
#include <new>

namespace jx::api3 {

namespace {

pthread_once_t keyOnce = PTHREAD_ONCE_INIT;
pthread_key_t key;
std::atomic<bool> isKeyMade = false;

void release(void* state) {
    delete static_cast<ThreadState*>(state);
}

void makeKey() {
    isKeyMade.store(pthread_key_create(&key, release) == 0, std::memory_order_release);
}

ThreadState* newThreadState() {
    (void)pthread_once(&keyOnce, makeKey);  // cannot fail for a valid control word
    if (!isKeyMade.load(std::memory_order_relaxed))
        return nullptr;
    std::unique_ptr<ThreadState> made(new (std::nothrow) ThreadState);
    if (made == nullptr || pthread_setspecific(key, made.get()) != 0)
        return nullptr;
    return made.release();
}

}  // namespace

ThreadState* threadState() {
    if (isKeyMade.load(std::memory_order_acquire))
        if (void* known = pthread_getspecific(key))
            return static_cast<ThreadState*>(known);
    return newThreadState();
}

}  // namespace jx::api3
