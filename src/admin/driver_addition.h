// Adding drivers from an installation script.
#pragma once

#include <cstddef>
#include <cstdint>

namespace jx::admin {

// The size of a directory in the Add Driver dialog, with a separator and a NUL.
inline constexpr std::size_t kDirectorySize = 1024 + 1;

// AddDriverRecord: the record of the Add Driver dialog. The caller of the dialog releases chosen.
struct AddDriverRecord {
    std::uint32_t confirmed;        // set by the dialog: 0 when it opens, 1 when the user confirms
    const unsigned char* text;      // the text above the field; null leaves the template's
    const unsigned char* proposed;  // the directory shown at first, or null
    unsigned char* chosen;          // set by the dialog: a heap block (ramFree), or null
};

// Asks the user for the directory of a script, again when there is no script in it, and installs from there. Returns
// the result of SQLInstallODBC, or 0 when the user gave up.
int AddDriver(unsigned int hwnd);

}  // namespace jx::admin
