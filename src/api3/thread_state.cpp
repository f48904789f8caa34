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

// Takes the place of a thread's data that there was no memory for.
char noState;

void release(void* state) {
    if (state != &noState)
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
    if (made == nullptr || pthread_setspecific(key, made.get()) != 0) {
        (void)pthread_setspecific(key, &noState);  // where that fails too, the failure goes without a record
        return nullptr;
    }
    return made.release();
}

void* known() {
    return isKeyMade.load(std::memory_order_acquire) ? pthread_getspecific(key) : nullptr;
}

}  // namespace

ThreadState* threadState() {
    void* state = known();
    return state != nullptr && state != &noState ? static_cast<ThreadState*>(state) : newThreadState();
}

bool wasWithoutState() {
    return known() == &noState;
}

}  // namespace jx::api3
