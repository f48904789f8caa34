// Signals that end the program, held until what must not be left behind is gone.
#pragma once

#include <array>
#include <csignal>

namespace jx::cli {

// EndSignals: from its beginning to its end SIGHUP, SIGINT, SIGQUIT and SIGTERM are noted instead of ending the
// program; system calls that wait give up with EINTR. Those that were ignored stay so. One at a time.
//
//     int signal = 0;
//     {
//         const EndSignals signals;
//         ... work that gives up when signals.arrived() ...
//         signal = signals.arrived();
//     }
//     if (signal != 0)
//         std::raise(signal);
class EndSignals {
public:
    static constexpr std::array<int, 4> kNumbers{SIGHUP, SIGINT, SIGQUIT, SIGTERM};

    EndSignals();
    ~EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

    // The last one; 0 when none came.
    static int arrived();

    // As if none had come.
    static void forget();

private:
    std::array<struct sigaction, kNumbers.size()> before_{};
};

}  // namespace jx::cli
