// Root and the libraries of others.
#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "odbcadmin/trial/library_load.h"
#include "odbcadmin/trial/setup_call.h"
#include "test_home.h"

namespace jx::trial {
namespace {

// An account that every system has, and a number that none has.
constexpr uid_t kDaemon = 1;
constexpr uid_t kBin = 2;
constexpr uid_t kNobodys = 54321;

class Owner : public testing::Test {
protected:
    Owner() {
        std::filesystem::create_directories(home_.file("lib/deep"));
        std::filesystem::create_directory(home_.file("etc"));
        std::filesystem::copy_file(JX_MOODY, library_);
        home_.put(".odbcinst.ini", "[Moody]\n");
        ::chmod(home_.path().c_str(), 0777);
    }

    // Only root can give files away, and only root is guarded.
    static bool isRoot() { return ::geteuid() == 0; }

    void give(const std::string& name, uid_t user) const {
        ASSERT_EQ(::lchown(home_.file(name).c_str(), user, user), 0);
    }

    LoadReport load(const std::vector<std::string>& namedBy = {}) const {
        return tryLoading({library_, {"ConfigDSN"}, namedBy});
    }

    jx::test::TestHome home_;
    std::string library_ = home_.file("lib/deep/libmoody.so");
};

TEST_F(Owner, OnesOwnLibraryIsLoadedWithOnesOwnRights) {
    const LoadReport report = load({home_.file(".odbcinst.ini"), home_.file("absent")});
    EXPECT_EQ(report.end, LoadReport::End::loaded);
    EXPECT_EQ(report.user, "");
}

TEST_F(Owner, AnotherUsersLibraryIsLoadedWithThatUsersRights) {
    if (!isRoot())
        GTEST_SKIP() << "only root can give files away";
    for (const char* given : {"lib/deep/libmoody.so", "lib/deep", "lib", ".odbcinst.ini", "etc"}) {
        SCOPED_TRACE(given);
        give(given, kDaemon);
        const LoadReport report = load({home_.file(".odbcinst.ini"), home_.file("etc/absent.ini")});
        EXPECT_EQ(report.end, LoadReport::End::loaded);
        EXPECT_EQ(report.user, ::getpwuid(kDaemon)->pw_name);
        give(given, 0);
    }
    give("lib", kDaemon);
    EXPECT_EQ(callSetup({SetupRequest::Action::add, library_, "Who", "S", {}}).user, ::getpwuid(kDaemon)->pw_name);
    EXPECT_EQ(home_.text("who"), "1 1 -1");
}

TEST_F(Owner, ALinkOfAnotherUserCountsAsItsTarget) {
    if (!isRoot())
        GTEST_SKIP() << "only root can give files away";
    std::filesystem::create_symlink(library_, home_.file("link.so"));
    give("link.so", kDaemon);
    EXPECT_EQ(tryLoading({home_.file("link.so")}).user, ::getpwuid(kDaemon)->pw_name);
    give("link.so", 0);
    give("lib/deep", kDaemon);
    EXPECT_EQ(tryLoading({home_.file("link.so")}).user, ::getpwuid(kDaemon)->pw_name);
}

TEST_F(Owner, WhereThereIsNoOneUserToBecomeNothingIsLoaded) {
    if (!isRoot())
        GTEST_SKIP() << "only root can give files away";
    give("lib", kNobodys);
    const LoadReport unknown = load();
    EXPECT_EQ(unknown.end, LoadReport::End::withheld);
    EXPECT_EQ(unknown.why, home_.file("lib") + " belongs to user 54321");
    give("lib", kDaemon);
    give(".odbcinst.ini", kBin);
    const LoadReport several = load({home_.file(".odbcinst.ini")});
    EXPECT_EQ(several.end, LoadReport::End::withheld);
    EXPECT_TRUE(several.offered.empty());
}

}  // namespace
}  // namespace jx::trial
