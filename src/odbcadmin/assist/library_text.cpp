// Loading them.
#include "odbcadmin/assist/library_text.h"

#include <jxtemplate.h>

#include <array>

#include "odbcadmin/trial/installer_library.h"

namespace jx::assist {

std::string libraryText(unsigned short id) {
    std::array<unsigned char, 256> text{};
    JXW_LoadString(trial::kInstallerModule, id, text.data(), static_cast<int>(text.size()));
    return reinterpret_cast<const char*>(text.data());
}

}  // namespace jx::assist
