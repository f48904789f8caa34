// The product as cmake --install leaves it, in a folder of a test's own that every user may enter.
#pragma once

#include <string>

namespace jx::test {

// InstalledCopy: installs the build into a directory of its own, whose files everyone may read and run, whatever the
// umask is and wherever the build lies; gone when it leaves scope. A failure to install fails the test.
class InstalledCopy {
public:
    InstalledCopy();
    ~InstalledCopy();
    InstalledCopy(const InstalledCopy&) = delete;
    InstalledCopy& operator=(const InstalledCopy&) = delete;

    // The path of something installed, from its place below the prefix: "bin/odbcadmin".
    std::string file(const std::string& place) const { return path_ + "/" + place; }

private:
    std::string path_;
};

}  // namespace jx::test
