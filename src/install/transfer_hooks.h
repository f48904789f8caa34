// The hooks of the file transfer. They do nothing: files are registered where they lie.
#pragma once

#include <cstdint>

#include "install/install_record.h"

namespace jx::install {

// The place to compare a file's version with that of an installed one. The result is not used.
unsigned int VersionCheck(unsigned int hwnd, _Install* install, std::uint32_t item, std::uint32_t entry);

// The place to ask for the disk with a file. 0: go on.
unsigned int CopyDisk(unsigned int hwnd, _Install* install, std::uint32_t item, std::uint32_t entry);

}  // namespace jx::install
