// Calls during which a thread cannot be cancelled.
#pragma once

#include <pthread.h>

namespace jx {

// NoCancellation: while it exists, pthread_cancel waits. Otherwise a thread could be cancelled in the middle of a
// write, or inside a destructor that closes a file, which ends the program. Use      one in every function of the
// interface that may open, read, write or close a file. A read of an unchanged
//          file makes no call that a thread can be cancelled in, and needs none.
class NoCancellation {
public:
    NoCancellation() { (void)pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &before_); }
    ~NoCancellation() { (void)pthread_setcancelstate(before_, nullptr); }
    NoCancellation(const NoCancellation&) = delete;
    NoCancellation& operator=(const NoCancellation&) = delete;

private:
    int before_ = PTHREAD_CANCEL_ENABLE;
};

}  // namespace jx
