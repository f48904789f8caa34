// A signal that a call of the system raises in the thread that makes it.
#pragma once

#include <pthread.h>

#include <cerrno>
#include <csignal>
#include <ctime>

namespace jx {

// HeldSignal: while it exists, the signal does not reach the program: the call that raises it fails instead. One that
// was pending before stays pending.
// Use      jx::HeldSignal held(SIGPIPE); around the calls.
// Threads  only the calling thread's mask is changed.
class HeldSignal {
public:
    explicit HeldSignal(int signal) {
        sigset_t waiting;
        sigemptyset(&signal_);
        sigaddset(&signal_, signal);
        sigpending(&waiting);
        wasWaiting_ = sigismember(&waiting, signal) == 1;
        blocked_ = pthread_sigmask(SIG_BLOCK, &signal_, &before_) == 0;
    }

    ~HeldSignal() {
        const int kept = errno;
        const timespec now{};
        if (blocked_ && !wasWaiting_)
            while (sigtimedwait(&signal_, nullptr, &now) < 0 && errno == EINTR) {
            }
        if (blocked_)
            pthread_sigmask(SIG_SETMASK, &before_, nullptr);
        errno = kept;
    }

    HeldSignal(const HeldSignal&) = delete;
    HeldSignal& operator=(const HeldSignal&) = delete;

private:
    sigset_t signal_{};
    sigset_t before_{};
    bool wasWaiting_ = false;
    bool blocked_ = false;
};

}  // namespace jx
