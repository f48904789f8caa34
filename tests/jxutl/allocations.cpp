// Replaces operator new and the C allocation calls in a test program.
#include "allocations.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <thread>

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void __real_free(void* block);
void* __wrap_malloc(std::size_t size);
void* __wrap_calloc(std::size_t count, std::size_t size);
void* __wrap_realloc(void* block, std::size_t size);
void __wrap_free(void* block);
}

namespace {

constinit std::atomic<long> live{0};
constinit thread_local int left = 0;  // allocations until one fails; 0 is never
constinit thread_local bool staysShort = false;
constinit thread_local bool failed = false;

bool fails() {
    if (left == 0 || --left > 0)
        return false;
    failed = true;
    left = staysShort ? 1 : 0;
    return true;
}

void* counted(void* block) {
    if (block != nullptr)
        ++live;
    return block;
}

}  // namespace

void* __wrap_malloc(std::size_t size) {
    return fails() ? nullptr : counted(__real_malloc(size));
}

void* __wrap_calloc(std::size_t count, std::size_t size) {
    return fails() ? nullptr : counted(__real_calloc(count, size));
}

void* __wrap_realloc(void* block, std::size_t size) {
    if (fails())
        return nullptr;
    void* resized = __real_realloc(block, size);
    return block == nullptr ? counted(resized) : resized;
}

void __wrap_free(void* block) {
    if (block != nullptr)
        --live;
    __real_free(block);
}

void* operator new(std::size_t size) {
    if (void* block = std::malloc(size != 0 ? size : 1))
        return block;
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return std::malloc(size != 0 ? size : 1);
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

void operator delete(void* block, const std::nothrow_t&) noexcept {
    std::free(block);
}

namespace jx::test {

long liveBlocks() {
    return live;
}

void ShortMemory::begin() const {
    failed = false;
    staysShort = style_ == Fail::fromThenOn;
    left = n_;
}

bool ShortMemory::end() {
    if (left == 0 && !failed)
        return fired_;
    fired_ = fired_ || failed;
    left = 0;
    failed = false;
    return fired_;
}

namespace {

int failEach(Fail style, const std::function<void(ShortMemory&)>& call) {
    for (int n = 1;; ++n) {
        ShortMemory memory(n, style);
        const long before = liveBlocks();
        call(memory);
        EXPECT_EQ(liveBlocks(), before) << "blocks after failing allocation " << n;
        if (!memory.end())
            return n - 1;
    }
}

}  // namespace

int failEachAllocation(const std::function<void(ShortMemory&)>& call) {
    failEach(Fail::fromThenOn, call);
    return failEach(Fail::once, call);
}

int failEachAllocationOfNewThread(const std::function<void(ShortMemory&)>& call) {
    return failEachAllocation([&](ShortMemory& memory) {
        std::thread([&] {
            call(memory);
            memory.end();
        }).join();
    });
}

}  // namespace jx::test
