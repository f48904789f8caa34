// Owners for texts and blocks of the utility library's allocator.
#pragma once

#include <jxmemory.h>

#include <cstddef>
#include <memory>
#include <string_view>

namespace jx::install {

// Releases a block the way it was made.
struct RamRelease {
    void operator()(unsigned char* block) const { ramFree(block); }
};

// OwnedText: a heap text that leaves with its scope unless release() hands it on. Null when memory was short.
using OwnedText = std::unique_ptr<unsigned char[], RamRelease>;

// The bytes of a text without its NUL; empty for null.
std::string_view viewOf(const unsigned char* text);

// A copy of text with a NUL behind it; null when memory is short.
OwnedText copyOf(std::string_view text);

// A copy of first followed by second; null when memory is short.
OwnedText joined(std::string_view first, std::string_view second);

}  // namespace jx::install
