// Where a path leads: which symbolic links are followed, and that the directory found is kept.
#include "jxutl/ini/ini_place.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <jxini.h>
#include <jxprofile.h>
#include "child_process.h"
#include "ini_change_fixture.h"
#include "jxutl/thread/failure.h"
#include "watched_files.h"

namespace jx::ini::test {
namespace {

constexpr uid_t kRoot = 0;
constexpr uid_t kOther = 1;

// What a table's link leads to: a file of that owner, or nothing.
constexpr std::optional<uid_t> kNothing = std::nullopt;

class IniPlace : public ::testing::Test {
protected:
    void SetUp() override {
        if (::geteuid() != kRoot)
            GTEST_SKIP() << "only root can make links of other users";
        ASSERT_EQ(::chmod(home_.path().c_str(), 0755), 0);
        std::filesystem::create_directory(home_.file("files"));
        std::filesystem::create_directory(home_.file("d"));
    }
    void TearDown() override { EXPECT_EQ(openDescriptors(), descriptors_); }

    // Makes name a link of owner.
    void link(const std::string& to, const std::string& name, uid_t owner) const {
        std::filesystem::remove(home_.file(name));
        ASSERT_EQ(::symlink(to.c_str(), home_.file(name).c_str()), 0);
        ASSERT_EQ(::lchown(home_.file(name).c_str(), owner, owner), 0);
    }

    void giveAway(const std::string& name, uid_t owner, mode_t mode) const {
        ASSERT_EQ(::chown(home_.file(name).c_str(), owner, owner), 0);
        ASSERT_EQ(::chmod(home_.file(name).c_str(), mode), 0);
    }

    // A link d/link of one owner to files/x of another.
    void linkToFile(uid_t owner, std::optional<uid_t> fileOwner) const {
        std::filesystem::remove(home_.file("files/x"));
        if (fileOwner) {
            home_.put("files/x", "[A]\nk=1\n");
            giveAway("files/x", *fileOwner, 0644);
        }
        link("../files/x", "d/link", owner);
    }

    void expectFollowed(const std::string& path, const std::string& leadsTo) const {
        jx::ini::IniPlace place;
        EXPECT_TRUE(place.find(home_.file(path))) << describe(lastFailure());
        EXPECT_EQ(std::filesystem::weakly_canonical(place.path()), home_.file(leadsTo));
    }

    void expectRefused(const std::string& path, const std::string& link) const {
        jx::ini::IniPlace place;
        EXPECT_FALSE(place.find(home_.file(path)));
        EXPECT_EQ(lastFailure().step, JxIniStepLocate);
        EXPECT_EQ(lastFailure().error, EACCES);
        EXPECT_EQ(lastFailure().path, home_.file(link));
    }

    struct Row {
        uid_t linkOwner;
        std::optional<uid_t> fileOwner;
        bool followed;
    };

    void expectRows(const std::vector<Row>& rows, uid_t caller) const {
        for (const Row& row : rows) {
            SCOPED_TRACE("link of " + std::to_string(row.linkOwner) + " to a file of " +
                         (row.fileOwner ? std::to_string(*row.fileOwner) : "nobody, since it is absent"));
            linkToFile(row.linkOwner, row.fileOwner);
            const auto check = [this, &row] {
                if (row.followed)
                    expectFollowed("d/link", "files/x");
                else
                    expectRefused("d/link", "d/link");
            };
            if (caller == kRoot)
                check();
            else
                EXPECT_TRUE(passesAsNobody(check));
        }
    }

