// The record of the Add Driver dialog.
#pragma once

#include <cstddef>
#include <cstdint>

namespace jx::admin {

// The longest directory that the dialog takes, with its NUL and a separator behind it.
inline constexpr std::size_t kDirectorySize = 1024 + 1;

// AddDriverRecord: made by the caller of the dialog, who releases what it brings back.
struct AddDriverRecord {
    std::uint32_t confirmed;        // set by the dialog: 0 when it opens, 1 when the user confirms
    const unsigned char* text;      // what the dialog says above its field; null leaves its own words
    const unsigned char* proposed;  // the directory to begin with, or null
    unsigned char* chosen;          // set by the dialog: a block of the utility library's allocator, or null
};

}  // namespace jx::admin
