// Adding drivers from an installation script.
#pragma once

#include <cstddef>
#include <cstdint>

namespace jx::admin {

// The longest directory that the Add Driver dialog takes, with its NUL and a separator behind it.
inline constexpr std::size_t kDirectorySize = 1024 + 1;

// AddDriverRecord: the record of that dialog. Whoever shows the dialog releases what it brings back.
struct AddDriverRecord {
    std::uint32_t confirmed;        // set by the dialog: 0 when it opens, 1 when the user confirms
    const unsigned char* text;      // what the dialog says above its field; null leaves its own words
    const unsigned char* proposed;  // the directory to begin with, or null
    unsigned char* chosen;          // set by the dialog: a block of the utility library's allocator, or null
};

// Asks for the script's directory, again while it holds none and the user wants to, and runs the installation there.
// The result of SQLInstallODBC; 0 when the user gave up.
int AddDriver(unsigned int hwnd);

}  // namespace jx::admin
