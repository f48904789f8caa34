// Runs the rounds of a comparison and computes their medians.
#include "rounds.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace jx::bench {

namespace {

double now() {
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<double>(std::chrono::duration_cast<std::chrono::nanoseconds>(time).count());
}

}  // namespace

void Stopwatch::start() {
    begin_ = now();
}

void Stopwatch::stop() {
    nanoseconds_ += now() - begin_;
}

double median(std::vector<double> values) {
    if (values.empty())
        return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void Rounds::add(std::string name, Work work, std::size_t every) {
    contenders_.push_back({std::move(name), std::move(work), every, {}});
}

void Rounds::run(benchmark::State& state, double bound) {
    bool fine = playRound(0);
    for (Contender& contender : contenders_)
        contender.times.clear();
    std::size_t round = 0;
    for (auto _ : state) {
        fine = fine && playRound(round++);
        if (!fine) {
            state.SkipWithError((failed_ + " failed").c_str());
            break;
        }
        state.SetIterationTime(contenders_.front().times.back() * 1e-9);
    }
    if (fine)
        publish(state, bound);
}

bool Rounds::playRound(std::size_t round) {
    const std::size_t count = contenders_.size();
    for (std::size_t i = 0; i < count; ++i) {
        Contender& contender = contenders_[round % 2 == 0 ? i : count - 1 - i];
        if (round % contender.every != 0)
            continue;
        const double time = contender.work();
        if (time < 0) {
            failed_ = contender.name;
            return false;
        }
        contender.times.push_back(time);
    }
    return true;
}

void Rounds::publish(benchmark::State& state, double bound) const {
    for (const Contender& contender : contenders_)
        state.counters[contender.name + "_ns"] = median(contender.times);
    std::vector<double> ratios;
    const std::vector<double>& judged = contenders_[0].times;
    const std::vector<double>& yardstick = contenders_[1].times;
    for (std::size_t round = 0; round < judged.size(); ++round)
        ratios.push_back(judged[round] / yardstick[round]);
    state.counters["ratio"] = median(ratios);
    if (bound > 0)
        state.counters["bound"] = bound;
}

}  // namespace jx::bench
