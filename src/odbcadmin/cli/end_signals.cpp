// Noting signals.
#include "odbcadmin/cli/end_signals.h"

namespace jx::cli {

namespace {

volatile std::sig_atomic_t lastEnd = 0;

void noteEnd(int number) {
    lastEnd = number;
}

}  // namespace

EndSignals::EndSignals() {
    forget();
    struct sigaction noting {};
    noting.sa_handler = noteEnd;
    sigemptyset(&noting.sa_mask);
    for (std::size_t i = 0; i < kNumbers.size(); ++i) {
        sigaction(kNumbers[i], nullptr, &before_[i]);
        if (before_[i].sa_handler != SIG_IGN)
            sigaction(kNumbers[i], &noting, nullptr);
    }
}

EndSignals::~EndSignals() {
    for (std::size_t i = 0; i < kNumbers.size(); ++i)
        sigaction(kNumbers[i], &before_[i], nullptr);
}

int EndSignals::arrived() {
    return lastEnd;
}

void EndSignals::forget() {
    lastEnd = 0;
}

}  // namespace jx::cli
