// Installs the build and opens the result to every user.
#include "installed_copy.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "run_program.h"

namespace jx::test {

namespace fs = std::filesystem;

namespace {

void openToAll(const fs::path& path) {
    constexpr auto kRead = fs::perms::group_read | fs::perms::others_read;
    constexpr auto kRun = fs::perms::group_exec | fs::perms::others_exec;
    const fs::file_status status = fs::symlink_status(path);
    if (fs::is_symlink(status))
        return;
    const bool runs = fs::is_directory(status) || (status.permissions() & fs::perms::owner_exec) != fs::perms::none;
    fs::permissions(path, runs ? kRead | kRun : kRead, fs::perm_options::add);
}

}  // namespace

InstalledCopy::InstalledCopy() {
    std::string pattern = (fs::temp_directory_path() / "jxodbc-copy-XXXXXX").string();
    const char* made = mkdtemp(pattern.data());
    if (made == nullptr) {
        ADD_FAILURE() << "no directory at " << pattern;
        return;
    }
    path_ = made;
    const ProgramResult result = runProgram(JX_CMAKE, {"--install", JX_BINARY_FOLDER, "--prefix", path_});
    EXPECT_EQ(result.code, 0) << result.out << result.err;
    openToAll(path_);
    for (const auto& each : fs::recursive_directory_iterator(path_))
        openToAll(each.path());
}

InstalledCopy::~InstalledCopy() {
    std::error_code ignored;
    if (!path_.empty())
        fs::remove_all(path_, ignored);
}

}  // namespace jx::test
