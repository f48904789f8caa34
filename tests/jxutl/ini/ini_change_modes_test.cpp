// The mode, owner and group of a changed file.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string_view>
#include <utility>

#include "child_process.h"
#include "ini_change_fixture.h"
#include "watched_files.h"

namespace jx::ini::test {
namespace {

TEST_F(IniChangeTest, KeepsTheModeOfTheFile) {
    for (const mode_t mask : {0022U, 0077U})
        for (const mode_t mode : {0600U, 0644U, 0640U, 0664U, 0666U, 0400U, 0700U, 04755U}) {
            SCOPED_TRACE(mode);
            const Umask set(mask);
            putText(file_, "[A]\nk=1\n", mode);
            ASSERT_TRUE(write(file_, "A", "k", "2"));
            EXPECT_EQ(modeOf(file_), mode);
            EXPECT_EQ(home_.text("x.ini"), "[A]\nk=2\n");
            std::filesystem::remove(file_);
        }
}

TEST_F(IniChangeTest, ANewFileIsForItsOwnerOnly) {
    const Umask open(0);
    ASSERT_TRUE(write(file_, "A", "k", "1"));
    EXPECT_EQ(modeOf(file_), 0600U);
}

TEST_F(IniChangeTest, ANewSharedFileFollowsTheUmask) {
    struct Row {
        mode_t mask;
        mode_t mode;
    };
    constexpr Row kRows[] = {{0, 0666}, {0022, 0644}, {0027, 0640}, {0077, 0600}, {0002, 0664}, {0777, 0}};
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.mask);
        const Umask set(row.mask);
        ASSERT_TRUE(write(file_, "A", "k", "1", /*shared=*/true));
        EXPECT_EQ(modeOf(file_), row.mode);
        std::filesystem::remove(file_);
    }
}

TEST_F(IniChangeTest, AnExistingSharedFileKeepsItsMode) {
    putText(file_, "", 0640);
    ASSERT_TRUE(write(file_, "A", "k", "1", /*shared=*/true));
    EXPECT_EQ(modeOf(file_), 0640U);
}

TEST_F(IniChangeTest, ANewSharedFileIsPrivateWhenTheUmaskIsUnknown) {
    class NoProc : public WatchedFiles {
        int before(Call call, std::string_view path) override {
            return call == Call::open && path.starts_with("/proc/") ? ENOENT : 0;
        }
    };
    NoProc files;
    const InUse inUse(files);
    ASSERT_TRUE(write(file_, "A", "k", "1", /*shared=*/true));
    EXPECT_EQ(modeOf(file_), 0600U);
}

TEST_F(IniChangeTest, RootKeepsTheOwnerAndTheGroup) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a file of another user";
    for (const auto& [user, group] : {std::pair<uid_t, gid_t>{kNobody, kNobody}, {kNobody, 0}, {0, kNobody}, {1, 2}}) {
        home_.put("x.ini", "[A]\nk=1\n");
        ASSERT_EQ(::chown(file_.c_str(), user, group), 0);
        ASSERT_EQ(::chmod(file_.c_str(), 0640), 0);
        ASSERT_TRUE(write(file_, "A", "k", "2"));
        EXPECT_EQ(stateOf(file_).st_uid, user);
        EXPECT_EQ(stateOf(file_).st_gid, group);
        EXPECT_EQ(modeOf(file_), 0640U);
        std::filesystem::remove(file_);
    }
}

TEST_F(IniChangeTest, AnOwnerThatCannotBeKeptIsAFailure) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a file of another user";
    putText(file_, "[A]\nk=1\n", 0666);
    ASSERT_EQ(::chmod(home_.path().c_str(), 0777), 0);
    const Identity before(file_);
    EXPECT_TRUE(passesAsNobody([this] {
        EXPECT_FALSE(write(file_, "A", "k", "2"));
        expectFailure(JxIniStepOwner, EPERM, file_);
        EXPECT_TRUE(write(file_, "A", "k", "1")) << "what is stored already needs no right";
    }));
    EXPECT_TRUE(before == Identity(file_));
    EXPECT_EQ(home_.names(), Names{"x.ini"});
}

TEST_F(IniChangeTest, AGroupThatCannotBeKeptIsAFailureOnlyWhereItHasRightsOfItsOwn) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can make a file of a group that the user is not in";
    struct Row {
        mode_t mode;
        bool written;
    };
    constexpr Row kRows[] = {{0600, true}, {0644, true}, {0666, true}, {0640, false}, {0660, false}, {0604, false}};
    ASSERT_EQ(::chmod(home_.path().c_str(), 0777), 0);
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.mode);
        putText(file_, "[A]\nk=1\n");
        ASSERT_EQ(::chown(file_.c_str(), kNobody, 0), 0);
        ASSERT_EQ(::chmod(file_.c_str(), row.mode), 0);
        EXPECT_TRUE(passesAsNobody([this, &row] {
            EXPECT_EQ(write(file_, "A", "k", "2"), row.written);
            if (!row.written)
                expectFailure(JxIniStepOwner, EPERM, file_);
        }));
        EXPECT_EQ(home_.text("x.ini"), row.written ? "[A]\nk=2\n" : "[A]\nk=1\n");
        EXPECT_EQ(modeOf(file_), row.mode);
        EXPECT_EQ(home_.names(), Names{"x.ini"});
        std::filesystem::remove(file_);
    }
}

}  // namespace
}  // namespace jx::ini::test
