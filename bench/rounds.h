// Measures several contenders alternately, so that a machine that changes its speed changes it for all of them.
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace jx::bench {

// Stopwatch: adds up the nanoseconds between start and stop.
class Stopwatch {
public:
    void start();
    void stop();
    double nanoseconds() const { return nanoseconds_; }

private:
    double nanoseconds_ = 0;
    double begin_ = 0;
};

// Work: does a contender's work once and returns the nanoseconds of one call, or a negative number when it failed.
using Work = std::function<double()>;
inline constexpr double kFailed = -1;

// Rounds: in each round every contender works once, in an order that is reversed from round to round.
// Use      add the one that is judged first and its yardstick second, then the others; run once.
// Result   counters of the benchmark: "<name>_ns" is the median of each, "ratio" the median of the first's time divided
//          by the second's in the same round, "bound" the limit of that; the benchmark's own time is the first's.
class Rounds {
public:
    // every: takes part only in one of so many rounds, for slow contenders that are not part of the ratio.
    void add(std::string name, Work work, std::size_t every = 1);

    // Runs one round for each iteration of state, after one that does not count. bound 0: no bound.
    void run(benchmark::State& state, double bound);

private:
    struct Contender {
        std::string name;
        Work work;
        std::size_t every;
        std::vector<double> times;
    };

    bool playRound(std::size_t round);
    void publish(benchmark::State& state, double bound) const;

    std::vector<Contender> contenders_;
    std::string failed_;
};

// The median; 0 without numbers.
double median(std::vector<double> values);

}  // namespace jx::bench
