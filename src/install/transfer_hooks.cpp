// The hooks of the file transfer. They do nothing: files are registered where they lie.
#include "install/transfer_hooks.h"

namespace jx::install {

unsigned int VersionCheck(unsigned int /*hwnd*/, _Install* /*install*/, std::uint32_t /*item*/,
                          std::uint32_t /*entry*/) {
    return 0;
}

unsigned int CopyDisk(unsigned int /*hwnd*/, _Install* /*install*/, std::uint32_t /*item*/, std::uint32_t /*entry*/) {
    return 0;
}

}  // namespace jx::install
