// The keys that describe what a driver can do.
#include "install/capability_keys.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace jx::install;

TEST(CapabilityKeys, StandInTheOrderInWhichTheyAreCopied) {
    const std::vector<std::string> keys(kCapabilityKeys.begin(), kCapabilityKeys.end());
    EXPECT_EQ(keys, (std::vector<std::string>{"APILevel", "CreateDSN", "ConnectFunctions", "DriverODBCVer", "FileUsage",
                                              "FileExtns", "SQLLevel"}));
    EXPECT_EQ(keys[kCreateDsn], "CreateDSN");
}

}  // namespace
