// Changes through symbolic links.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "ini_change_fixture.h"

namespace jx::ini::test {
namespace {

TEST_F(IniChangeTest, ASymbolicLinkStaysALink) {
    std::filesystem::create_directories(home_.file("deep/er"));
    struct Row {
        const char* what;
        std::string link;
    };
    const Row rows[] = {{"absolute", home_.file("deep/real.ini")},
                        {"relative", "deep/real.ini"},
                        {"through a directory", "deep/er/../real.ini"},
                        {"with doubled slashes", "deep//real.ini"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        putText(home_.file("deep/real.ini"), "[A]\nk=1\n", 0640);
        ASSERT_EQ(::symlink(row.link.c_str(), file_.c_str()), 0);
        ASSERT_TRUE(write(file_, "A", "k", "2"));
        EXPECT_TRUE(S_ISLNK(stateOf(file_).st_mode));
        EXPECT_EQ(std::filesystem::read_symlink(file_), row.link);
        EXPECT_EQ(home_.text("deep/real.ini"), "[A]\nk=2\n");
        EXPECT_EQ(modeOf(home_.file("deep/real.ini")), 0640U);
        EXPECT_EQ(home_.names(), (Names{"deep", "x.ini"}));
        std::filesystem::remove(file_);
    }
}

TEST_F(IniChangeTest, TheLockFileLiesBesideTheFileALinkLeadsTo) {
    std::filesystem::create_directory(home_.file("deep"));
    putText(home_.file("deep/real.ini"), "");
    ASSERT_EQ(::symlink("deep/real.ini", file_.c_str()), 0);
    IniChange byLink;
    ASSERT_TRUE(byLink.begin({file_}));
    EXPECT_TRUE(std::filesystem::exists(home_.file("deep/.real.ini.jxlock")));
    EXPECT_FALSE(std::filesystem::exists(lock_));
}

TEST_F(IniChangeTest, AChainOfLinksStaysAndItsEndIsWritten) {
    std::filesystem::create_directory(home_.file("deep"));
    ASSERT_EQ(::symlink("deep/two", file_.c_str()), 0);
    ASSERT_EQ(::symlink("../three", home_.file("deep/two").c_str()), 0);
    ASSERT_EQ(::symlink("real.ini", home_.file("three").c_str()), 0);
    home_.put("real.ini", "[A]\nk=1\n");
    ASSERT_TRUE(write(file_, "A", "k", "2"));
    EXPECT_EQ(home_.text("real.ini"), "[A]\nk=2\n");
    EXPECT_EQ(home_.names(), (Names{"deep", "real.ini", "three", "x.ini"}));
    for (const char* name : {"x.ini", "deep/two", "three"})
        EXPECT_TRUE(S_ISLNK(stateOf(home_.file(name)).st_mode)) << name;
}

TEST_F(IniChangeTest, ADanglingLinkStandsForThePlaceItPointsTo) {
    std::filesystem::create_directory(home_.file("deep"));
    ASSERT_EQ(::symlink("deep/real.ini", file_.c_str()), 0);
    ASSERT_TRUE(write(file_, "A", "k", "1"));
    EXPECT_TRUE(S_ISLNK(stateOf(file_).st_mode));
    EXPECT_EQ(home_.text("deep/real.ini"), "[A]\nk=1\n");
    EXPECT_EQ(modeOf(home_.file("deep/real.ini")), 0600U);
}

TEST_F(IniChangeTest, ALoopOfLinksIsRefused) {
    ASSERT_EQ(::symlink("y.ini", file_.c_str()), 0);
    ASSERT_EQ(::symlink("x.ini", home_.file("y.ini").c_str()), 0);
    EXPECT_FALSE(write(file_, "A", "k", "1"));
    expectFailure(JxIniStepLocate, ELOOP, file_);
    EXPECT_EQ(home_.names(), (Names{"x.ini", "y.ini"}));
}

TEST_F(IniChangeTest, FollowsFortyLinksAndNoMore) {
    home_.put("0", "");
    for (int link = 1; link <= 41; ++link)
        ASSERT_EQ(::symlink(std::to_string(link - 1).c_str(), home_.file(std::to_string(link)).c_str()), 0);
    EXPECT_TRUE(write(home_.file("40"), "A", "k", "1"));
    EXPECT_EQ(home_.text("0"), "[A]\nk=1\n");
    EXPECT_FALSE(write(home_.file("41"), "A", "k", "2"));
    expectFailure(JxIniStepLocate, ELOOP, home_.file("41"));
}

}  // namespace
}  // namespace jx::ini::test
