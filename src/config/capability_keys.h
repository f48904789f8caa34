// The keys of a driver's section that describe what the driver can do.
#pragma once

#include <array>

namespace jx {

// In the order in which an installation copies them.
inline constexpr std::array<const char*, 7> kCapabilityKeys = {
    "APILevel", "CreateDSN", "ConnectFunctions", "DriverODBCVer", "FileUsage", "FileExtns", "SQLLevel",
};

}  // namespace jx
