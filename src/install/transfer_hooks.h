// The hooks of the file transfer, which this system leaves empty: files are registered where they lie.
#pragma once

#include <cstdint>

#include "install/install_record.h"

namespace jx::install {

// Where versions would be compared before a file of a role that has one is replaced; the result is not used.
unsigned int VersionCheck(unsigned int hwnd, _Install* install, std::uint32_t item, std::uint32_t entry);

// Where the disk with a file would be asked for. 0: go on.
unsigned int CopyDisk(unsigned int hwnd, _Install* install, std::uint32_t item, std::uint32_t entry);

}  // namespace jx::install
