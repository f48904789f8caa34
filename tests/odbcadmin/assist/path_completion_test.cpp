// Completing paths as shells do.
#include "odbcadmin/assist/path_completion.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "test_home.h"

namespace jx::assist::test {
namespace {

TEST(PathCompletion, GoesAsFarAsTheNamesAgree) {
    const jx::test::TestHome home({{"libone.so", ""}, {"libone.so.1", ""}, {"other", ""}, {".hidden", ""}});
    std::filesystem::create_directory(home.file("folder"));
    const std::string folder = home.path() + "/";
    const struct {
        std::string typed, completed;
    } rows[] = {
        {folder + "li", folder + "libone.so"},
        {folder + "libone.so", folder + "libone.so"},
        {folder + "o", folder + "other"},
        {folder + "f", folder + "folder/"},
        {folder + "folder", folder + "folder/"},
        {folder + "folder/", folder + "folder/"},
        {folder + ".h", folder + ".hidden"},
        {folder + "none", folder + "none"},
        {folder + "none/x", folder + "none/x"},
        {"~", "~/"},
        {"~/oth", "~/other"},
        {"~/fold", "~/folder/"},
        {"other", "other"},
        {"", ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(completedPath(row.typed), row.completed);
}

TEST(PathCompletion, KnowsTheHomeDirectory) {
    const jx::test::TestHome home;
    EXPECT_EQ(expandedPath("~/a"), home.file("a"));
    EXPECT_EQ(expandedPath("~"), home.path());
    EXPECT_EQ(expandedPath("~anna/a"), "~anna/a");
    EXPECT_EQ(expandedPath("/a/~"), "/a/~");
    unsetenv("HOME");
    EXPECT_EQ(expandedPath("~/a"), "~/a");
}

}  // namespace
}  // namespace jx::assist::test
