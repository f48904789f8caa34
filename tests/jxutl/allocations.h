// Counts the blocks of a test program and makes its allocations fail on demand.
#pragma once

#include <functional>

namespace jx::test {

// The number of blocks that operator new and the C allocation calls returned and that were not released yet.
long liveBlocks();

enum class Fail { once, fromThenOn };

// ShortMemory: allocation number n of this thread, or every one from the nth on, fails between begin() and end().
class ShortMemory {
public:
    ShortMemory(int n, Fail style) : n_(n), style_(style) {}
    ~ShortMemory() { end(); }
    ShortMemory(const ShortMemory&) = delete;
    ShortMemory& operator=(const ShortMemory&) = delete;

    void begin() const;

    // No further allocation fails; true when one has failed since begin.
    bool end();

private:
    int n_;
    Fail style_;
    bool fired_ = false;
};

// Runs call with its first allocation failing, then its second and so on, each once and from then on, until a run in
// which none fails. call prepares, calls begin(), does its work, calls end() and compares. After each run as many
// blocks must be alive as before it. Returns the number of allocations that were made to fail once.
int failEachAllocation(const std::function<void(ShortMemory&)>& call);

// The same, each run on a new thread, which has no data of the library yet.
int failEachAllocationOfNewThread(const std::function<void(ShortMemory&)>& call);

}  // namespace jx::test
