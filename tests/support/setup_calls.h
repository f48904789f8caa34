// What the setup libraries of the tests did, as they wrote it down.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace jx::test {

using Lines = std::vector<std::string>;

// SetupCalls: while it lives, the setup libraries append a line to a file of its own when they are loaded, called and
// unloaded.
class SetupCalls {
public:
    SetupCalls() {
        std::string pattern = (std::filesystem::temp_directory_path() / "jxodbc-calls-XXXXXX").string();
        const int made = mkstemp(pattern.data());
        if (made < 0)
            ADD_FAILURE() << "no file for setup calls at " << pattern;
        else
            close(made);
        path_ = pattern;
        setenv(kVariable, path_.c_str(), 1);
    }
    ~SetupCalls() {
        unsetenv(kVariable);
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    SetupCalls(const SetupCalls&) = delete;
    SetupCalls& operator=(const SetupCalls&) = delete;

    Lines lines() const {
        Lines found;
        std::ifstream in(path_);
        for (std::string line; std::getline(in, line);)
            found.push_back(line);
        return found;
    }

private:
    static constexpr const char* kVariable = "JX_SETUP_CALLS";
    std::string path_;
};

#ifdef JX_SETUP_LIBRARIES
// The path of a setup library of the tests, such as "driver_both".
inline std::string setupLibrary(std::string_view name) {
    return std::string(JX_SETUP_LIBRARIES) + "/lib" + std::string(name) + ".so";
}
#endif

}  // namespace jx::test