    const std::size_t descriptors_ = openDescriptors();
    jx::test::TestHome home_;
};

TEST_F(IniPlace, InADirectoryOfItsOwnEveryLinkIsFollowed) {
    expectRows({{kRoot, kRoot, true}, {kNobody, kRoot, true}, {kOther, kNobody, true}, {kOther, kNothing, true}},
               kRoot);
    giveAway("d", kNobody, 0755);
    expectRows({{kNobody, kRoot, true}, {kOther, kRoot, true}, {kOther, kNothing, true}}, kNobody);
}

TEST_F(IniPlace, InADirectoryOfAnotherUserALinkLeadsToItsOwnersFiles) {
    const std::vector<Row> rootsView = {{kNobody, kNobody, true},   {kNobody, kRoot, false}, {kNobody, kOther, false},
                                        {kNobody, kNothing, false}, {kRoot, kOther, true},   {kRoot, kNothing, true},
                                        {kOther, kOther, true},     {kOther, kNobody, false}};
    giveAway("d", kNobody, 0755);
    expectRows(rootsView, kRoot);
    giveAway("d", kRoot, 0775);
    expectRows(rootsView, kRoot);
    giveAway("d", kOther, 0755);
    expectRows({{kNobody, kRoot, true},
                {kNobody, kNothing, true},
                {kRoot, kOther, true},
                {kOther, kOther, true},
                {kOther, kNobody, false},
                {kOther, kNothing, false}},
               kNobody);
}

// The kernel's rule would let the owner of a sticky directory lead root to a file of root's.
TEST_F(IniPlace, InAStickyDirectoryTheKernelsRuleHoldsAsWell) {
    giveAway("d", kRoot, 01777);
    expectRows({{kNobody, kNobody, false}, {kNobody, kRoot, false}, {kRoot, kNobody, true}, {kRoot, kNothing, true}},
               kRoot);
    expectRows({{kNobody, kRoot, true}, {kOther, kOther, false}, {kRoot, kOther, true}}, kNobody);
    giveAway("d", kNobody, 01777);
    expectRows({{kNobody, kNobody, true}, {kNobody, kRoot, false}, {kOther, kOther, false}, {kRoot, kOther, true}},
               kRoot);
}

TEST_F(IniPlace, TheRuleHoldsForEveryPartOfThePath) {
    std::filesystem::create_directory(home_.file("roots"));
    home_.put("roots/passwd", "root\n");
    std::filesystem::create_directory(home_.file("d/real"));
    home_.put("d/real/passwd", "[A]\n");
    giveAway("d/real/passwd", kNobody, 0600);
    giveAway("d/real", kNobody, 0755);
    giveAway("d", kNobody, 0755);

    link("real", "d/sub", kNobody);
    expectFollowed("d/sub/passwd", "d/real/passwd");
    expectFollowed("d/sub//passwd", "d/real/passwd");
    expectFollowed("d/./sub/../real/passwd", "d/real/passwd");
    link("../roots", "d/sub", kNobody);
    expectRefused("d/sub/passwd", "d/sub");
    expectRefused("d/sub//passwd", "d/sub");
    expectRefused("d/sub/absent", "d/sub");
    link(home_.file("roots/"), "d/sub", kNobody);
    expectRefused("d/sub/passwd", "d/sub");

    link("sub/passwd", "d/.odbc.ini", kNobody);
    expectRefused("d/.odbc.ini", "d/sub");
    link("real", "d/sub", kNobody);
    expectFollowed("d/.odbc.ini", "d/real/passwd");
    link("second", "d/first", kNobody);
    link("../roots/passwd", "d/second", kNobody);
    expectRefused("d/first", "d/second");
    link("../roots/passwd", "d/second", kOther);
    EXPECT_FALSE(jx::ini::IniPlace().find(home_.file("d/first")));
    link("second/../real/passwd", "d/first", kNobody);
    link("..", "d/second", kNobody);
    EXPECT_FALSE(jx::ini::IniPlace().find(home_.file("d/first"))) << "the directory above is root's";
}

TEST_F(IniPlace, AFileThatIsNoLinkIsUsedWhereverItLies) {
    giveAway("d", kNobody, 01777);
    home_.put("d/x.ini", "[A]\n");
    expectFollowed("d/x.ini", "d/x.ini");
    expectFollowed("d/absent.ini", "d/absent.ini");
}

int read(const std::string& file) {
    const auto bytes = [](const std::string& text) { return reinterpret_cast<const unsigned char*>(text.c_str()); };
    unsigned char value[8];
    return jxGetPrivateProfileString(bytes("A"), bytes("k"), nullptr, value, sizeof value, bytes(file));
}

TEST_F(IniPlace, ReadsAndWritesRefuseTheSameLinks) {
    giveAway("d", kNobody, 0755);
    const std::string file = home_.file("d/link");
    linkToFile(kNobody, kNobody);
    EXPECT_EQ(read(file), 1);
    JxIniText* text = jxIniRead(file.c_str());
    EXPECT_NE(text, nullptr);
    jxIniRelease(text);
    EXPECT_TRUE(write(file, "A", "l", "2"));

    linkToFile(kNobody, kRoot);
    EXPECT_EQ(read(file), 0);
    expectFailure(JxIniStepLocate, EACCES, file);
    EXPECT_EQ(jxIniRead(file.c_str()), nullptr);
    expectFailure(JxIniStepLocate, EACCES, file);
    EXPECT_FALSE(write(file, "A", "k", "2"));
    expectFailure(JxIniStepLocate, EACCES, file);
    EXPECT_EQ(home_.text("files/x"), "[A]\nk=1\n");
}

TEST_F(IniPlace, ALinkThatLeadsNowhereMakesNoFileAndIsAnAbsentFileForReads) {
    giveAway("d", kNobody, 0755);
    linkToFile(kNobody, kNothing);
    EXPECT_EQ(read(home_.file("d/link")), 0);
    EXPECT_EQ(lastFailure().step, JxIniStepNone);
    EXPECT_FALSE(write(home_.file("d/link"), "A", "k", "1"));
    expectFailure(JxIniStepLocate, EACCES, home_.file("d/link"));
    EXPECT_TRUE(std::filesystem::is_empty(home_.file("files")));
}

TEST_F(IniPlace, ADirectoryThatIsReplacedLaterIsNotUsed) {
    home_.put("d/x.ini", "[A]\nk=1\n");
    IniChange change;
    ASSERT_TRUE(change.begin({home_.file("d/x.ini")}));
    std::filesystem::rename(home_.file("d"), home_.file("moved"));
    std::filesystem::create_directory(home_.file("d"));
    home_.put("d/x.ini", "[A]\nk=1\n");
    ASSERT_EQ(change.apply("A", "k", "2"), Edit::changed);
    EXPECT_TRUE(change.commit());
    EXPECT_EQ(home_.text("d/x.ini"), "[A]\nk=1\n");
    EXPECT_EQ(home_.text("moved/x.ini"), "[A]\nk=2\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(home_.file("moved")), {}), 1);
}

// A filter of system calls may refuse openat2, and old kernels do not know it.
TEST_F(IniPlace, FindsTheSamePlacesWithoutOpenat2) {
    class OldKernel : public WatchedFiles {
    public:
        int openWithoutLinks(const char* /*path*/, int /*flags*/) override {
            errno = ENOSYS;
            return -1;
        }
    };
    home_.put("files/x", "[A]\nk=1\n");
    link("../files/x", "d/link", kRoot);
    OldKernel files;
    const InUse inUse(files);
    expectFollowed("d/link", "files/x");
    expectFollowed("files/x", "files/x");
    EXPECT_EQ(read(home_.file("files/x")), 1);
    EXPECT_TRUE(write(home_.file("files/x"), "A", "k", "2"));
    EXPECT_EQ(home_.text("files/x"), "[A]\nk=2\n");
    EXPECT_FALSE(write(home_.file("d/"), "A", "k", "2"));
    EXPECT_EQ(lastFailure().error, EISDIR);
    EXPECT_FALSE(write(home_.file("no/such/x.ini"), "A", "k", "2"));
    expectFailure(JxIniStepLock, ENOENT, home_.file("no/such/.x.ini.jxlock"));
}

}  // namespace
}  // namespace jx::ini::test
