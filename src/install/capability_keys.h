// The keys of a driver's section that describe what the driver can do.
#pragma once

#include <array>
#include <cstddef>

namespace jx::install {

// In the order in which an installation copies them.
inline constexpr std::array<const char*, 7> kCapabilityKeys = {
    "APILevel", "CreateDSN", "ConnectFunctions", "DriverODBCVer", "FileUsage", "FileExtns", "SQLLevel",
};

// The place of "CreateDSN" among them. Its value describes nothing: it lists data sources to create.
inline constexpr std::size_t kCreateDsn = 1;

}  // namespace jx::install
