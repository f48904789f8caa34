// Measures things that are compared in turns, so that a machine that changes its pace changes it for all of them.
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace jx::bench {

// Stopwatch: nanoseconds of the stretches between start and stop, added up.
class Stopwatch {
public:
    void start();
    void stop();
    double nanoseconds() const { return nanoseconds_; }

private:
    double nanoseconds_ = 0;
    double begin_ = 0;
};

// Turn: does its work once and returns the nanoseconds of one call in it, or a negative number when it failed.
using Turn = std::function<double()>;

// Rounds: contenders that take one turn each in every round, in an order that is reversed from round to round.
// Use      add the one that is judged first and its yardstick second, then the others; run once.
// Result   counters of the benchmark: "<name>_ns" the median of each, "ratio" the median of the first's time through
//          the second's in the same round, "bound" what it may be; the benchmark's own time is the first's.
class Rounds {
public:
    // every: takes part in every so many rounds only, for what takes long and is not part of the ratio.
    void add(std::string name, Turn turn, std::size_t every = 1);

    // Plays one round for each iteration of state, after one that does not count. bound 0: there is none.
    void run(benchmark::State& state, double bound);

private:
    struct Contender {
        std::string name;
        Turn turn;
        std::size_t every;
        std::vector<double> times;
    };

    bool playRound(std::size_t round);
    void publish(benchmark::State& state, double bound) const;

    std::vector<Contender> contenders_;
    std::string failed_;
};

// The middle one; 0 for none.
double median(std::vector<double> values);

}  // namespace jx::bench
