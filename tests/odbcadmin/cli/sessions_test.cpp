// The sessions in the folder of that name: each file is one, in a home with the sample's files, and must go as it is
// written down.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "admin_test.h"
#include "transcript.h"

namespace jx::test {
namespace {

class Sessions : public AdminTest, public testing::WithParamInterface<std::string> {};

std::vector<std::string> sessionFiles() {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(JX_SESSIONS))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

std::string nameOf(const testing::TestParamInfo<std::string>& info) {
    std::string name = std::filesystem::path(info.param).stem();
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

// Lines of remarks stand above the first command.
TEST_P(Sessions, GoAsTheyAreWrittenDown) {
    std::ifstream file(GetParam());
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const std::string session = text.substr(std::min(text.find("$ "), text.size()));
    ASSERT_FALSE(session.empty());
    EXPECT_EQ(played(home_, session), session);
}

INSTANTIATE_TEST_SUITE_P(OfFiles, Sessions, testing::ValuesIn(sessionFiles()), nameOf);

}  // namespace
}  // namespace jx::test
