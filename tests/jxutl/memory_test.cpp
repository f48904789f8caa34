// Heap blocks: contents, sizes and failures.
#include <jxmemory.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "allocations.h"

namespace {

using jx::test::ShortMemory;

constexpr std::size_t kSizes[] = {1, 2, 255, 256, 32767, 32768, 65535, 70000};

std::string text(const unsigned char* bytes) {
    return reinterpret_cast<const char*>(bytes);
}

const unsigned char* bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

TEST(Memory, BlocksHoldTheirSize) {
    for (const std::size_t size : kSizes) {
        SCOPED_TRACE(size);
        auto* block = static_cast<unsigned char*>(ramAlloc(size));
        ASSERT_NE(block, nullptr);
        std::memset(block, 0xA5, size);
        EXPECT_EQ(block[size - 1], 0xA5);
        ramFree(block);
    }
}

TEST(Memory, ZeroedBlocksAreZeroToTheLastByte) {
    for (const std::size_t size : kSizes) {
        SCOPED_TRACE(size);
        auto* block = static_cast<unsigned char*>(ramAllocZ(size));
        ASSERT_NE(block, nullptr);
        EXPECT_EQ(std::vector<unsigned char>(block, block + size), std::vector<unsigned char>(size, 0));
        ramFree(block);
    }
}

TEST(Memory, ASizeOfZeroGivesABlockToRelease) {
    void* plain = ramAlloc(0);
    void* zeroed = ramAllocZ(0);
    EXPECT_NE(plain, nullptr);
    EXPECT_NE(zeroed, nullptr);
    ramFree(plain);
    ramFree(zeroed);
}

TEST(Memory, ResizingToZeroKeepsABlock) {
    void* block = ramAlloc(10);
    block = ramResize(block, 0);
    EXPECT_NE(block, nullptr);
    ramFree(block);
}

TEST(Memory, ResizingKeepsTheContentUpToTheSmallerSize) {
    auto* block = static_cast<unsigned char*>(ramAlloc(3));
    ASSERT_NE(block, nullptr);
    std::memcpy(block, "abc", 3);
    block = static_cast<unsigned char*>(ramResize(block, 70000));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(std::memcmp(block, "abc", 3), 0);
    block = static_cast<unsigned char*>(ramResize(block, 2));
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(std::memcmp(block, "ab", 2), 0);
    ramFree(block);
}

TEST(Memory, ResizingNothingAllocates) {
    void* block = ramResize(nullptr, 5);
    EXPECT_NE(block, nullptr);
    ramFree(block);
}

TEST(Memory, TextsAreCopiedWithTheirNul) {
    for (const char* original : {"", "a", "Sample Driver", "\xff\x80\x01"}) {
        unsigned char* copy = ramAllocStr(bytes(original));
        ASSERT_NE(copy, nullptr);
        EXPECT_NE(copy, bytes(original));
        EXPECT_EQ(text(copy), original);
        ramFree(copy);
    }
}

TEST(Memory, ANullTextHasNoCopy) {
    EXPECT_EQ(ramAllocStr(nullptr), nullptr);
}

TEST(Memory, ReleasingNothingIsAllowed) {
    ramFree(nullptr);
}

TEST(Memory, ReleasingKeepsErrno) {
    errno = ERANGE;
    ramFree(ramAlloc(1 << 24));
    EXPECT_EQ(errno, ERANGE);
}

TEST(Memory, BlocksAndMallocReleaseEachOther) {
    std::free(ramAlloc(4));
    std::free(ramAllocStr(bytes("x")));
    ramFree(std::malloc(4));
}

#ifndef JX_SANITIZED  // sanitizers end the program over such a size
// volatile hides the sizes from the compiler, which warns of absurd ones.
std::size_t opaque(std::size_t size) {
    volatile std::size_t hidden = size;
    return hidden;
}

TEST(Memory, ASizeBeyondAllMemoryGivesNull) {
    EXPECT_EQ(ramAlloc(opaque(SIZE_MAX)), nullptr);
    EXPECT_EQ(ramAllocZ(opaque(SIZE_MAX)), nullptr);
    void* block = ramAlloc(1);
    EXPECT_EQ(ramResize(block, opaque(SIZE_MAX)), nullptr);
    ramFree(block);
}
#endif

TEST(Memory, EachCallGivesNullWithoutMemory) {
    EXPECT_EQ(jx::test::failEachAllocation([](ShortMemory& memory) {
                  memory.begin();
                  void* plain = ramAlloc(3);
                  void* zeroed = ramAllocZ(3);
                  unsigned char* copy = ramAllocStr(bytes("abc"));
                  void* fresh = ramResize(nullptr, 3);
                  const bool failed = memory.end();
                  EXPECT_EQ(failed, plain == nullptr || zeroed == nullptr || copy == nullptr || fresh == nullptr);
                  ramFree(plain);
                  ramFree(zeroed);
                  ramFree(copy);
                  ramFree(fresh);
              }),
              4);
}

TEST(Memory, AFailedResizeLeavesTheOldBlock) {
    jx::test::failEachAllocation([](ShortMemory& memory) {
        unsigned char* block = ramAllocStr(bytes("kept"));
        memory.begin();
        void* resized = ramResize(block, 70000);
        const bool failed = memory.end();
        EXPECT_EQ(resized == nullptr, failed);
        EXPECT_EQ(text(resized == nullptr ? block : static_cast<unsigned char*>(resized)), "kept");
        ramFree(resized == nullptr ? block : resized);
    });
}

}  // namespace
