// Texts in blocks of the utility library's allocator.
//
//     const OwnedText path = joined(directory, "odbc.inf");
//     if (path == nullptr) ...   // memory was short
#pragma once

#include <jxmemory.h>

#include <memory>
#include <string_view>

namespace jx::install {

// Releases a block the way it was made.
struct RamRelease {
    void operator()(unsigned char* block) const { ramFree(block); }
};

// OwnedText: a heap text, released at the end of its scope unless release() passes it on. Null when memory was short.
using OwnedText = std::unique_ptr<unsigned char[], RamRelease>;

// A copy of first followed by second, with a NUL behind it; null when memory is short.
inline OwnedText joined(std::string_view first, std::string_view second) {
    OwnedText made(static_cast<unsigned char*>(ramAlloc(first.size() + second.size() + 1)));
    if (made != nullptr) {
        char* text = reinterpret_cast<char*>(made.get());
        text[first.copy(text, first.size()) + second.copy(text + first.size(), second.size())] = '\0';
    }
    return made;
}

// A copy of text with a NUL behind it; null when memory is short.
inline OwnedText copyOf(std::string_view text) {
    return joined(text, {});
}

}  // namespace jx::install
